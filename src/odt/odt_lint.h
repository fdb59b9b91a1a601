// Checks a replay configuration for lines that parsingFile would reject or read differently from
// what their author meant.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace NSCam {
namespace TuningUtils {
namespace odt {

struct LintFinding {
    int line;  // 1-based
    std::string message;
};

// Every finding, in line order (a line may have several). Blank lines are fine.
std::vector<LintFinding> lintReplayConfig(std::istream& in);

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
