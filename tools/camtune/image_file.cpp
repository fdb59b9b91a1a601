#include "image_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace camtune {
namespace cli {
namespace image {
namespace {

std::string systemError(const char* what) {
    return std::string(what) + ": " + std::strerror(errno);
}

// Closes a descriptor when it goes out of scope.
class Descriptor {
public:
    explicit Descriptor(int fd) : mFd(fd) {}
    ~Descriptor() {
        if (mFd >= 0) ::close(mFd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return mFd; }
    bool close() {
        const int fd = mFd;
        mFd = -1;
        return ::close(fd) == 0;
    }

private:
    int mFd;
};

std::string folderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string baseOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

bool inputFileSize(const std::string& path, uint64_t* size, std::string* error) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        *error = errno == ENOENT ? "no such file" : systemError("cannot read it");
        return false;
    }
    if (S_ISDIR(info.st_mode)) {
        *error = "is a folder, not a file";
        return false;
    }
    if (!S_ISREG(info.st_mode)) {
        *error = "is not a regular file";
        return false;
    }
    if (info.st_size == 0) {
        *error = "is empty";
        return false;
    }
    *size = static_cast<uint64_t>(info.st_size);
    return true;
}

bool readInputFile(const std::string& path, uint64_t size, std::vector<uint8_t>* bytes,
                   std::string* error) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.get() < 0) {
        *error = systemError("cannot open it");
        return false;
    }
    bytes->resize(size);
    size_t done = 0;
    while (done < size) {
        const ssize_t got = ::read(file.get(), bytes->data() + done, size - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            *error = systemError("cannot read it");
            return false;
        }
        if (got == 0) {
            *error = "it shrank to " + std::to_string(done) + " bytes while being read";
            return false;
        }
        done += static_cast<size_t>(got);
    }
    return true;
}

OutputFile::~OutputFile() {
    if (!mTemporary.empty()) ::unlink(mTemporary.c_str());
}

bool OutputFile::create(std::string* error) {
    std::string pattern = folderOf(mDestination) + "/." + baseOf(mDestination) + ".XXXXXX";
    Descriptor file(::mkstemp(pattern.data()));
    if (file.get() < 0) {
        *error = systemError(("cannot create a file in " + folderOf(mDestination)).c_str());
        return false;
    }
    mTemporary = pattern;
    // mkstemp makes the file private; an output is as readable as any other.
    ::fchmod(file.get(), 0644);
    return true;
}

bool OutputFile::writeAll(const void* data, size_t size, std::string* error) {
    Descriptor file(::open(mTemporary.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    size_t done = 0;
    while (file.get() >= 0 && done < size) {
        const ssize_t wrote = ::write(file.get(), bytes + done, size - done);
        if (wrote < 0 && errno == EINTR) continue;
        if (wrote <= 0) break;
        done += static_cast<size_t>(wrote);
    }
    if (file.get() < 0 || done < size || !file.close()) {
        *error = systemError(("cannot write " + mTemporary).c_str());
        return false;
    }
    return true;
}

bool OutputFile::commit(std::string* error) {
    if (::rename(mTemporary.c_str(), mDestination.c_str()) != 0) {
        *error = systemError(("cannot rename " + mTemporary + " to " + mDestination).c_str());
        return false;
    }
    mTemporary.clear();
    return true;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
