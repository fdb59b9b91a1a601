// Options of camtune name that fill a naming hint, as one table: each option's name, meaning
// and the hint field it sets.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "camtune/naming.h"

namespace camtune {
namespace cli {

// A name asked for on the command line.
struct NameRequest {
    std::string kind;
    NSCam::TuningUtils::FILE_DUMP_NAMING_HINT hint;
    int port = -2;  // no port element
    bool hasUserString = false;
    std::string userString;
};

// The options' texts as given, before they are checked.
class NameOptions {
public:
    // Adds every hint option to `app`.
    void addTo(CLI::App& app);

    // Checks the given texts and fills `request`; on failure returns false with a one-line
    // reason in `error`.
    bool apply(NameRequest* request, std::string* error) const;

private:
    std::vector<std::string> mValues;
    std::vector<CLI::Option*> mOptions;
};

}  // namespace cli
}  // namespace camtune
