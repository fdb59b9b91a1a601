// IFileCache: shared handles to files written in pieces, closed when the last holder lets go.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

class IFileHandle {
public:
    virtual ~IFileHandle() = default;
    virtual bool isOpen() const = 0;
    // Writes `size` bytes; returns the number written (short, or -1 on failure or when the file
    // could not be opened).
    virtual ssize_t write(const void* data, size_t size) = 0;
};

class IFileCache {
public:
    // Opens `path` for writing (created or truncated). Never null: when the file cannot be
    // opened the handle reports it through isOpen() and every write fails.
    static std::shared_ptr<IFileHandle> open(const char* path);
};

}  // namespace NSCam

CAMTUNE_EXPORT_END
