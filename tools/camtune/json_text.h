// JSON as the commands print it. File names and property values may hold any bytes, so text
// that is not UTF-8 is replaced (U+FFFD) instead of stopping the command.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace camtune {
namespace cli {

template <typename Json>
std::string jsonText(const Json& value, int indent = -1) {
    return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace cli
}  // namespace camtune
