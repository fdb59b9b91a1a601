// Host property store.
//
// Keys live in a fixed open-addressing table whose slots are published once and never move or
// die, so a reader finds its key without a lock. Each value sits behind a sequence counter
// (a seqlock built from atomics): readers never write shared memory, so two reading threads do
// not contend, and a reader racing a writer simply retries.
#include "camtune/platform/properties.h"

#include <atomic>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <mutex>
#include <string>

#include "platform/host/property_file.h"
#include "platform/property_parse.h"

namespace NSCam {
namespace Utils {
namespace Properties {
namespace {

constexpr size_t kCapacity = 1024;  // distinct keys; a power of two
constexpr size_t kWords = (kPropertyValueMax + 7) / 8;

// Mixes eight bytes at a time: keys run to forty characters and a byte-wise hash
// would dominate the cost of a read.
uint64_t hashKey(const char* key, size_t length) {
    uint64_t hash = 0x9E3779B97F4A7C15ull ^ length;
    size_t at = 0;
    for (; at + 8 <= length; at += 8) {
        uint64_t word;
        std::memcpy(&word, key + at, 8);
        hash = (hash ^ word) * 0xFF51AFD7ED558CCDull;
        hash ^= hash >> 32;
    }
    uint64_t tail = 0;
    std::memcpy(&tail, key + at, length - at);
    hash = (hash ^ tail) * 0xC4CEB9FE1A85EC53ull;
    return hash ^ (hash >> 29);
}

class Slot {
public:
    Slot(const char* key, size_t length, uint64_t hash) : mKey(key, length), mHash(hash) {}

    bool matches(const char* key, size_t length, uint64_t hash) const {
        return mHash == hash && mKey.size() == length && std::memcmp(mKey.data(), key, length) == 0;
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

    // Called with the store's write lock held.
    void write(const char* value, size_t length) {
        uint64_t words[kWords] = {};
        std::memcpy(words, value, length);
        uint32_t sequence = mSequence.load(std::memory_order_relaxed);
        mSequence.store(sequence + 1, std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_release);
        for (size_t i = 0; i < kWords; ++i) mWords[i].store(words[i], std::memory_order_relaxed);
        mSequence.store(sequence + 2, std::memory_order_release);
    }

private:
    const std::string mKey;
    const uint64_t mHash;
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
                auto created = std::make_unique<Slot>(key, keyLength, hash);
                created->write(value, length);
                cell.store(created.release(), std::memory_order_release);
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
    char text[kPropertyValueMax];
    if (property_get(key, text, "") == 0) return defaultValue;
    return camtune::parsePropertyInt32(text, defaultValue);
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
