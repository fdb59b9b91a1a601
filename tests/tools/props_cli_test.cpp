// camtune props, run as a user runs it.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;

class PropsCliTest : public ::testing::Test {
protected:
    PropsCliTest() {
        std::string pattern = (stdfs::temp_directory_path() / "camtune-props-XXXXXX").string();
        mDir = ::mkdtemp(pattern.data()) != nullptr ? pattern : "";
    }
    ~PropsCliTest() override {
        std::error_code ignored;
        stdfs::remove_all(mDir, ignored);
    }
    CliRun props(const std::string& seed, std::vector<std::string> args = {}) {
        const std::string path = mDir + "/props.txt";
        std::ofstream(path, std::ios::binary) << seed;
        args.insert(args.begin(), "props");
        return runCli(args, ".", {"CAMTUNE_PROPS=" + path});
    }
    std::string mDir;
};

TEST_F(PropsCliTest, SeedFileMistakesAreReported) {
    CliRun run =
            props("vendor.debug.ndd.thdnun=2\n"
                  "vendor.debug.ndd.limited_size=abc\n"
                  "[vendor.debug.ndd.subdir]: [010]\n"
                  "my.own.key=1\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find(":1: vendor.debug.ndd.thdnun is not a property camtune reads; did you "
                           "mean vendor.debug.ndd.thdnum?"),
              std::string::npos)
            << run.err;
    EXPECT_NE(run.err.find(":2: vendor.debug.ndd.limited_size=abc is not a number; it reads as "
                           "the default 0"),
              std::string::npos);
    EXPECT_NE(run.err.find(":4: my.own.key is not a property camtune reads\n"), std::string::npos);
    // getprop's format is read too; an octal integer shows what it reads as.
    EXPECT_NE(run.out.find("010 (reads as 8)"), std::string::npos) << run.out;
}

TEST_F(PropsCliTest, SetpropPrintsTheAdbLinesOfTheCurrentValues) {
    CliRun run = props("vendor.debug.ndd.thdnum=2\nvendor.debug.ndd.cfgpath=/data/a b.cfg\n",
                       {"--setprop"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "adb shell setprop vendor.debug.ndd.thdnum 2\n"
              "adb shell setprop vendor.debug.ndd.cfgpath ''\\''/data/a b.cfg'\\'''\n");
}

TEST_F(PropsCliTest, JsonIsValidWhateverTheValuesHold) {
    CliRun run = props("vendor.debug.ndd.cfgpath=/data/\xff\xfe.cfg\n", {"--json"});
    ASSERT_EQ(run.status, 0);
    nlohmann::json all = nlohmann::json::parse(run.out);  // throws on invalid UTF-8
    bool found = false;
    for (const auto& entry : all) {
        if (entry["name"] == "vendor.debug.ndd.cfgpath") {
            found = true;
            EXPECT_EQ(entry["value"], "/data/\xEF\xBF\xBD\xEF\xBF\xBD.cfg");
        }
    }
    EXPECT_TRUE(found);
}

TEST_F(PropsCliTest, ADirectoryAsTheSeedIsReported) {
    CliRun run = runCli({"props"}, ".", {"CAMTUNE_PROPS=" + mDir});
    EXPECT_NE(run.err.find("cannot read property file " + mDir + ": Is a directory"),
              std::string::npos)
            << run.err;
}

}  // namespace
}  // namespace test
}  // namespace camtune
