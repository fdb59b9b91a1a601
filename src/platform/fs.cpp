// File-system wrappers: the CAMTUNE_ROOT remapping and the fault seam live here, so every file
// operation of the library can be relocated or made to fail from a test.
#include "camtune/platform/fs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace camtune {
namespace fs {
namespace {

constexpr size_t kOpCount = static_cast<size_t>(testing::Op::Rename) + 1;

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

// Set while any fault or free-space override is armed, so the common path tests one flag.
std::atomic<bool> gArmed{false};

Faults& faults() {
    static Faults* sFaults = new Faults();
    return *sFaults;
}

void updateArmed(Faults& f) {
    bool armed = f.freeSpaceSet || f.shortWrites > 0;
    for (int count : f.remaining) armed = armed || count > 0;
    gArmed.store(armed, std::memory_order_release);
}

// True (with errno set) when `op` is to fail now.
bool injectFault(testing::Op op) {
    if (!gArmed.load(std::memory_order_acquire)) return false;
    Faults& f = faults();
    std::lock_guard<std::mutex> guard(f.lock);
    size_t index = static_cast<size_t>(op);
    if (f.remaining[index] <= 0) return false;
    if (f.passes[index] > 0) {
        --f.passes[index];
        return false;
    }
    --f.remaining[index];
    errno = f.error[index];
    updateArmed(f);
    return true;
}

struct Root {
    std::mutex lock;
    std::string path;
    Root() {
        if (const char* env = std::getenv("CAMTUNE_ROOT")) setPath(env);
    }
    void setPath(const char* value) {
        path = value != nullptr ? value : "";
        while (path.size() > 1 && path.back() == '/') path.pop_back();
        if (path == "/") path.clear();
    }
};

Root& rootState() {
    static Root* sRoot = new Root();
    return *sRoot;
}

}  // namespace

std::string root() {
    Root& r = rootState();
    std::lock_guard<std::mutex> guard(r.lock);
    return r.path;
}

void setRoot(const char* value) {
    Root& r = rootState();
    std::lock_guard<std::mutex> guard(r.lock);
    r.setPath(value);
}

std::string hostPath(const char* path) {
    if (path == nullptr || path[0] == '\0') return std::string();  // stays an invalid path
    std::string prefix = root();
    if (prefix.empty()) return path;
    if (path[0] != '/') return prefix + "/" + path;
    // A path already inside the root (for example one built from hostPath) stays as it is.
    if (std::strncmp(path, prefix.c_str(), prefix.size()) == 0 &&
        (path[prefix.size()] == '/' || path[prefix.size()] == '\0')) {
        return path;
    }
    return prefix + path;
}

int open(const char* path, int flags, mode_t mode) {
    if (injectFault(testing::Op::Open)) return -1;
    return ::open(hostPath(path).c_str(), flags | O_CLOEXEC, mode);
}

int close(int fd) {
    return ::close(fd);
}

ssize_t write(int fd, const void* data, size_t size) {
    if (injectFault(testing::Op::Write)) return -1;
    if (gArmed.load(std::memory_order_acquire)) {
        Faults& f = faults();
        std::lock_guard<std::mutex> guard(f.lock);
        if (f.shortWrites > 0) {
            --f.shortWrites;
            if (size > f.shortWriteBytes) size = f.shortWriteBytes;
            updateArmed(f);
        }
    }
    return ::write(fd, data, size);
}

ssize_t read(int fd, void* data, size_t size) {
    if (injectFault(testing::Op::Read)) return -1;
    return ::read(fd, data, size);
}

int fsync(int fd) {
    if (injectFault(testing::Op::Fsync)) return -1;
    return ::fsync(fd);
}

FILE* fopen(const char* path, const char* mode) {
    if (injectFault(testing::Op::Fopen)) return nullptr;
    return std::fopen(hostPath(path).c_str(), mode);
}

int mkdir(const char* path, mode_t mode) {
    if (injectFault(testing::Op::Mkdir)) return -1;
    return ::mkdir(hostPath(path).c_str(), mode);
}

int makePath(const char* path, mode_t mode) {
    if (path == nullptr || path[0] == '\0') {
        errno = EINVAL;
        return -1;
    }
    // The root itself is the user's folder: create it when it is missing, so a fresh
    // CAMTUNE_ROOT works without preparation.
    std::string prefix = root();
    for (size_t slash = prefix.find('/', 1); !prefix.empty(); slash = prefix.find('/', slash + 1)) {
        ::mkdir(prefix.substr(0, slash).c_str(), 0755);
        if (slash == std::string::npos) break;
    }
    // Walk the device path so the fault seam and the remapping see each level as the library
    // names it.
    std::string partial;
    std::string full = path;
    size_t at = 0;
    while (at != std::string::npos) {
        size_t next = full.find('/', at + 1);
        partial = full.substr(0, next);
        at = next;
        if (partial.empty() || partial == "/") continue;
        struct ::stat st;
        if (::stat(hostPath(partial.c_str()).c_str(), &st) == 0) {
            if (!S_ISDIR(st.st_mode)) {
                errno = ENOTDIR;
                return -1;
            }
            continue;
        }
        // A folder its owner cannot enter is useless (callers ask for modes such as 0660), so
        // the owner always gets rwx.
        if (fs::mkdir(partial.c_str(), mode | S_IRWXU) != 0 && errno != EEXIST) return -1;
    }
    return 0;
}

bool FileInfo::isRegular() const {
    return S_ISREG(mode);
}

bool FileInfo::isDirectory() const {
    return S_ISDIR(mode);
}

int stat(const char* path, FileInfo* info) {
    if (injectFault(testing::Op::Stat)) return -1;
    struct ::stat st = {};
    if (::stat(hostPath(path).c_str(), &st) != 0) return -1;
    info->size = static_cast<uint64_t>(st.st_size);
    info->modifiedSeconds = static_cast<int64_t>(st.st_mtime);
    info->mode = static_cast<uint32_t>(st.st_mode);
    return 0;
}

int statvfs(const char* path, SpaceInfo* info) {
    if (injectFault(testing::Op::Statvfs)) return -1;
    struct ::statvfs st = {};
    if (::statvfs(hostPath(path).c_str(), &st) != 0) return -1;
    info->blockSize = static_cast<uint64_t>(st.f_bsize);
    info->freeBytes = static_cast<uint64_t>(st.f_bfree) * st.f_bsize;
    info->availableBytes = static_cast<uint64_t>(st.f_bavail) * st.f_bsize;
    if (gArmed.load(std::memory_order_acquire)) {
        Faults& f = faults();
        std::lock_guard<std::mutex> guard(f.lock);
        if (f.freeSpaceSet) {
            info->freeBytes = f.freeSpace;
            info->availableBytes = f.freeSpace;
        }
    }
    return 0;
}

DIR* opendir(const char* path) {
    if (injectFault(testing::Op::Opendir)) return nullptr;
    return ::opendir(hostPath(path).c_str());
}

const char* readdirName(DIR* dir) {
#if defined(__GLIBC__) && !defined(__LP64__) && \
        (!defined(_FILE_OFFSET_BITS) || _FILE_OFFSET_BITS != 64)
    // A 32-bit readdir fails with EOVERFLOW on file systems with 64-bit inode numbers.
    const struct dirent64* entry = ::readdir64(dir);
#else
    const struct dirent* entry = ::readdir(dir);
#endif
    return entry != nullptr ? entry->d_name : nullptr;
}

int unlink(const char* path) {
    if (injectFault(testing::Op::Unlink)) return -1;
    return ::unlink(hostPath(path).c_str());
}

int rename(const char* from, const char* to) {
    if (injectFault(testing::Op::Rename)) return -1;
    return std::rename(hostPath(from).c_str(), hostPath(to).c_str());
}

std::ifstream openInput(const char* path) {
    std::ifstream in;
    if (injectFault(testing::Op::Fopen)) {
        in.setstate(std::ios::failbit);
        return in;
    }
    in.open(hostPath(path));
    return in;
}

namespace testing {

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
