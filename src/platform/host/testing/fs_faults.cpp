// File-operation faults and the free-space override.
#include <array>
#include <atomic>
#include <cerrno>
#include <mutex>

#include "camtune/platform/testing.h"
#include "platform/host/testing_hooks.h"

namespace camtune {
namespace fs {
namespace testing {
namespace {

constexpr size_t kOpCount = static_cast<size_t>(Op::Rename) + 1;

struct Faults {
    std::mutex lock;
    std::array<int, kOpCount> passes{};
    std::array<int, kOpCount> remaining{};
    std::array<int, kOpCount> error{};
    bool freeSpaceSet = false;
    uint64_t freeSpace = 0;
    int shortWrites = 0;
    size_t shortWriteBytes = 0;
};

// Set while anything is armed, so the library's common path tests one flag.
std::atomic<bool> gArmed{false};

Faults& faults() {
    static Faults* sFaults = new Faults();  // never destroyed: library threads may outlive main
    return *sFaults;
}

void updateArmed(Faults& f) {
    bool armed = f.freeSpaceSet || f.shortWrites > 0;
    for (int count : f.remaining) armed = armed || count > 0;
    gArmed.store(armed, std::memory_order_release);
}

}  // namespace

void failNext(Op op, int count, int err, int passes) {
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    f.passes[static_cast<size_t>(op)] = passes;
    f.remaining[static_cast<size_t>(op)] = count;
    f.error[static_cast<size_t>(op)] = err;
    updateArmed(f);
}

void shortenNextWrites(int count, size_t bytes) {
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    f.shortWrites = count;
    f.shortWriteBytes = bytes;
    updateArmed(f);
}

void setFreeSpace(uint64_t bytes) {
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    f.freeSpaceSet = true;
    f.freeSpace = bytes;
    updateArmed(f);
}

void clearFreeSpace() {
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    f.freeSpaceSet = false;
    updateArmed(f);
}

void reset() {
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    f.remaining.fill(0);
    f.freeSpaceSet = false;
    f.shortWrites = 0;
    updateArmed(f);
}

}  // namespace testing
}  // namespace fs
}  // namespace camtune

using camtune::fs::testing::Op;

bool camtune_testing_fs_fails(int op) {
    using namespace camtune::fs::testing;
    if (!gArmed.load(std::memory_order_acquire)) return false;
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    const size_t index = static_cast<size_t>(op);
    if (index >= kOpCount || f.remaining[index] <= 0) return false;
    if (f.passes[index] > 0) {
        --f.passes[index];
        return false;
    }
    --f.remaining[index];
    errno = f.error[index];
    updateArmed(f);
    return true;
}

size_t camtune_testing_fs_write_limit(size_t size) {
    using namespace camtune::fs::testing;
    if (!gArmed.load(std::memory_order_acquire)) return size;
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    if (f.shortWrites > 0) {
        --f.shortWrites;
        if (size > f.shortWriteBytes) size = f.shortWriteBytes;
        updateArmed(f);
    }
    return size;
}

bool camtune_testing_fs_free_space(uint64_t* bytes) {
    using namespace camtune::fs::testing;
    if (!gArmed.load(std::memory_order_acquire)) return false;
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    if (f.freeSpaceSet) *bytes = f.freeSpace;
    return f.freeSpaceSet;
}
