// camtune lint dumpin FILE: what the dump-in readers would skip or misread in a list.
#include <cstdio>

#include "command.h"
#include "dumpin/lint.h"

namespace camtune {
namespace cli {
namespace {

int runLintDumpin(const Args& args) {
    if (args.size() != 1) {
        std::fprintf(stderr, "usage: camtune lint dumpin FILE\n");
        return 2;
    }
    return dumpin::lintFile(dumpin::LintTarget::DumpinList, args[0].c_str(), stdout, stderr);
}

CAMTUNE_COMMAND("lint dumpin", "check a dump-in list before pushing it to a device",
                "usage: camtune lint dumpin FILE\n"
                "\n"
                "Reads a dump-in list with the library's own parsing and prints, as\n"
                "FILE:LINE: message, every line the dump-in readers would skip or misread:\n"
                "unknown keywords, missing separators, request numbers that are not \"%04d\",\n"
                "value lines that are not numbers, entries shadowed by an earlier one, and paths\n"
                "that are empty, contain \"default\" or name no file. Paths are device paths;\n"
                "set CAMTUNE_ROOT to check them against a copy of the device's files.\n"
                "\n"
                "Exit status: 0 clean, 1 something was reported, 2 FILE cannot be read.\n",
                runLintDumpin);

}  // namespace
}  // namespace cli
}  // namespace camtune
