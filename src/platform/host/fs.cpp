// The host's file wrappers: absolute device paths are opened under the root (CAMTUNE_ROOT, or a
// folder a host program or a test sets), and the testing library can make any operation fail.
#include "camtune/platform/fs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "camtune/platform/testing.h"
#include "platform/host/root.h"
#include "platform/host/testing_hooks.h"
#include "platform/posix_fs.h"

namespace camtune {
namespace {

using fs::testing::Op;

// A root as given, without trailing slashes; "/" is no root at all.
std::string normalRoot(const char* value) {
    std::string path = value != nullptr ? value : "";
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    if (path == "/") path.clear();
    return path;
}

struct Root {
    std::mutex lock;
    std::string path = normalRoot(std::getenv("CAMTUNE_ROOT"));
};

Root& rootState() {
    static Root* sRoot = new Root();
    return *sRoot;
}

// True (with errno set) when `op` is to fail now.
bool fails(Op op) {
    return camtune_testing_fs_fails != nullptr && camtune_testing_fs_fails(static_cast<int>(op));
}

}  // namespace

namespace host {

std::string root() {
    std::string testRoot;
    if (camtune_testing_fs_root != nullptr && camtune_testing_fs_root(&testRoot)) {
        return normalRoot(testRoot.c_str());
    }
    Root& r = rootState();
    std::lock_guard<std::mutex> guard(r.lock);
    return r.path;
}

void setRoot(const char* value) {
    Root& r = rootState();
    std::lock_guard<std::mutex> guard(r.lock);
    r.path = normalRoot(value);
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

}  // namespace host

namespace fs {

using host::hostPath;

int open(const char* path, int flags, mode_t mode) {
    if (fails(Op::Open)) return -1;
    return ::open(hostPath(path).c_str(), flags | O_CLOEXEC, mode);
}

ssize_t write(int fd, const void* data, size_t size) {
    if (fails(Op::Write)) return -1;
    if (camtune_testing_fs_write_limit != nullptr) size = camtune_testing_fs_write_limit(size);
    return ::write(fd, data, size);
}

ssize_t read(int fd, void* data, size_t size) {
    if (fails(Op::Read)) return -1;
    return ::read(fd, data, size);
}

int fsync(int fd) {
    if (fails(Op::Fsync)) return -1;
    return ::fsync(fd);
}

FILE* fopen(const char* path, const char* mode) {
    if (fails(Op::Fopen)) return nullptr;
    return std::fopen(hostPath(path).c_str(), mode);
}

int mkdir(const char* path, mode_t mode) {
    if (fails(Op::Mkdir)) return -1;
    return ::mkdir(hostPath(path).c_str(), mode);
}

int makePath(const char* path, mode_t mode) {
    // The root itself is the user's folder: create it when it is missing, so a fresh
    // CAMTUNE_ROOT works without preparation.
    std::string prefix = host::root();
    for (size_t slash = prefix.find('/', 1); !prefix.empty(); slash = prefix.find('/', slash + 1)) {
        ::mkdir(prefix.substr(0, slash).c_str(), 0755);
        if (slash == std::string::npos) break;
    }
    // Levels are looked at past the fault seam (a test failing stat means the caller's stat),
    // and made through fs::mkdir, which the seam sees.
    return makeEachLevel(
            path, mode,
            [](const char* level, struct ::stat* st) {
                return ::stat(hostPath(level).c_str(), st);
            },
            [](const char* level, mode_t levelMode) { return fs::mkdir(level, levelMode); });
}

int stat(const char* path, FileInfo* info) {
    if (fails(Op::Stat)) return -1;
    struct ::stat st = {};
    if (::stat(hostPath(path).c_str(), &st) != 0) return -1;
    toFileInfo(st, info);
    return 0;
}

int statvfs(const char* path, SpaceInfo* info) {
    if (fails(Op::Statvfs)) return -1;
    struct ::statvfs st = {};
    if (::statvfs(hostPath(path).c_str(), &st) != 0) return -1;
    toSpaceInfo(st, info);
    uint64_t testFree = 0;
    if (camtune_testing_fs_free_space != nullptr && camtune_testing_fs_free_space(&testFree)) {
        info->freeBytes = testFree;
        info->availableBytes = testFree;
    }
    return 0;
}

DIR* opendir(const char* path) {
    if (fails(Op::Opendir)) return nullptr;
    return ::opendir(hostPath(path).c_str());
}

int unlink(const char* path) {
    if (fails(Op::Unlink)) return -1;
    return ::unlink(hostPath(path).c_str());
}

int rename(const char* from, const char* to) {
    if (fails(Op::Rename)) return -1;
    return std::rename(hostPath(from).c_str(), hostPath(to).c_str());
}

std::ifstream openInput(const char* path) {
    std::ifstream in;
    if (fails(Op::Fopen)) {
        in.setstate(std::ios::failbit);
        return in;
    }
    in.open(hostPath(path));
    return in;
}

}  // namespace fs
}  // namespace camtune
