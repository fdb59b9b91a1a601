// camtune lint ndd FILE: what NDD would reject, stop at or misread in a configuration file.
#include "lint/ndd_lint.h"
#include "lint_command.h"

namespace camtune {
namespace cli {
namespace {

int runLintNdd(const Args& args) {
    return runLint(
            "camtune lint ndd",
            "Checks an NDD configuration file (the file vendor.debug.ndd.cfgpath names). Prints "
            "FILE:LINE: message for every line NDD would stop at (a field count other than 7, "
            "an enable or dump-in field that is not a number, a blank line), read differently "
            "from what it says (trailing text in a number), never match (an unknown feature, "
            "stage, category or module name, with the nearest valid name), or name badly (an "
            "unknown pattern field, an unclosed bracket, [Format] for a module that only comes as "
            "raw buffers, a \"/\"), and lines a later one replaces.",
            args, NSCam::TuningUtils::lintNddConfig);
}

}  // namespace

CAMTUNE_COMMAND("lint ndd", "check an NDD configuration file", runLintNdd);

}  // namespace cli
}  // namespace camtune
