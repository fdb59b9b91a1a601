// A fresh temporary folder used as the file-system root for one test.
#pragma once

#include <string>

namespace camtune {
namespace test {

class TempRoot {
public:
    TempRoot();   // creates the folder and makes it the fs root; clears armed fs faults
    ~TempRoot();  // restores the previous root, removes the folder and clears faults
    TempRoot(const TempRoot&) = delete;
    TempRoot& operator=(const TempRoot&) = delete;

    const std::string& path() const { return mPath; }
    // Where a library path such as "/data/vendor/x" lands on the host.
    std::string hostPath(const std::string& devicePath) const;
    // Helpers for arranging and inspecting files by device path.
    void writeFile(const std::string& devicePath, const std::string& content) const;
    std::string readFile(const std::string& devicePath) const;
    bool exists(const std::string& devicePath) const;

private:
    std::string mPath;
    std::string mPreviousRoot;
};

}  // namespace test
}  // namespace camtune
