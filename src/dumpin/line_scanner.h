// The one reader behind every list search: the searches differ in how they split and compare a
// line, not in how the file is read.
#pragma once

#include <fstream>
#include <functional>
#include <string>

#include "platform/property_registry.h"

namespace camtune {
namespace dumpin {

// Opens the file named by a path property for reading. An empty or wrong path leaves the
// stream failed, which every search treats as an empty list.
std::ifstream openListFile(const props::Property& pathProperty);

// Reads `in` line by line into `line` and calls visit(line) until it returns true. `line` is
// the caller's, so a search sees what the last read left in it. Returns true when a visit
// stopped the scan.
bool scanLines(std::istream& in, std::string& line,
               const std::function<bool(std::string& line)>& visit);

// The same with a buffer of its own.
bool scanLines(std::istream& in, const std::function<bool(std::string& line)>& visit);

}  // namespace dumpin
}  // namespace camtune
