// Host property store.
//
// Keys live in a fixed open-addressing table whose slots are published once and never move or
// die, so a reader finds its key without a lock. Each value sits behind a sequence counter
// (a seqlock built from atomics): readers never write shared memory, so two reading threads do
// not contend, and a reader racing a writer simply retries. The value's integer reading is kept
// beside it in one atomic word, since every disabled feature asks for it.
#include "camtune/platform/properties.h"

#include <atomic>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <new>
#include <string>

#include "platform/host/property_file.h"
#include "platform/property_parse.h"

namespace NSCam {
namespace Utils {
namespace Properties {
namespace {

constexpr size_t kCapacity = 1024;  // distinct keys; a power of two
constexpr size_t kWords = (kPropertyValueMax + 7) / 8;

uint64_t load8(const char* at) {
    uint64_t word;
    std::memcpy(&word, at, 8);
    return word;
}

// Keys run to forty characters, so the hash takes eight bytes per step and mixes once at the
// end: a multiply per step would cost more than the rest of a read. Keys sharing a prefix still
// spread, and a collision only costs a probe.
uint64_t hashKey(const char* key, size_t length) {
    uint64_t hash = length * 0x9E3779B97F4A7C15ull;
    size_t at = 0;
    for (; at + 8 <= length; at += 8) {
        hash = ((hash << 29) | (hash >> 35)) ^ load8(key + at);
    }
    if (at < length) {
        // The last eight bytes of the key (overlapping what was taken), or the short key whole.
        uint64_t tail = 0;
        if (length >= 8) {
            tail = load8(key + length - 8);
        } else {
            std::memcpy(&tail, key, length);
        }
        hash = ((hash << 29) | (hash >> 35)) ^ tail;
    }
    hash *= 0xFF51AFD7ED558CCDull;
    hash ^= hash >> 32;
    hash *= 0xC4CEB9FE1A85EC53ull;
    return hash ^ (hash >> 29);
}

// One key's value. The key's characters follow the slot in the same allocation, so a lookup
// touches one place in memory.
class Slot {
public:
    static Slot* create(const char* key, size_t length, uint64_t hash) {
        void* memory = ::operator new(sizeof(Slot) + length + 1);
        Slot* slot = new (memory) Slot(length, hash);
        std::memcpy(slot->keyText(), key, length + 1);
        return slot;
    }

    bool matches(const char* key, size_t length, uint64_t hash) const {
        return mHash == hash && mLength == length && std::memcmp(keyText(), key, length) == 0;
    }

    // Copies the value (NUL-terminated) into `out` of kPropertyValueMax bytes.
    void read(char* out) const {
        uint64_t words[kWords];
        for (;;) {
            uint32_t before = mSequence.load(std::memory_order_acquire);
            if (before & 1u) continue;  // a write is in progress
            for (size_t i = 0; i < kWords; ++i)
                words[i] = mWords[i].load(std::memory_order_relaxed);
            std::atomic_thread_fence(std::memory_order_acquire);
            if (mSequence.load(std::memory_order_relaxed) == before) break;
        }
        std::memcpy(out, words, kPropertyValueMax);
        out[kPropertyValueMax - 1] = '\0';
    }

    // The value read as an integer, or `defaultValue` when it is empty or holds no number:
    // parsed once when it is set, so integer reads copy and parse nothing.
    int32_t readInt32(int32_t defaultValue) const {
        const uint64_t packed = mInteger.load(std::memory_order_acquire);
        return (packed & kHasInteger) != 0 ? static_cast<int32_t>(static_cast<uint32_t>(packed))
                                           : defaultValue;
    }

    // Called with the store's write lock held.
    void write(const char* value, size_t length) {
        uint64_t words[kWords] = {};
        std::memcpy(words, value, length);
        uint32_t sequence = mSequence.load(std::memory_order_relaxed);
        mSequence.store(sequence + 1, std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_release);
        for (size_t i = 0; i < kWords; ++i) mWords[i].store(words[i], std::memory_order_relaxed);
        mSequence.store(sequence + 2, std::memory_order_release);
        int32_t integer = 0;
        const bool isInteger = camtune::tryParsePropertyInt32(value, &integer);
        mInteger.store(isInteger ? kHasInteger | static_cast<uint32_t>(integer) : 0,
                       std::memory_order_release);
    }

private:
    static constexpr uint64_t kHasInteger = uint64_t{1} << 32;

    Slot(size_t length, uint64_t hash) : mHash(hash), mLength(length) {}
    char* keyText() { return reinterpret_cast<char*>(this + 1); }
    const char* keyText() const { return reinterpret_cast<const char*>(this + 1); }

    const uint64_t mHash;
    const size_t mLength;
    // The integer value and, in bit 32, whether there is one; one word, so it reads whole.
    std::atomic<uint64_t> mInteger{0};
    std::atomic<uint32_t> mSequence{0};
    std::atomic<uint64_t> mWords[kWords] = {};
};

class Store {
public:
    const Slot* find(const char* key) const {
        size_t length = std::strlen(key);
        uint64_t hash = hashKey(key, length);
        for (size_t probe = 0; probe < kCapacity; ++probe) {
            const Slot* slot =
                    mSlots[(hash + probe) & (kCapacity - 1)].load(std::memory_order_acquire);
            if (slot == nullptr) return nullptr;
            if (slot->matches(key, length, hash)) return slot;
        }
        return nullptr;
    }

    int set(const char* key, const char* value) {
        size_t length = std::strlen(value);
        if (length >= static_cast<size_t>(kPropertyValueMax)) return -1;
        size_t keyLength = std::strlen(key);
        uint64_t hash = hashKey(key, keyLength);
        std::lock_guard<std::mutex> guard(mWriteLock);
        for (size_t probe = 0; probe < kCapacity; ++probe) {
            std::atomic<Slot*>& cell = mSlots[(hash + probe) & (kCapacity - 1)];
            Slot* slot = cell.load(std::memory_order_relaxed);
            if (slot == nullptr) {
                // Never freed: readers hold slots without a lock.
                Slot* created = Slot::create(key, keyLength, hash);
                created->write(value, length);
                cell.store(created, std::memory_order_release);
                return 0;
            }
            if (slot->matches(key, keyLength, hash)) {
                slot->write(value, length);
                return 0;
            }
        }
        return -1;  // table full
    }

private:
    std::atomic<Slot*> mSlots[kCapacity] = {};
    std::mutex mWriteLock;
};

// Never destroyed: static destructors of the library (and of its users) may still read
// properties while the process exits.
Store& store() {
    static Store* sStore = new Store();
    return *sStore;
}

// Seeds the store from CAMTUNE_PROPS once, before the first read or write.
Store& seededStore() {
    static Store& sStore = []() -> Store& {
        Store& s = store();
        if (const char* seed = std::getenv("CAMTUNE_PROPS")) camtune::host::loadPropertyFile(seed);
        return s;
    }();
    return sStore;
}

int copyOut(char* out, const char* text) {
    size_t length = std::strlen(text);
    if (length >= static_cast<size_t>(kPropertyValueMax)) length = kPropertyValueMax - 1;
    std::memcpy(out, text, length);
    out[length] = '\0';
    return static_cast<int>(length);
}

}  // namespace

int property_get(const char* key, char* value, const char* defaultValue) {
    value[0] = '\0';
    if (key != nullptr) {
        if (const Slot* slot = seededStore().find(key)) {
            slot->read(value);
            if (value[0] != '\0') return static_cast<int>(std::strlen(value));
        }
    }
    return copyOut(value, defaultValue != nullptr ? defaultValue : "");
}

int32_t property_get_int32(const char* key, int32_t defaultValue) {
    if (key == nullptr) return defaultValue;
    const Slot* slot = seededStore().find(key);
    return slot != nullptr ? slot->readInt32(defaultValue) : defaultValue;
}

int property_set(const char* key, const char* value) {
    if (key == nullptr || key[0] == '\0') return -1;
    return seededStore().set(key, value != nullptr ? value : "");
}

}  // namespace Properties
}  // namespace Utils
}  // namespace NSCam

namespace camtune {
namespace host {

bool loadPropertyFile(const char* path) {
    std::ifstream in(path);
    if (!in) {
        std::fprintf(stderr, "W/camtune: cannot read property file %s\n", path);
        return false;
    }
    std::string line;
    int lineNo = 0;
    while (std::getline(in, line)) {
        ++lineNo;
        std::string key;
        std::string value;
        switch (parsePropertyLine(line, &key, &value)) {
            case PropertyLine::Blank:
                break;
            case PropertyLine::Entry:
                // Straight to the store: seeding runs inside the first property access.
                if (NSCam::Utils::Properties::store().set(key.c_str(), value.c_str()) != 0) {
                    std::fprintf(stderr, "W/camtune: %s:%d: value of %s is too long\n", path,
                                 lineNo, key.c_str());
                }
                break;
            case PropertyLine::Malformed:
                std::fprintf(stderr, "W/camtune: %s:%d: expected key=value\n", path, lineNo);
                break;
        }
    }
    if (in.bad()) {
        // A directory opens, and fails at its first read.
        std::fprintf(stderr, "W/camtune: cannot read property file %s: %s\n", path,
                     std::strerror(errno));
        return false;
    }
    return true;
}

}  // namespace host
}  // namespace camtune
