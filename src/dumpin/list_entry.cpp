// Parsing one dump-in list entry.
#include "camtune/file_read_rule.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"

namespace NSCam {
namespace TuningUtils {

using camtune::dumpin::kFieldSeparator;
using camtune::dumpin::kLineEnds;
using camtune::dumpin::kPathSeparator;
using camtune::dumpin::takeField;

void Extract_Tuning_CFG(std::string& line, TUNING_CFG_T& cfg) {
    cfg.str_format = takeField(line, kFieldSeparator);
    cfg.str_reqNum = takeField(line, kFieldSeparator);
    cfg.str_ispProfile = takeField(line, kPathSeparator);
    // The path ends at the line end, so lists written with CR LF work too.
    cfg.str_file = line.substr(0, line.find_first_of(kLineEnds));
}

void FileReadRule::Extract_Tuning_CFG(std::string& line, TUNING_CFG_T& cfg) {
    TuningUtils::Extract_Tuning_CFG(line, cfg);
}

void FileReadRule::removeRedundancy(std::string& text) {
    camtune::dumpin::removeRedundancy(text);
}

}  // namespace TuningUtils
}  // namespace NSCam
