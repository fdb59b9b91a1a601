// A temporary log folder, and recorders made and started for one test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "camtune/platform/clock.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/testing.h"
#include "recorder/scenario_recorder_impl.h"
#include "support/log_capture.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace testing_recorder {

using camtune::log::Level;
using camtune::test::LogCapture;
using Buffer = ScenarioRecorder::Buffer;
using Strings = std::vector<std::string>;
namespace fst = camtune::fs::testing;
namespace props = camtune::props;
using namespace std::chrono_literals;

inline const std::string kLogFolder = "/data/vendor/camera_dump";
inline const std::string kNoFile =
        "Unable to open file. Please disable SELinux and restart camerahalserver. !!!";

template <typename Condition>
inline bool eventually(Condition condition) {
    auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::yield();
    }
    return true;
}

inline std::string nextFile(const std::string& path) {
    return std::regex_replace(path, std::regex("_01\\.txt$"), "_02.txt");
}

// A temporary root with the log folder made and plenty of free space, so nothing is pruned by
// accident.
class RecorderFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(camtune::fs::makePath(kLogFolder.c_str(), 0771), 0);
        fst::setFreeSpace(uint64_t{1} << 40);
    }

    Strings logFiles() const {
        Strings names;
        for (const auto& entry : std::filesystem::directory_iterator(mRoot.hostPath(kLogFolder))) {
            if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    // The one log file whose name contains `part`, as a device path.
    std::string fileOf(const std::string& part) const {
        std::string found;
        for (const auto& name : logFiles()) {
            if (name.find(part) == std::string::npos) continue;
            EXPECT_TRUE(found.empty()) << "two files for " << part;
            found = kLogFolder + "/" + name;
        }
        return found;
    }

    Strings linesOf(const std::string& part) const {
        std::istringstream in(mRoot.readFile(fileOf(part)));
        Strings lines;
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }

    std::unique_ptr<FileWriter> openWriter(const std::string& prefix, bool quiet = true) {
        auto writer = std::make_unique<FileWriter>(1, 2, 3);
        writer->setFolder(kLogFolder);
        EXPECT_TRUE(writer->open(true, prefix.c_str(), quiet));
        return writer;
    }

    camtune::test::TempRoot mRoot;
    camtune::test::PropertyScope mProps;
};

class RecorderTest : public RecorderFixture {
protected:
    void SetUp() override {
        RecorderFixture::SetUp();
        mProps.set(props::kRecorderFlushMs, 2);
    }
    void TearDown() override {
        if (mRecorder) mRecorder->unInit();
        camtune::clock::testing::reset();
    }

    // A recorder whose service thread is not running yet.
    ScenarioRecorder& make(ScenarioRecorder::PrioritySetter setNice = [](int) { return 0; }) {
        mRecorder = std::make_unique<ScenarioRecorder>();
        mRecorder->setPrioritySetter(std::move(setNice));
        return *mRecorder;
    }

    ScenarioRecorder& start(ScenarioRecorder::PrioritySetter setNice = [](int) { return 0; }) {
        make(std::move(setNice)).init();
        return *mRecorder;
    }

    LogHeader* reserve(int uniqueKey, int requestNo, unsigned size, Buffer** buffer) {
        LogHeader* header = nullptr;
        EXPECT_TRUE(mRecorder->allocLogSpace(uniqueKey, requestNo, size, &header, buffer));
        return header;
    }

    // Calls `during` while an unfinished record of (uniqueKey, requestNo) keeps the service
    // thread (started here if need be) waiting, so that records made meanwhile are written in one
    // later batch; then finishes the record as "held".
    template <typename During>
    void whileHeld(int uniqueKey, int requestNo, During during) {
        Buffer* buffer = nullptr;
        LogHeader* header = reserve(uniqueKey, requestNo, 64, &buffer);
        if (!mRecorder->isInitialised()) mRecorder->init();
        ASSERT_TRUE(eventually([&] { return mRecorder->stats().toBeFlushed == 1; }));
        during();
        std::strcpy(header->text(), "held");
        mRecorder->finishLogSpace(uniqueKey, requestNo, buffer);
    }

    std::unique_ptr<ScenarioRecorder> mRecorder;
};

}  // namespace testing_recorder
}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
