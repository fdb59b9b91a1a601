// camtune lint odt FILE: reports the lines of a replay configuration that on-device tuning would
// reject or misread.
#include <cstdio>
#include <fstream>

#include "camtune/platform/fs.h"
#include "command.h"
#include "odt/odt_lint.h"

namespace camtune {
namespace cli {
namespace {

constexpr const char* kUsage =
        "usage: camtune lint odt FILE\n"
        "\n"
        "Checks an on-device tuning replay configuration (the file vendor.debug.odt.config\n"
        "names). Prints FILE:LINE: message for every line the replay would reject or read\n"
        "differently from what it says, and exits 1 when anything was reported.\n";

int runLintOdt(const Args& args) {
    if (args.size() != 1) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const char* path = args[0].c_str();
    std::ifstream in = fs::openInput(path);
    if (!in) {
        std::fprintf(stderr, "%s: cannot open the file\n", path);
        return 1;
    }
    auto findings = NSCam::TuningUtils::odt::lintReplayConfig(in);
    for (const auto& finding : findings) {
        std::printf("%s:%d: %s\n", path, finding.line, finding.message.c_str());
    }
    return findings.empty() ? 0 : 1;
}

}  // namespace

CAMTUNE_COMMAND("lint odt", "check an on-device tuning replay configuration", kUsage, runLintOdt);

}  // namespace cli
}  // namespace camtune
