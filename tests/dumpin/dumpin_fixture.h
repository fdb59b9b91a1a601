// A temporary root with a dump-in list, properties restored afterwards and every log line kept.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "camtune/file_read_rule.h"
#include "support/log_capture.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace camtune {
namespace test {

inline constexpr char kListPath[] = "/data/vendor/camera_dump/dumpin.list";

class DumpinTest : public ::testing::Test {
protected:
    // Writes the list, points the path property at it and turns dump-in on.
    void useList(const std::string& content) {
        mRoot.writeFile(kListPath, content);
        mProps.set(props::kDumpinConfigPath, kListPath);
        mProps.set(props::kDumpinEnable, 2);
    }
    void makeFile(const std::string& devicePath, const std::string& content = "x") {
        mRoot.writeFile(devicePath, content);
    }
    int debugs(const std::string& text) const { return mLog.count(log::Level::Debug, text); }
    int errors(const std::string& text) const { return mLog.count(log::Level::Error, text); }

    TempRoot mRoot;
    PropertyScope mProps;
    LogCapture mLog;
    NSCam::TuningUtils::FileReadRule mRule;
};

}  // namespace test
}  // namespace camtune
