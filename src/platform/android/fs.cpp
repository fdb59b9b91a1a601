// The device's file wrappers: the paths the library names are the paths it opens.
#include "camtune/platform/fs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cstdio>

#include "platform/posix_fs.h"

namespace camtune {
namespace fs {

int open(const char* path, int flags, mode_t mode) {
    return ::open(path, flags | O_CLOEXEC, mode);
}

ssize_t write(int fd, const void* data, size_t size) {
    return ::write(fd, data, size);
}

ssize_t read(int fd, void* data, size_t size) {
    return ::read(fd, data, size);
}

int fsync(int fd) {
    return ::fsync(fd);
}

FILE* fopen(const char* path, const char* mode) {
    return std::fopen(path, mode);
}

int mkdir(const char* path, mode_t mode) {
    return ::mkdir(path, mode);
}

int makePath(const char* path, mode_t mode) {
    return makeEachLevel(
            path, mode, [](const char* level, struct ::stat* st) { return ::stat(level, st); },
            [](const char* level, mode_t levelMode) { return ::mkdir(level, levelMode); });
}

int stat(const char* path, FileInfo* info) {
    struct ::stat st = {};
    if (::stat(path, &st) != 0) return -1;
    toFileInfo(st, info);
    return 0;
}

int statvfs(const char* path, SpaceInfo* info) {
    struct ::statvfs st = {};
    if (::statvfs(path, &st) != 0) return -1;
    toSpaceInfo(st, info);
    return 0;
}

DIR* opendir(const char* path) {
    return ::opendir(path);
}

int unlink(const char* path) {
    return ::unlink(path);
}

int rename(const char* from, const char* to) {
    return std::rename(from, to);
}

std::ifstream openInput(const char* path) {
    return std::ifstream(path);
}

}  // namespace fs
}  // namespace camtune
