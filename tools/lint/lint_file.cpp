// Lint commands: run a check on a file and print what it found.
#include "lint/dumpin_lint.h"

namespace camtune {
namespace dumpin {

int lintFile(LintTarget target, const char* path, FILE* out, FILE* err) {
    return reportLintFile(path,
                          target == LintTarget::DumpinList ? lintDumpinList : lintReprocessConfig,
                          out, err);
}

}  // namespace dumpin
}  // namespace camtune
