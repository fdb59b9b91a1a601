// Shared fixtures of the scenario recorder tests.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "camtune/platform/fs.h"
#include "support/log_capture.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace camtune {
namespace test {

constexpr char kLogFolder[] = "/data/vendor/camera_dump";

// A temporary root with the log folder made and plenty of free space reported, so no test
// prunes by accident.
class RecorderFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(fs::makePath(kLogFolder, 0771), 0);
        fs::testing::setFreeSpace(uint64_t{1} << 40);
    }

    // Names of the regular files in a device folder, sorted.
    std::vector<std::string> filesIn(const std::string& folder) const {
        std::vector<std::string> names;
        std::error_code error;
        for (const auto& entry :
             std::filesystem::directory_iterator(mRoot.hostPath(folder), error)) {
            if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    static std::vector<std::string> splitLines(const std::string& text) {
        std::vector<std::string> lines;
        size_t start = 0;
        for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
            lines.push_back(text.substr(start, end - start));
        }
        if (start < text.size()) lines.push_back(text.substr(start));
        return lines;
    }

    TempRoot mRoot;
    PropertyScope mProps;
};

// Polls `condition` until it holds or `timeout` passes.
template <typename Condition>
bool eventually(Condition condition, std::chrono::milliseconds timeout = std::chrono::seconds(20)) {
    auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::yield();
    }
    return true;
}

}  // namespace test
}  // namespace camtune
