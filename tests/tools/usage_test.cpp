// Every subcommand's arguments as a user types them: what is accepted, and what each mistake says.
#include <filesystem>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

using UsageTest = CliTest;

// A usage mistake exits 2 with the reason on standard error and nothing on standard output;
// help and lists go to standard output.
TEST_F(UsageTest, ArgumentsAreTakenOrRefusedWithTheReason) {
    const std::string file = write("a-file", "x");
    auto sim = [&](const std::string& args) {
        return "sim --frames 1 " + args + (args.rfind("-o", 0) == 0 ? "" : " -o " + mRoot + "/bad");
    };
    const std::string convert =
            "convert " + write("frame.bin", std::string(128, '\0')) + " -o " + mRoot + "/out ";
    const std::string hint =
            "--unique-key 5012345 --request 12 --frame 34 --sensor-dev 1 --port 0 "
            "--format 0x2201 --width 4000 --height 3000 --buf-width 4000 "
            "--buf-height 3000 --stride 5000 --order 1 raw";
    const std::string kinds = "  dumpin|  reprocess|  odt";
    struct Case {
        std::string args;
        int status;
        std::string texts;  // "|" between texts; on stdout for status 0, else on stderr
    } cases[] = {
            {"--version", 0, "camtune "},
            {"name raw --format bayer10", 0, "_10_"},
            {"name raw --format 0x2201", 0, "_10_"},
            {"name raw --format 2201", 2,
             "unknown image format '2201'; did you mean 0x2201? (camtune name --list-formats "
             "lists them)"},
            {"name raw --format rgb", 2, "unknown image format 'rgb'"},
            {"name tuning --isp-profile EIspProfile_Capture", 0, ".tuning"},
            {"name tuning --isp-profile Video", 0, ".tuning"},
            {"name tuning --isp-profile Night", 2, "unknown ISP profile 'Night'"},
            {"name raw --user a~b", 2, "holds a blank, ',', ';' or '/'"},
            {"name raw --user ok_text", 0, "ok_text"},
            {"name raw --user " + std::string(1000, 'u'), 2,
             "--user text of 1000 characters does not fit in the name"},
            {"name --list-formats", 0, "BAYER10        0x2201"},
            {"name raw --hint-user -h", 0, "--h-"},  // a value, not a request for help
            {"name raw -h", 0, "Usage: camtune name [OPTIONS] [KIND]"},
            {"name " + hint, 0,
             "/data/vendor/camera_dump/005012345-0012-0034-main-imgo-PW4000-PH3000-BW5000__"
             "4000x3000_10_1.packed_word\n"},
            {"name tuning --json", 0, "\"kind\": \"tuning\""},
            {"name --list --json", 0, "\"hw_aao\""},
            {"name", 2, "camtune name: no kind given (see --list)"},
            {"name raw yuv", 2, "not expected: yuv"},
            {"name png", 2, "unknown kind 'png' (see --list)"},
            {"name raw --width", 2, "--width: 1 required TEXT missing"},
            {"name raw --width 12px", 2, "bad number for --width: '12px'"},
            {"name raw --frame 4294967296", 2, "bad number for --frame: '4294967296'"},
            {"name raw --exp " + std::string(32, 'e'), 2, "--exp holds at most 31 characters"},
            {"key encode --ndd 5 x 1", 2, "request number 'x' is not a number"},
            {"key encode --ndd 5 1", 2, "expected 3 values"},
            {"key encode --ndd 2147483648 0 0", 2, "unique key '2147483648' is out of range"},
            {"key encode --ndd 5 65536 0", 2, "request number '65536' is out of range"},
            {"key encode --ndd 5 0 0x10000", 2, "frame number '0x10000' is out of range"},
            {"key encode --request 5 -1", 2, "request number '-1' is out of range"},
            {"key encode --request 5 1 2", 2, "expected 2 values"},
            {"key encode 1 2", 2, "--ndd or --request"},
            {"key encode --ndd --request 1 2", 2, "excludes"},
            {"key decode --ndd", 2, "at least one KEY"},
            {"key decode --ndd 99999999999999999999", 2, "'99999999999999999999' is out of range"},
            {"key decode --ndd 0x10000000000000000", 2, "has more than 64 bits"},
            {"key decode --ndd -0x5", 2, "'-0x5' is not a number"},
            {"key decode --request 12abc", 2, "'12abc' is not a number"},
            {"key", 2, "subcommand"},
            {"key --help", 0, "--ndd|key >> 16|Exit status"},
            {"parse --config " + mRoot + "/none.cfg x", 2, "File does not exist"},
            {"parse --kind bogus x", 2, "--kind: unknown kind 'bogus'"},
            {"parse", 2, "names is required"},
            {"parse --bogus x", 2, "--bogus"},
            {"parse --help", 0, "standard error"},
            {"lint", 2, kinds},
            {"lint --help", 0, kinds},
            {"lint bogus", 2, "camtune lint: unknown kind 'bogus'|" + kinds},
            {"lint ndd", 2, "FILE is required"},
            {sim("--frames 0"), 2, "--frames: Value 0 not in range"},
            {sim("--frames many"), 2, "--frames"},
            {sim("--format rgb"), 2, "--format: unknown format 'rgb' (see --list-formats)"},
            {sim("--sensors 0,x"), 2,
             "--sensors: '0,x' is not a comma-separated list of ids 0 to 11"},
            {sim("--size 3x3"), 2, "--size: '3x3' is not WxH with even numbers from 2 to 16384"},
            {sim("--config " + mRoot + "/none.cfg"), 2, "File does not exist"},
            {sim("--prop novalue"), 2, "--prop: 'novalue' is not key=value"},
            {sim("-o " + file), 2, "cannot use " + file + " as the output root"},
            {sim("--bogus"), 2, "--bogus"},
            {"sim --help", 0, "--frames"},
            {"sim --list-formats", 0, "nv21|raw16"},
            {convert + "--format NV99", 2, "--format: cannot decode 'NV99'"},
            {convert + "--size 32by4", 2, "--size: '32by4' is not WxH"},
            {convert + "--dng --plane", 2, "--plane writes PNG; it does not go with --dng"},
            {convert + "--order 4", 2, "--order"},
            {convert + "--png --dng", 2, "excludes"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.substr(0, 80));
        CliRun run = runCli(words(c.args));
        EXPECT_EQ(run.status, c.status) << run.err;
        for (const std::string& text : split(c.texts, '|')) {
            EXPECT_TRUE(has(c.status == 0 ? run.out : run.err, text));
        }
        if (c.status != 0) {
            EXPECT_EQ(run.out, "");
        }
    }
    EXPECT_FALSE(std::filesystem::exists(mRoot + "/bad/data"));  // no session was run
    EXPECT_FALSE(std::filesystem::exists(mRoot + "/out/frame.png"));
}

}  // namespace
}  // namespace test
}  // namespace camtune
