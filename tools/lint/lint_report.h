// What the file checks behind `camtune lint` find, and how a lint command reports it. Every
// checker returns findings of this one shape, so every lint command prints and exits alike.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace camtune {

struct LintFinding {
    int line;  // 1-based
    std::string message;
};

// Largest file a lint command reads; configuration files are a few kilobytes.
constexpr size_t kMaxLintInput = size_t{16} << 20;

// Reads the file at `path` ("-" for standard input) into `text`. The file is the engineer's
// own, so it is opened as given, not remapped under CAMTUNE_ROOT. Returns 0, or 2 after saying
// on `err` why it cannot be checked (missing, a directory, unreadable, larger than
// kMaxLintInput). A directory opens but fails its first read, with EISDIR.
inline int readLintInput(const char* path, std::string* text, FILE* err) {
    const bool standardInput = std::string(path) == "-";
    FILE* file = standardInput ? stdin : std::fopen(path, "rb");
    if (file == nullptr) {
        std::fprintf(err, "camtune: cannot read %s: %s\n", path, std::strerror(errno));
        return 2;
    }
    char chunk[65536];
    size_t n;
    bool tooLarge = false;
    while ((n = std::fread(chunk, 1, sizeof(chunk), file)) > 0) {
        if (text->size() + n > kMaxLintInput) {
            tooLarge = true;
            break;
        }
        text->append(chunk, n);
    }
    const bool failed = std::ferror(file) != 0;
    const int error = errno;
    if (!standardInput) std::fclose(file);
    if (tooLarge) {
        std::fprintf(err,
                     "camtune: cannot check %s: larger than %zu MiB, not a configuration file\n",
                     path, kMaxLintInput >> 20);
        return 2;
    }
    if (failed) {
        std::fprintf(err, "camtune: cannot read %s: %s\n", path, std::strerror(error));
        return 2;
    }
    return 0;
}

// Findings about the file as a whole, which every kind of configuration shares.
inline std::vector<LintFinding> lintWholeFile(const std::string& text) {
    std::vector<LintFinding> findings;
    if (text.empty()) {
        findings.push_back({1, "the file is empty: the library reads nothing from it"});
        return findings;
    }
    for (size_t at = text.find('\r'); at != std::string::npos; at = text.find('\r', at + 1)) {
        if (at + 1 < text.size() && text[at + 1] == '\n') continue;
        if (at + 1 == text.size()) continue;
        const int line = 1 + static_cast<int>(std::count(text.begin(), text.begin() + at, '\n'));
        findings.push_back({line,
                            "bare CR line end: the library reads lines up to a newline, so this "
                            "line and the next run together"});
        break;
    }
    return findings;
}

// Runs `check` (std::istream& -> std::vector<LintFinding>) on the file at `path` and puts its
// findings and the whole file's, in line order, in `findings`. Returns 0, or 2 when the file
// cannot be read (said on `err`).
template <typename Check>
int collectLintFindings(const char* path, Check check, std::vector<LintFinding>* findings,
                        FILE* err) {
    std::string text;
    if (int status = readLintInput(path, &text, err); status != 0) return status;
    *findings = lintWholeFile(text);
    std::istringstream in(text);
    for (LintFinding& finding : check(in)) findings->push_back(std::move(finding));
    std::stable_sort(findings->begin(), findings->end(),
                     [](const LintFinding& a, const LintFinding& b) { return a.line < b.line; });
    return 0;
}

// Runs `check` (std::istream& -> std::vector<LintFinding>) on the file at `path` and prints one
// "path:line: message" line per finding to `out`. Returns the exit status of a lint command:
// 0 when clean, 1 when anything was reported, 2 when the file cannot be read (said on `err`).
template <typename Check>
int reportLintFile(const char* path, Check check, FILE* out, FILE* err) {
    std::vector<LintFinding> findings;
    if (int status = collectLintFindings(path, check, &findings, err); status != 0) return status;
    for (const LintFinding& finding : findings) {
        std::fprintf(out, "%s:%d: %s\n", path, finding.line, finding.message.c_str());
    }
    return findings.empty() ? 0 : 1;
}

}  // namespace camtune
