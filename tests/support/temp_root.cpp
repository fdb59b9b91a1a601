#include "support/temp_root.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "camtune/platform/testing.h"

namespace camtune {
namespace test {

TempRoot::TempRoot() : mPreviousRoot(fs::testing::root()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "camtune-XXXXXX").string();
    char* made = ::mkdtemp(pattern.data());
    if (made == nullptr) ADD_FAILURE() << "mkdtemp failed for " << pattern;
    mPath = pattern;
    fs::testing::setRoot(mPath.c_str());
    fs::testing::reset();
}

TempRoot::~TempRoot() {
    fs::testing::reset();
    fs::testing::setRoot(mPreviousRoot.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

std::string TempRoot::hostPath(const std::string& devicePath) const {
    // A path already under the root (one this returned) stays as it is.
    if (devicePath.compare(0, mPath.size() + 1, mPath + "/") == 0) return devicePath;
    return devicePath.empty() || devicePath[0] == '/' ? mPath + devicePath
                                                      : mPath + "/" + devicePath;
}

void TempRoot::writeFile(const std::string& devicePath, const std::string& content) const {
    std::filesystem::path host = hostPath(devicePath);
    std::filesystem::create_directories(host.parent_path());
    std::ofstream out(host, std::ios::binary | std::ios::trunc);
    out << content;
}

std::string TempRoot::readFile(const std::string& devicePath) const {
    std::ifstream in(hostPath(devicePath), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool TempRoot::exists(const std::string& devicePath) const {
    return std::filesystem::exists(hostPath(devicePath));
}

}  // namespace test
}  // namespace camtune
