// camtune lint dumpin FILE: what the dump-in readers would skip or misread in a list.
#include "lint/dumpin_lint.h"
#include "lint_command.h"

namespace camtune {
namespace cli {
namespace {

int runLintDumpin(const Args& args) {
    return runLint(
            "camtune lint dumpin",
            "Reads a dump-in list with the library's own parsing and prints, as FILE:LINE: "
            "message, every line the dump-in readers would skip or misread: unknown keywords, "
            "missing separators, request numbers that are not \"%04d\", values that are not "
            "numbers or read as another number, entries shadowed by an earlier one, and paths "
            "that are empty, contain \"default\" or name no file. Paths are device paths; set "
            "CAMTUNE_ROOT to check them against a copy of the device's files.",
            args, dumpin::lintDumpinList);
}

}  // namespace

CAMTUNE_COMMAND("lint dumpin", "check a dump-in list before pushing it to a device", runLintDumpin);

}  // namespace cli
}  // namespace camtune
