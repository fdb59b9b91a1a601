// camtune parse: the fields of the file names the library composes.
#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli_parse.h"
#include "command.h"
#include "example_files.h"
#include "json_text.h"
#include "parse_kinds.h"

namespace camtune {
namespace cli {
namespace {

constexpr char kFolderSeparator = '/';

std::string joinKinds() {
    std::string text;
    for (const std::string& kind : parse::NameDecoder::kinds()) {
        if (!text.empty()) text += ", ";
        text += kind;
    }
    return text;
}

std::string description() {
    return "Decodes file names the library composes into their fields: one line per name,\n"
           "'NAME: KIND field=value ...', or with --json an array with one object per name\n"
           "(name, kind, folder, fields, and for an NDD dump its configuration line). Only the\n"
           "name after the last '/' is decoded; no file is read.\n"
           "\n"
           "Kinds, tried in this order (--kind picks one):\n"
           "  recorder_log  the scenario recorder's log files\n"
           "  dumpin_list   the on-device tuning dump-in list; dumpin_log, its log\n"
           "  ndd           NDD dumps, against each pattern of the NDD configuration (--config);\n"
           "                the line that named the file is reported, and a feature or stage\n"
           "                the name prints must be that line's. Request and frame numbers are\n"
           "                their last four digits, as in the name.\n"
           "  raw, yuv, jpg and the data kinds of 'camtune name --list': the naming functions'\n"
           "                names. The hint's and the caller's free texts are reported as one\n"
           "                'text', joined by '-'. " +
           std::string(parse::kVsdofKind) +
           " names end with whatever their caller\n"
           "                appended, so they are decoded only with --kind " +
           parse::kVsdofKind +
           ".\n"
           "All kinds: " +
           joinKinds() +
           ".\n"
           "\n"
           "A name that cannot be decoded is reported on standard error with the reason (with\n"
           "--json also as an object with an 'error'); the other names are still decoded.\n"
           "\n"
           "Exit status: 0 every name decoded, 1 a name could not be decoded, 2 bad usage or an\n"
           "NDD configuration that cannot be read.";
}

// Text form of a field value: arrays joined by ',', null as "none".
std::string textOf(const parse::Fields& value) {
    if (value.is_null()) return "none";
    if (value.is_string()) return value.get<std::string>();
    if (value.is_array()) {
        std::string joined;
        for (const auto& item : value) {
            if (!joined.empty()) joined += ',';
            joined += textOf(item);
        }
        return joined.empty() ? "none" : joined;
    }
    return jsonText(value);
}

std::string textLine(const std::string& name, const parse::Decoded& decoded) {
    std::ostringstream line;
    line << name << ": " << decoded.kind;
    if (!decoded.config.is_null()) {
        line << " line " << decoded.config["line"].get<int>() << " ("
             << textOf(decoded.config["feature"]) << ',' << textOf(decoded.config["stage"]) << ','
             << textOf(decoded.config["category"]) << ',' << textOf(decoded.config["module"])
             << ')';
        for (int other : decoded.otherLines) line << " also line " << other;
    }
    for (auto it = decoded.fields.begin(); it != decoded.fields.end(); ++it) {
        line << ' ' << it.key() << '=' << textOf(*it);
    }
    return line.str();
}

int runParse(const Args& args) {
    std::vector<std::string> names;
    std::string config = kDefaultNddConfig;
    std::string kind;
    bool json = false;

    CLI::App app(description(), "camtune parse");
    app.add_option("names", names, "file names, with or without their folder")->required();
    app.option_defaults()->always_capture_default();
    auto* configOption =
            app.add_option("--config", config, "NDD configuration file whose patterns name dumps")
                    ->check(CLI::ExistingFile);
    app.add_option("--kind", kind, "decode as this kind only");
    app.add_flag("--json", json, "print a JSON array");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;

    if (!kind.empty() && !parse::NameDecoder::isKind(kind)) {
        std::fprintf(stderr, "camtune parse: --kind: unknown kind '%s' (one of %s)\n", kind.c_str(),
                     joinKinds().c_str());
        return 2;
    }
    parse::NameDecoder decoder;
    std::string error;
    std::vector<std::string> warnings;
    if (!decoder.loadNddConfig(config, &error, &warnings)) {
        // Without a configuration named on the command line, NDD names are not decoded.
        if (configOption->count() > 0 || kind == parse::kNddKind) {
            std::fprintf(stderr, "camtune parse: %s\n", error.c_str());
            return 2;
        }
    }
    for (const std::string& warning : warnings) {
        std::fprintf(stderr, "camtune parse: %s\n", warning.c_str());
    }

    int status = 0;
    parse::Fields array = parse::Fields::array();
    for (const std::string& path : names) {
        const size_t slash = path.rfind(kFolderSeparator);
        const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        const std::string folder = slash == 0 ? "/" : path.substr(0, slash);
        parse::Decoded decoded;
        std::string reason = "no file name after the folder";
        const bool ok = !name.empty() && decoder.decode(name, kind, &decoded, &reason);
        parse::Fields entry = parse::Fields::object();
        entry["name"] = path;
        if (!ok) {
            std::fprintf(stderr, "camtune parse: %s: %s\n", path.c_str(), reason.c_str());
            status = 1;
            entry["error"] = reason;
            array.push_back(std::move(entry));
            continue;
        }
        if (!json) {
            std::printf("%s\n", textLine(path, decoded).c_str());
            continue;
        }
        entry["kind"] = decoded.kind;
        if (slash != std::string::npos) entry["folder"] = folder;
        if (!decoded.config.is_null()) {
            entry["config"] = decoded.config;
            if (!decoded.otherLines.empty()) entry["also_matches_lines"] = decoded.otherLines;
        }
        entry["fields"] = decoded.fields;
        array.push_back(std::move(entry));
    }
    if (json) std::printf("%s\n", jsonText(array, 2).c_str());
    return status;
}

}  // namespace

CAMTUNE_COMMAND("parse", "decode dump, log and list file names into their fields", runParse);

}  // namespace cli
}  // namespace camtune
