// camtune name, run as a user runs it.
#include <gtest/gtest.h>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

TEST(NameCliTest, OptionsTakeNamesAndRefuseWhatWouldMakeABadName) {
    struct Case {
        std::vector<std::string> args;
        int status;
        std::string text;  // on stdout for status 0, else on stderr
    } cases[] = {
            {{"raw", "--format", "bayer10"}, 0, "_10_"},
            {{"raw", "--format", "0x2201"}, 0, "_10_"},
            {{"raw", "--format", "2201"},
             2,
             "unknown image format '2201'; did you mean 0x2201? (camtune name --list-formats "
             "lists them)"},
            {{"raw", "--format", "rgb"}, 2, "unknown image format 'rgb'"},
            {{"tuning", "--isp-profile", "EIspProfile_Capture"}, 0, ".tuning"},
            {{"tuning", "--isp-profile", "Video"}, 0, ".tuning"},
            {{"tuning", "--isp-profile", "Night"}, 2, "unknown ISP profile 'Night'"},
            {{"raw", "--user", "a b"}, 2, "holds a blank, ',', ';' or '/'"},
            {{"raw", "--user", "ok_text"}, 0, "ok_text"},
            {{"raw", "--user", std::string(1000, 'u')},
             2,
             "--user text of 1000 characters does not fit in the name"},
            {{"--list-formats"}, 0, "BAYER10        0x2201"},
            {{"raw", "--hint-user", "-h"}, 0, "--h-"},  // a value, not a request for help
            {{"raw", "-h"}, 0, "usage: camtune name KIND"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = {"name"};
        args.insert(args.end(), c.args.begin(), c.args.end());
        CliRun run = runCli(args);
        EXPECT_EQ(run.status, c.status) << c.args[0] << " " << c.args.back() << ": " << run.err;
        EXPECT_NE((c.status == 0 ? run.out : run.err).find(c.text), std::string::npos)
                << run.out << run.err;
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
