// camtune lint reprocess FILE: what initReprocInfo would skip or misread in a configuration.
#include "lint/dumpin_lint.h"
#include "lint_command.h"

namespace camtune {
namespace cli {
namespace {

int runLintReprocess(const Args& args) {
    return runLint(
            "camtune lint reprocess",
            "Reads a reprocess configuration with the library's own parser and prints, as "
            "FILE:LINE: message, every line initReprocInfo would skip or misread: lines outside "
            "frame blocks, missing separators, request numbers or nr3d values that are not "
            "numbers (initReprocInfo throws on them), strides and unique keys that read as "
            "something else, frame blocks without <END_OF_FRAME>, repeated formats in one frame, "
            "and paths that name no file. Paths are device paths; set CAMTUNE_ROOT to check them "
            "against a copy of the device's files.",
            args, dumpin::lintReprocessConfig);
}

}  // namespace

CAMTUNE_COMMAND("lint reprocess", "check a reprocess configuration before a replay",
                runLintReprocess);

}  // namespace cli
}  // namespace camtune
