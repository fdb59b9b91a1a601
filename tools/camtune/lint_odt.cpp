// camtune lint odt FILE: the lines of a replay configuration that on-device tuning would reject
// or misread.
#include "lint/odt_lint.h"
#include "lint_command.h"

namespace camtune {
namespace cli {
namespace {

int runLintOdt(const Args& args) {
    return runLint(
            "camtune lint odt",
            "Checks an on-device tuning replay configuration (the file "
            "vendor.debug.odt.config names). Prints FILE:LINE: message for every line the "
            "replay would reject or read differently from what it says, and every file it names "
            "that does not exist (under CAMTUNE_ROOT when that is set).",
            args, [](std::istream& in) { return NSCam::TuningUtils::odt::lintReplayConfig(in); });
}

}  // namespace

CAMTUNE_COMMAND("lint odt", "check an on-device tuning replay configuration", runLintOdt);

}  // namespace cli
}  // namespace camtune
