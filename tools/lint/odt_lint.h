// Checks a replay configuration for lines that parsingFile would reject or read differently from
// what their author meant.
#pragma once

#include <istream>
#include <string>
#include <vector>

#include "lint/lint_report.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {

using LintFinding = camtune::LintFinding;

// Whether the file a line names is there to be replayed.
using FileExists = bool (*)(const std::string& path);

// True when `path` names a regular file through the platform's file system.
bool regularFileExists(const std::string& path);

// Every finding, in line order (a line may have several). Blank lines are fine.
std::vector<LintFinding> lintReplayConfig(std::istream& in, FileExists exists = regularFileExists);

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
