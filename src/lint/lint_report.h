// What the file checks behind `camtune lint` find, and how a lint command reports it. Every
// checker returns findings of this one shape, so every lint command prints and exits alike.
#pragma once

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace camtune {

struct LintFinding {
    int line;  // 1-based
    std::string message;
};

// Runs `check` (std::istream& -> std::vector<LintFinding>) on the file at `path` and prints one
// "path:line: message" line per finding to `out`. The file is the engineer's own, so it is
// opened as given, not remapped under CAMTUNE_ROOT. Returns the exit status of a lint command:
// 0 when clean, 1 when anything was reported, 2 when the file cannot be read (said on `err`).
template <typename Check>
int reportLintFile(const char* path, Check check, FILE* out, FILE* err) {
    std::ifstream in(path);
    if (!in.is_open()) {
        std::fprintf(err, "camtune: cannot read %s\n", path);
        return 2;
    }
    const std::vector<LintFinding> findings = check(in);
    for (const LintFinding& finding : findings) {
        std::fprintf(out, "%s:%d: %s\n", path, finding.line, finding.message.c_str());
    }
    return findings.empty() ? 0 : 1;
}

}  // namespace camtune
