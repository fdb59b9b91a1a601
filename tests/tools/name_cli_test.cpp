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
            {{"raw", "-h"}, 0, "Usage: camtune name [OPTIONS] [KIND]"},
            {{"--unique-key", "5012345", "--request", "12",   "--frame",     "34",
              "--sensor-dev", "1",       "--port",    "0",    "--format",    "0x2201",
              "--width",      "4000",    "--height",  "3000", "--buf-width", "4000",
              "--buf-height", "3000",    "--stride",  "5000", "--order",     "1",
              "raw"},
             0,
             "/data/vendor/camera_dump/005012345-0012-0034-main-imgo-PW4000-PH3000-BW5000__"
             "4000x3000_10_1.packed_word\n"},
            {{"tuning", "--json"}, 0, "\"kind\": \"tuning\""},
            {{"--list", "--json"}, 0, "\"hw_aao\""},
            {{}, 2, "camtune name: no kind given (see --list)"},
            {{"raw", "yuv"}, 2, "not expected: yuv"},
            {{"png"}, 2, "unknown kind 'png' (see --list)"},
            {{"raw", "--width"}, 2, "--width: 1 required TEXT missing"},
            {{"raw", "--width", "12px"}, 2, "bad number for --width: '12px'"},
            {{"raw", "--frame", "4294967296"}, 2, "bad number for --frame: '4294967296'"},
            {{"raw", "--exp", std::string(32, 'e')}, 2, "--exp holds at most 31 characters"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = {"name"};
        args.insert(args.end(), c.args.begin(), c.args.end());
        CliRun run = runCli(args);
        EXPECT_EQ(run.status, c.status) << args.back() << ": " << run.err;
        EXPECT_NE((c.status == 0 ? run.out : run.err).find(c.text), std::string::npos)
                << run.out << run.err;
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
