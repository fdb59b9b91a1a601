// camtune props: every property the library reads, with its current value.
#include <cstdio>
#include <string>

#include "camtune/platform/properties.h"
#include "command.h"
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

std::string jsonString(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char escaped[8];
                    std::snprintf(escaped, sizeof(escaped), "\\u%04x", c);
                    out += escaped;
                } else {
                    out += c;
                }
        }
    }
    return out + "\"";
}

int runProps(const Args& args) {
    bool json = false;
    for (const std::string& arg : args) {
        if (arg == "--json") {
            json = true;
        } else {
            std::fprintf(stderr, "camtune props: unknown option '%s'\n", arg.c_str());
            return 2;
        }
    }
    size_t count = 0;
    const props::Property* const* all = props::all(&count);
    if (json) {
        std::printf("[\n");
        for (size_t i = 0; i < count; ++i) {
            const props::Property& p = *all[i];
            std::printf(
                    "  {\"name\": %s, \"type\": \"%s\", \"default\": %s, \"value\": %s, "
                    "\"set\": %s, \"meaning\": %s}%s\n",
                    jsonString(p.name).c_str(), typeName(p.type),
                    jsonString(p.defaultValue).c_str(), jsonString(currentValue(p)).c_str(),
                    currentValue(p).empty() ? "false" : "true", jsonString(p.meaning).c_str(),
                    i + 1 < count ? "," : "");
        }
        std::printf("]\n");
        return 0;
    }
    std::printf("%-52s %-6s %-26s %-26s %s\n", "NAME", "TYPE", "DEFAULT", "VALUE", "MEANING");
    for (size_t i = 0; i < count; ++i) {
        const props::Property& p = *all[i];
        std::string value = currentValue(p);
        std::printf("%-52s %-6s %-26s %-26s %s\n", p.name, typeName(p.type),
                    p.defaultValue[0] != '\0' ? p.defaultValue : "\"\"",
                    value.empty() ? "(unset)" : value.c_str(), p.meaning);
    }
    return 0;
}

CAMTUNE_COMMAND("props", "list every property camtune reads, with its current value",
                "usage: camtune props [--json]\n"
                "\n"
                "Lists every system property the library reads or writes: name, type, default,\n"
                "current value and meaning. On a host, values come from the file named by\n"
                "CAMTUNE_PROPS (key=value lines).\n"
                "\n"
                "  --json   print a JSON array instead of a table\n",
                runProps);

}  // namespace
}  // namespace cli
}  // namespace camtune
