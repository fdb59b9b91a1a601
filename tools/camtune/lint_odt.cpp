// camtune lint odt FILE: reports the lines of a replay configuration that on-device tuning would
// reject or misread.
#include <cstdio>

#include "command.h"
#include "lint/lint_report.h"
#include "odt/odt_lint.h"

namespace camtune {
namespace cli {
namespace {

constexpr const char* kUsage =
        "usage: camtune lint odt FILE\n"
        "\n"
        "Checks an on-device tuning replay configuration (the file vendor.debug.odt.config\n"
        "names). Prints FILE:LINE: message for every line the replay would reject or read\n"
        "differently from what it says.\n"
        "\n"
        "Exit status: 0 clean, 1 something was reported, 2 FILE cannot be read.\n";

int runLintOdt(const Args& args) {
    if (args.size() != 1) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    return reportLintFile(args[0].c_str(), NSCam::TuningUtils::odt::lintReplayConfig, stdout,
                          stderr);
}

}  // namespace

CAMTUNE_COMMAND("lint odt", "check an on-device tuning replay configuration", kUsage, runLintOdt);

}  // namespace cli
}  // namespace camtune
