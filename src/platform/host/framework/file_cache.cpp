// File cache: a shared handle over one descriptor, closed when the last holder lets it go.
#include "camtune/platform/file_cache.h"

#include <fcntl.h>

#include "camtune/platform/fs.h"

namespace NSCam {
namespace {

class FileHandle : public IFileHandle {
public:
    explicit FileHandle(const char* path)
        : mFd(camtune::fs::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644)) {}

    bool isOpen() const override { return mFd.isValid(); }

    ssize_t write(const void* data, size_t size) override {
        if (!mFd.isValid()) return -1;
        return camtune::fs::write(mFd.get(), data, size);
    }

private:
    camtune::fs::UniqueFd mFd;
};

}  // namespace

std::shared_ptr<IFileHandle> IFileCache::open(const char* path) {
    return std::make_shared<FileHandle>(path);
}

}  // namespace NSCam
