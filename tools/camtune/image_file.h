// Reading dump files whole, and writing outputs so that a failed write leaves nothing behind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace camtune {
namespace cli {
namespace image {

// Size of the regular, non-empty file at `path`; false with a reason a person reads ("no such
// file", "is a folder", "is empty") otherwise.
bool inputFileSize(const std::string& path, uint64_t* size, std::string* error);

// The whole of the file at `path`, which must still be `size` bytes.
bool readInputFile(const std::string& path, uint64_t size, std::vector<uint8_t>* bytes,
                   std::string* error);

// A file written under a temporary name in its destination's folder and renamed over the
// destination by commit(); without commit() the temporary file is removed.
class OutputFile {
public:
    explicit OutputFile(std::string destination) : mDestination(std::move(destination)) {}
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Creates the temporary file; writers then fill temporaryPath().
    bool create(std::string* error);
    const std::string& temporaryPath() const { return mTemporary; }
    bool writeAll(const void* data, size_t size, std::string* error);
    bool commit(std::string* error);

private:
    std::string mDestination;
    std::string mTemporary;
};

}  // namespace image
}  // namespace cli
}  // namespace camtune
