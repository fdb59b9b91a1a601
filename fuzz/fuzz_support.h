// Setup shared by the fuzz targets: one temporary CAMTUNE_ROOT per process, silent logs, and
// the helpers that place an input where the library looks for it.
#pragma once

#include <ftw.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"
#include "platform/host/root.h"

namespace camtune {
namespace fuzz {

// Stops the run with a message: a broken expectation is a finding like a crash.
[[noreturn]] inline void fail(const char* what) {
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}

inline void check(bool condition, const char* what) {
    if (!condition) fail(what);
}

inline std::string& rootPath() {
    static std::string sRoot;
    return sRoot;
}

inline void removeRoot() {
    auto removeEntry = [](const char* path, const struct stat*, int, struct FTW*) {
        return ::remove(path);
    };
    if (!rootPath().empty()) ::nftw(rootPath().c_str(), removeEntry, 16, FTW_DEPTH | FTW_PHYS);
}

// Creates the temporary root once, makes it the library's root and silences the log (formatting
// every line would dominate the run). The root is removed when the fuzzer exits normally.
inline void setUpRoot() {
    if (!rootPath().empty()) return;
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern =
            std::string(tmp != nullptr && tmp[0] != '\0' ? tmp : "/tmp") + "/camtune-fuzz-XXXXXX";
    if (::mkdtemp(&pattern[0]) == nullptr) fail("mkdtemp");
    rootPath() = pattern;
    std::atexit(removeRoot);
    host::setRoot(pattern.c_str());
    log::setThreshold(log::Level::Silent);
}

// Writes `size` bytes to the device path `path` (under the root), creating its folders. The
// old file is removed first: truncating one makes ext4 flush it to disk at close, which would
// bound a run by the disk.
inline void writeDeviceFile(const char* path, const uint8_t* data, size_t size) {
    std::string folder(path, std::strrchr(path, '/') - path);
    if (!folder.empty() && fs::makePath(folder.c_str(), 0755) != 0) fail("makePath");
    fs::unlink(path);
    std::ofstream out(host::hostPath(path), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    out.close();
    if (!out) fail("cannot write an input file");
}

// Number of lines std::getline reads from these bytes.
inline int lineCount(const uint8_t* data, size_t size) {
    int lines = 0;
    for (size_t i = 0; i < size; ++i) lines += data[i] == '\n';
    return lines + (size > 0 && data[size - 1] != '\n' ? 1 : 0);
}

// Paths inside a list or configuration are device paths resolved under the root, but ".." can
// climb out of it (to a FIFO or a terminal that blocks, or a large file). Inputs holding it are
// skipped so the targets only ever touch their own root.
inline bool mayLeaveRoot(const uint8_t* data, size_t size) {
    return ::memmem(data, size, "..", 2) != nullptr;
}

// True when every finding names a line of the input.
template <typename Findings>
bool linesInRange(const Findings& findings, int lines) {
    for (const auto& finding : findings) {
        if (finding.line < 1 || finding.line > lines) return false;
    }
    return true;
}

// A buffer of `size` bytes followed by guard bytes, all filled with one known byte, to see what
// a function wrote into it and whether it wrote past its end.
class GuardedBuffer {
public:
    static constexpr size_t kGuardSize = 32;
    static constexpr char kFill = '\x5a';

    explicit GuardedBuffer(size_t size) : mSize(size), mBytes(size + kGuardSize, kFill) {}

    char* data() { return mBytes.data(); }
    const char* data() const { return mBytes.data(); }
    size_t size() const { return mSize; }

    bool guardIntact() const { return allFill(mSize, mBytes.size()); }
    bool untouched() const { return allFill(0, mBytes.size()); }
    // A terminator within the buffer's own bytes.
    bool terminated() const { return std::memchr(mBytes.data(), '\0', mSize) != nullptr; }

private:
    bool allFill(size_t from, size_t to) const {
        for (size_t i = from; i < to; ++i) {
            if (mBytes[i] != kFill) return false;
        }
        return true;
    }

    size_t mSize;
    std::vector<char> mBytes;
};

}  // namespace fuzz
}  // namespace camtune
