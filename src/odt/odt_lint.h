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

// Every finding, in line order (a line may have several). Blank lines are fine.
std::vector<LintFinding> lintReplayConfig(std::istream& in);

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
