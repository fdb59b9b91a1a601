// What the benchmark programs share: a scratch file-system root and an allocation counter.
#pragma once

#include <cstdint>
#include <string>

namespace camtune {
namespace bench {

// operator new calls of the whole process so far (the library's included). Linking this support
// library replaces the global operator new of the program with a counting one.
uint64_t allocationCount();

// A temporary folder made the file-system root for the program's life, removed at exit.
class ScratchRoot {
public:
    ScratchRoot();
    ~ScratchRoot();
    ScratchRoot(const ScratchRoot&) = delete;
    ScratchRoot& operator=(const ScratchRoot&) = delete;

    // Removes the files in the device folder `folder` (a path under the root).
    static void clearFolder(const char* folder);

private:
    std::string mPath;
};

}  // namespace bench
}  // namespace camtune
