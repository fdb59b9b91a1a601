// camtune props, run as a user runs it.
#include <nlohmann/json.hpp>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

class PropsCliTest : public CliTest {
protected:
    CliRun props(const std::string& seed, std::vector<std::string> args = {}) {
        args.insert(args.begin(), "props");
        return runCli(args, ".", {"CAMTUNE_PROPS=" + write("props.txt", seed)});
    }
};

TEST_F(PropsCliTest, SeedFileMistakesAreReported) {
    CliRun run =
            props("vendor.debug.ndd.thdnun=2\n"
                  "vendor.debug.ndd.limited_size=abc\n"
                  "[vendor.debug.ndd.subdir]: [010]\n"
                  "my.own.key=1\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(has(run.err,
                    ":1: vendor.debug.ndd.thdnun is not a property camtune reads; did you "
                    "mean vendor.debug.ndd.thdnum?"));
    EXPECT_TRUE(has(run.err,
                    ":2: vendor.debug.ndd.limited_size=abc is not a number; it reads as "
                    "the default 0"));
    EXPECT_TRUE(has(run.err, ":4: my.own.key is not a property camtune reads\n"));
    // getprop's format is read too; an octal integer shows what it reads as.
    EXPECT_TRUE(has(run.out, "010 (reads as 8)"));
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
    CliRun run = runCli({"props"}, ".", {"CAMTUNE_PROPS=" + mRoot});
    EXPECT_TRUE(has(run.err, "cannot read property file " + mRoot + ": Is a directory"));
}

}  // namespace
}  // namespace test
}  // namespace camtune
