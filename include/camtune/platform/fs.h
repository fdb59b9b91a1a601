// File-system access. Every file operation of the library goes through here.
//
// On a host, absolute paths are resolved under CAMTUNE_ROOT when it is set, so
// "/data/vendor/camera_dump/x" lands in "$CAMTUNE_ROOT/data/vendor/camera_dump/x". Relative paths
// are taken from "/" (the camera service's working folder), so they land under the root too.
// Names the library composes and returns never change; only the place they are opened moves.
// On a device the paths are used as they are.
//
// Results follow POSIX: -1 with errno set on failure, unless a function says otherwise.
#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace camtune {
namespace fs {

// What stat reports, in fields of one size on every build: `struct stat` changes layout with
// _FILE_OFFSET_BITS on 32-bit builds, so it cannot cross this interface.
struct FileInfo {
    uint64_t size = 0;
    int64_t modifiedSeconds = 0;  // since the epoch
    uint32_t mode = 0;            // type and permission bits, as st_mode
    bool isRegular() const;
    bool isDirectory() const;
};

// What statvfs reports, in bytes.
struct SpaceInfo {
    uint64_t freeBytes = 0;       // including the superuser's reserve
    uint64_t availableBytes = 0;  // to unprivileged processes
    uint64_t blockSize = 0;
};

int open(const char* path, int flags, mode_t mode = 0);
int close(int fd);
ssize_t write(int fd, const void* data, size_t size);
ssize_t read(int fd, void* data, size_t size);
int fsync(int fd);
FILE* fopen(const char* path, const char* mode);
int mkdir(const char* path, mode_t mode);
// Creates `path` and every missing parent folder (the owner always gets rwx on the folders it
// creates). Returns 0 when the folder exists afterwards.
int makePath(const char* path, mode_t mode);
int stat(const char* path, FileInfo* info);
int statvfs(const char* path, SpaceInfo* info);
DIR* opendir(const char* path);
// Name of the next entry of `dir`, or null at the end (large-file safe on 32-bit builds).
const char* readdirName(DIR* dir);
int unlink(const char* path);
int rename(const char* from, const char* to);
// Opens a text stream for reading; check the stream's state for failure.
std::ifstream openInput(const char* path);

// Move-only owner of a file descriptor.
class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : mFd(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : mFd(other.release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    ~UniqueFd() { reset(); }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;

    int get() const { return mFd; }
    bool isValid() const { return mFd >= 0; }
    int release() {
        int fd = mFd;
        mFd = -1;
        return fd;
    }
    void reset(int fd = -1) {
        if (mFd >= 0) fs::close(mFd);
        mFd = fd;
    }

private:
    int mFd = -1;
};

// Move-only owners of a FILE* and a DIR*.
struct FileCloser {
    void operator()(FILE* f) const {
        if (f) ::fclose(f);
    }
};
struct DirCloser {
    void operator()(DIR* d) const {
        if (d) ::closedir(d);
    }
};

}  // namespace fs
}  // namespace camtune

CAMTUNE_EXPORT_END
