// camtune props: every property the library reads, with its current value; what is wrong in the
// CAMTUNE_PROPS file; the adb lines that set the same values on a device.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "camtune/platform/properties.h"
#include "cli_parse.h"
#include "command.h"
#include "json_text.h"
#include "lint/edit_distance.h"
#include "platform/property_parse.h"
#include "platform/property_registry.h"

namespace camtune {
namespace cli {
namespace {

const char* typeName(props::Type type) {
    return type == props::Type::Int ? "int" : "string";
}

std::string currentValue(const props::Property& property) {
    char value[NSCam::Utils::Properties::kPropertyValueMax];
    NSCam::Utils::Properties::property_get(property.name, value, "");
    return value;
}

// True when an Int property's text has no number at its start, so the library reads the
// default instead.
bool readsAsDefault(const props::Property& property, const std::string& value) {
    if (property.type != props::Type::Int || value.empty()) return false;
    int32_t number = 0;
    return !tryParsePropertyInt32(value.c_str(), &number);
}

// What an Int property's text reads as, when that is not the text itself.
std::string readsAs(const props::Property& property, const std::string& value) {
    if (property.type != props::Type::Int || value.empty()) return "";
    const int32_t number = props::getInt(property);
    if (std::to_string(number) == value) return "";
    return std::to_string(number);
}

const char* nearestName(const std::string& key) {
    size_t count = 0;
    const props::Property* const* all = props::all(&count);
    const char* best = nullptr;
    size_t bestDistance = 0;
    for (size_t i = 0; i < count; ++i) {
        const size_t distance = editDistance(key, all[i]->name);
        if (best == nullptr || distance < bestDistance) {
            best = all[i]->name;
            bestDistance = distance;
        }
    }
    return bestDistance <= key.size() / 3 ? best : nullptr;
}

// Warnings about the seed file: keys the library never reads, integers it cannot read.
std::vector<std::string> seedWarnings() {
    std::vector<std::string> warnings;
    const char* seed = std::getenv("CAMTUNE_PROPS");
    if (seed == nullptr) return warnings;
    std::ifstream in(seed);
    std::string line;
    for (int lineNo = 1; std::getline(in, line); ++lineNo) {
        std::string key, value;
        if (parsePropertyLine(line, &key, &value) != PropertyLine::Entry) continue;
        const std::string where = std::string(seed) + ":" + std::to_string(lineNo) + ": ";
        const props::Property* property = props::find(key.c_str());
        if (property == nullptr) {
            const char* near = nearestName(key);
            warnings.push_back(
                    where + key + " is not a property camtune reads" +
                    (near != nullptr ? std::string("; did you mean ") + near + "?" : ""));
        } else if (readsAsDefault(*property, value)) {
            warnings.push_back(where + key + "=" + value +
                               " is not a number; it reads as the default " +
                               property->defaultValue);
        } else if (property->type == props::Type::Int &&
                   std::to_string(parsePropertyInt32(value.c_str(), 0)) != value) {
            warnings.push_back(where + key + "=" + value + " reads as " +
                               std::to_string(parsePropertyInt32(value.c_str(), 0)));
        }
    }
    return warnings;
}

// One shell word: single-quoted unless it needs nothing.
std::string shellWord(const std::string& text) {
    if (!text.empty() &&
        text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                               "0123456789._/-:,") == std::string::npos) {
        return text;
    }
    std::string out = "'";
    for (char c : text) {
        if (c == '\'') {
            out += "'\\''";
        } else {
            out += c;
        }
    }
    return out + "'";
}

int runProps(const Args& args) {
    bool json = false;
    bool setprop = false;
    CLI::App app(
            "Lists every system property the library reads or writes: name, type, default, "
            "current value and meaning. On a host, values come from the file named by "
            "CAMTUNE_PROPS (key=value lines, or what `adb shell getprop` prints); keys the "
            "library does not read and integers it cannot read are reported on stderr.",
            "camtune props");
    app.add_flag("--json", json, "print a JSON array instead of a table");
    app.add_flag("--setprop", setprop,
                 "print the `adb shell setprop` lines that set the current values on a device");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;

    for (const std::string& warning : seedWarnings()) {
        std::fprintf(stderr, "camtune props: %s\n", warning.c_str());
    }
    size_t count = 0;
    const props::Property* const* all = props::all(&count);
    if (setprop) {
        for (size_t i = 0; i < count; ++i) {
            const std::string value = currentValue(*all[i]);
            if (value.empty()) continue;
            std::printf("adb shell setprop %s %s\n", all[i]->name,
                        shellWord(shellWord(value)).c_str());
        }
        return 0;
    }
    if (json) {
        nlohmann::json out = nlohmann::json::array();
        for (size_t i = 0; i < count; ++i) {
            const props::Property& p = *all[i];
            const std::string value = currentValue(p);
            nlohmann::json entry = {
                    {"name", p.name}, {"type", typeName(p.type)}, {"default", p.defaultValue},
                    {"value", value}, {"set", !value.empty()},    {"meaning", p.meaning}};
            if (p.type == props::Type::Int) entry["reads_as"] = props::getInt(p);
            out.push_back(entry);
        }
        // Values are the user's bytes: anything that is not UTF-8 is replaced, not passed on.
        std::printf("%s\n", jsonText(out, 2).c_str());
        return 0;
    }
    std::printf("%-52s %-6s %-26s %-26s %s\n", "NAME", "TYPE", "DEFAULT", "VALUE", "MEANING");
    for (size_t i = 0; i < count; ++i) {
        const props::Property& p = *all[i];
        std::string value = currentValue(p);
        const std::string number = readsAs(p, value);
        if (!number.empty()) value += " (reads as " + number + ")";
        std::printf("%-52s %-6s %-26s %-26s %s\n", p.name, typeName(p.type),
                    p.defaultValue[0] != '\0' ? p.defaultValue : "\"\"",
                    value.empty() ? "(unset)" : value.c_str(), p.meaning);
    }
    return 0;
}

CAMTUNE_COMMAND("props", "list every property camtune reads, with its current value", runProps);

}  // namespace
}  // namespace cli
}  // namespace camtune
