// camtune lint reprocess FILE: what initReprocInfo would skip or misread in a configuration.
#include <cstdio>

#include "command.h"
#include "dumpin/lint.h"

namespace camtune {
namespace cli {
namespace {

int runLintReprocess(const Args& args) {
    if (args.size() != 1) {
        std::fprintf(stderr, "usage: camtune lint reprocess FILE\n");
        return 2;
    }
    return dumpin::lintFile(dumpin::LintTarget::ReprocessConfig, args[0].c_str(), stdout, stderr);
}

CAMTUNE_COMMAND("lint reprocess", "check a reprocess configuration before a replay",
                "usage: camtune lint reprocess FILE\n"
                "\n"
                "Reads a reprocess configuration with the library's own parser and prints, as\n"
                "FILE:LINE: message, every line initReprocInfo would skip or misread: lines\n"
                "outside frame blocks, missing separators, request numbers or nr3d values that\n"
                "are not numbers (initReprocInfo throws on them), frame blocks without\n"
                "<END_OF_FRAME>, repeated formats in one frame, and paths that name no file.\n"
                "Paths are device paths; set CAMTUNE_ROOT to check them against a copy of the\n"
                "device's files.\n"
                "\n"
                "Exit status: 0 clean, 1 something was reported, 2 FILE cannot be read.\n",
                runLintReprocess);

}  // namespace
}  // namespace cli
}  // namespace camtune
