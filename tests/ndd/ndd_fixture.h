// A private NDD instance per test, with a temporary root, its own properties and a
// configuration file.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "camtune/platform/fs.h"
#include "camtune/platform/properties.h"
#include "ndd/ndd_impl.h"
#include "support/log_capture.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace NSCam {
namespace TuningUtils {
namespace testing_ndd {

namespace props = camtune::props;
using camtune::test::LogCapture;
using Level = camtune::log::Level;

inline constexpr char kRootPath[] = "/data/vendor/camera_dump/";
inline constexpr char kConfigPath[] = "/data/vendor/camera_dump/ndd/ndd.cfg";
inline constexpr char kDefaultFolder[] = "/data/vendor/camera_dump/default_dump";

// Waits for `condition` without sleeping blindly; false when it did not hold within 10 s.
inline bool waitFor(const std::function<bool()>& condition) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::yield();
    }
    return true;
}

inline std::string propertyText(const props::Property& property) {
    char value[NSCam::Utils::Properties::kPropertyValueMax];
    props::getString(property, value);
    return value;
}

// An item of sensor 0, frame `frameNo`, feature "Preview", stage "Default".
inline NddData item(int frameNo = 1, int sensorId = 0) {
    NddData data;
    data.uniqueKey = 1234;
    data.requestNo = 5;
    data.frameNo = frameNo;
    data.sensorId = sensorId;
    data.stage = 0;
    data.feature = 0;
    data.action = -1;
    return data;
}

class NddTest : public ::testing::Test {
protected:
    NddTest() {
        mProps.set(props::kNddThreadCount, std::string("2"));
        mProps.set(props::kNddRootPath, std::string(kRootPath));
        mProps.set(props::kNddConfigPath, std::string(kConfigPath));
        mProps.set(props::kNddSensorDump, std::string("0"));
        mProps.set(props::kNddPreviewReady, 0);
        mProps.set(props::kNddLimitedSize, 0);
        mProps.set(props::kNddDirectWrite, 0);
        mProps.set(props::kNddSubdir, 0);
        mProps.set(props::kNddActionEnable, -1);
        mProps.set(props::kNddDebugging, 0);
        mProps.set(props::kNddGenConfig, 0);
        mProps.set(props::kNddDumpSize, std::string());
        mProps.set(props::kNddSensorList, std::string());
        camtune::fs::makePath(kRootPath, 0777);
    }

    // Writes the configuration file, starts the writers and streams `sensors` on.
    void start(const std::string& config, std::vector<int> sensors = {0},
               unsigned int uniqueKey = 1234) {
        mRoot.writeFile(kConfigPath, config);
        mNdd->init();
        mNdd->stream_on(std::move(sensors), uniqueKey);
    }

    std::string folderFile(const std::string& name) const {
        return mRoot.readFile(std::string(kDefaultFolder) + "/" + name);
    }
    bool folderHas(const std::string& name) const {
        return mRoot.exists(std::string(kDefaultFolder) + "/" + name);
    }
    std::vector<std::string> folderFiles() const {
        std::vector<std::string> files;
        for (const auto& entry :
             std::filesystem::directory_iterator(mRoot.hostPath(kDefaultFolder))) {
            files.push_back(entry.path().filename().string());
        }
        return files;
    }

    camtune::test::TempRoot mRoot;
    camtune::test::PropertyScope mProps;
    // Instances live on the heap: mutexes reusing a stack address in a loop would look like one
    // lock to ThreadSanitizer's lock-order check.
    std::unique_ptr<Ndd> mNdd = std::make_unique<Ndd>();
};

}  // namespace testing_ndd
}  // namespace TuningUtils
}  // namespace NSCam
