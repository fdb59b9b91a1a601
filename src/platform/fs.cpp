// File wrappers that are the same on every platform; the backends hold the rest.
#include "camtune/platform/fs.h"

#include <sys/stat.h>
#include <unistd.h>

namespace camtune {
namespace fs {

int close(int fd) {
    return ::close(fd);
}

bool FileInfo::isRegular() const {
    return S_ISREG(mode);
}

bool FileInfo::isDirectory() const {
    return S_ISDIR(mode);
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

}  // namespace fs
}  // namespace camtune
