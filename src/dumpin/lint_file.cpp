// Lint commands: run a check on a file and print what it found.
#include <fstream>

#include "dumpin/lint.h"

namespace camtune {
namespace dumpin {

int lintFile(LintTarget target, const char* path, FILE* out, FILE* err) {
    // The file named on the command line is the engineer's own, so it is opened as given; the
    // paths inside it are device paths and are checked through the fs layer.
    std::ifstream in(path);
    if (!in.is_open()) {
        std::fprintf(err, "camtune: cannot read %s\n", path);
        return 2;
    }
    std::vector<LintFinding> findings =
            target == LintTarget::DumpinList ? lintDumpinList(in) : lintReprocessConfig(in);
    for (const LintFinding& finding : findings) {
        std::fprintf(out, "%s:%d: %s\n", path, finding.line, finding.message.c_str());
    }
    return findings.empty() ? 0 : 1;
}

}  // namespace dumpin
}  // namespace camtune
