// Checks an NDD configuration file for lines the library would reject, stop at or read
// differently from what their author meant.
#pragma once

#include <istream>
#include <vector>

#include "lint/lint_report.h"

namespace NSCam {
namespace TuningUtils {

using LintFinding = camtune::LintFinding;

// Every finding, in line order (a line may have several).
std::vector<LintFinding> lintNddConfig(std::istream& in);

}  // namespace TuningUtils
}  // namespace NSCam
