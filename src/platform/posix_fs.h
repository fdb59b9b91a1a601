// POSIX pieces both backends' file wrappers share.
#pragma once

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <string>

#include "camtune/platform/fs.h"

namespace camtune {
namespace fs {

inline void toFileInfo(const struct ::stat& st, FileInfo* info) {
    info->size = static_cast<uint64_t>(st.st_size);
    info->modifiedSeconds = static_cast<int64_t>(st.st_mtime);
    info->mode = static_cast<uint32_t>(st.st_mode);
}

inline void toSpaceInfo(const struct ::statvfs& st, SpaceInfo* info) {
    info->blockSize = static_cast<uint64_t>(st.f_bsize);
    info->freeBytes = static_cast<uint64_t>(st.f_bfree) * st.f_bsize;
    info->availableBytes = static_cast<uint64_t>(st.f_bavail) * st.f_bsize;
}

// makePath's walk: each level of the device path `path` in turn, so the backend sees every
// level as the library names it. `statLevel(level, &st)` is a stat of one level; a missing one
// is made with `makeLevel(level, mode)`.
template <typename StatLevel, typename MakeLevel>
int makeEachLevel(const char* path, mode_t mode, StatLevel statLevel, MakeLevel makeLevel) {
    if (path == nullptr || path[0] == '\0') {
        errno = EINVAL;
        return -1;
    }
    const std::string full = path;
    size_t at = 0;
    while (at != std::string::npos) {
        const size_t next = full.find('/', at + 1);
        const std::string level = full.substr(0, next);
        at = next;
        if (level.empty() || level == "/") continue;
        struct ::stat st;
        if (statLevel(level.c_str(), &st) == 0) {
            if (!S_ISDIR(st.st_mode)) {
                errno = ENOTDIR;
                return -1;
            }
            continue;
        }
        // A folder its owner cannot enter is useless (callers ask for modes such as 0660), so
        // the owner always gets rwx.
        if (makeLevel(level.c_str(), mode | S_IRWXU) != 0 && errno != EEXIST) return -1;
    }
    return 0;
}

}  // namespace fs
}  // namespace camtune
