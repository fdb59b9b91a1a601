// camtune lint ndd FILE: what NDD would reject, stop at or misread in a configuration file.
#include <cstdio>

#include "command.h"
#include "lint/lint_report.h"
#include "ndd/ndd_lint.h"

namespace camtune {
namespace cli {
namespace {

constexpr const char* kUsage =
        "usage: camtune lint ndd FILE\n"
        "\n"
        "Checks an NDD configuration file (the file vendor.debug.ndd.cfgpath names; \"-\" reads\n"
        "standard input). Prints FILE:LINE: message for every line NDD would stop at (a field\n"
        "count other than 7, an enable or dump-in field that is not a number, a blank line),\n"
        "read differently from what it says (trailing text in a number), never match (an\n"
        "unknown feature, stage, category or module name, with the nearest valid name), or\n"
        "name badly (an unknown pattern field, an unclosed bracket, [Format] for a module that\n"
        "only comes as raw buffers, a \"/\"), and lines a later one replaces.\n"
        "\n"
        "Exit status: 0 clean, 1 something was reported, 2 FILE cannot be read.\n";

int runLintNdd(const Args& args) {
    if (args.size() != 1) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    return reportLintFile(args[0].c_str(), NSCam::TuningUtils::lintNddConfig, stdout, stderr);
}

}  // namespace

CAMTUNE_COMMAND("lint ndd", "check an NDD configuration file", kUsage, runLintNdd);

}  // namespace cli
}  // namespace camtune
