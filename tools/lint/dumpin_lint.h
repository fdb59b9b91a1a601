// Checks of a dump-in list and a reprocess configuration before they go to a device: every
// line the library would skip or misread, with its line number. Paths named in the files are
// checked through the fs layer, so CAMTUNE_ROOT applies to them.
#pragma once

#include <cstdio>
#include <istream>
#include <string>
#include <vector>

#include "lint/lint_report.h"

namespace camtune {
namespace dumpin {

using LintFinding = camtune::LintFinding;

std::vector<LintFinding> lintDumpinList(std::istream& in);
std::vector<LintFinding> lintReprocessConfig(std::istream& in);

enum class LintTarget { DumpinList, ReprocessConfig };

// Checks the file at `path` (a path on this machine, opened as given, not remapped) and prints
// one "path:line: message" line per finding to `out`. Returns the exit status of a lint
// command: 0 when clean, 1 when anything was reported, 2 when the file cannot be read (with a
// message on `err`).
int lintFile(LintTarget target, const char* path, FILE* out, FILE* err);

// Helpers shared by both checks.
namespace lint {

// True when `text` is the "%04d" text of some request number ("0007", "12345").
bool isRequestText(const std::string& text);
// True when `text` holds only blanks.
bool isBlank(const std::string& text);
// Finding for a path field: empty, holding "default", or naming no file; empty when fine.
std::string checkPath(const std::string& path);
// Separator checks of "format,reqNum,ispProfile;path"; the first missing one, or empty.
std::string checkEntrySeparators(const std::string& line);

}  // namespace lint
}  // namespace dumpin
}  // namespace camtune
