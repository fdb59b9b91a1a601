#include "bench_support.h"

#include <stdlib.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <new>

#include "camtune/platform/fs.h"
#include "platform/host/root.h"

namespace {
std::atomic<uint64_t> gAllocations{0};
}  // namespace

// Counts allocations of the whole process. The replacement pairs malloc with free on purpose,
// which g++ cannot see through.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
void* operator new(size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size != 0 ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, size_t) noexcept {
    std::free(p);
}

namespace camtune {
namespace bench {

uint64_t allocationCount() {
    return gAllocations.load(std::memory_order_relaxed);
}

ScratchRoot::ScratchRoot() {
    std::string pattern = (std::filesystem::temp_directory_path() / "camtune-bench-XXXXXX");
    if (::mkdtemp(pattern.data()) != nullptr) mPath = pattern;
    host::setRoot(mPath.c_str());
}

ScratchRoot::~ScratchRoot() {
    std::error_code ignored;
    if (!mPath.empty()) std::filesystem::remove_all(mPath, ignored);
}

void ScratchRoot::clearFolder(const char* folder) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(host::hostPath(folder), ignored)) {
        std::filesystem::remove(entry.path(), ignored);
    }
}

}  // namespace bench
}  // namespace camtune
