#include "dumpin/line_scanner.h"

#include "camtune/platform/fs.h"
#include "dumpin/list_vocabulary.h"

namespace camtune {
namespace dumpin {

std::ifstream openListFile(const props::Property& pathProperty) {
    char path[kPathBufferSize] = {};
    props::getString(pathProperty, path);
    return fs::openInput(path);
}

bool scanLines(std::istream& in, std::string& line,
               const std::function<bool(std::string& line)>& visit) {
    while (std::getline(in, line)) {
        if (visit(line)) return true;
    }
    return false;
}

bool scanLines(std::istream& in, const std::function<bool(std::string& line)>& visit) {
    std::string line;
    return scanLines(in, line, visit);
}

}  // namespace dumpin
}  // namespace camtune
