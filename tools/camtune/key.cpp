// camtune key: NDD keys and the scenario recorder's request keys, composed and taken apart.
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "camtune/ndd.h"
#include "cli_parse.h"
#include "command.h"
#include "json_text.h"
#include "recorder/recorder_constants.h"

namespace camtune {
namespace cli {
namespace {

using Json = nlohmann::ordered_json;

// Request and frame numbers of an NDD key, and the request number of a recorder key, have 16
// bits; a request number with bit 15 set fills the upper word of an NDD key with ones.
constexpr int64_t kMax16 = 0xFFFF;
constexpr int64_t kNddRequestSignBit = 0x8000;
constexpr int kRecorderRequestBits = 16;
constexpr int kPrefixModulus = 10000;
constexpr size_t kMaxHexDigits = 16;

enum class KeyKind { Ndd, Request };

const char* kindName(KeyKind kind) {
    return kind == KeyKind::Ndd ? "ndd" : "request";
}

// Reads decimal (a leading '-' allowed) or "0x" hexadecimal text. Hexadecimal text is taken as
// an unsigned number of at most 64 bits; `bitPattern` keeps those bits as a signed 64-bit key,
// otherwise it must fit `min`..`max` like a decimal number.
bool readNumber(const std::string& text, int64_t min, int64_t max, bool bitPattern, int64_t* value,
                std::string* why) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const std::string digits = hex ? text.substr(2) : text;
    const char* allowed = hex ? "0123456789abcdefABCDEF" : "0123456789";
    const size_t first = !hex && !digits.empty() && digits[0] == '-' ? 1 : 0;
    if (digits.size() <= first || digits.find_first_not_of(allowed, first) != std::string::npos) {
        *why = "is not a number (decimal, or hexadecimal after 0x)";
        return false;
    }
    errno = 0;
    int64_t number = 0;
    if (hex) {
        const size_t significant = digits.find_first_not_of('0');
        if (significant != std::string::npos && digits.size() - significant > kMaxHexDigits) {
            *why = "has more than 64 bits";
            return false;
        }
        const uint64_t bits = std::strtoull(digits.c_str(), nullptr, 16);
        if (!bitPattern && bits > static_cast<uint64_t>(max)) {
            *why = "is out of range";
            return false;
        }
        number = static_cast<int64_t>(bits);
    } else {
        number = std::strtoll(digits.c_str(), nullptr, 10);
        if (errno == ERANGE) {
            *why = "is out of range";
            return false;
        }
    }
    if (!bitPattern && (number < min || number > max)) {
        *why = "is out of range";
        return false;
    }
    *value = number;
    return true;
}

std::string hex64(int64_t value) {
    char text[24];
    std::snprintf(text, sizeof(text), "0x%016" PRIX64, static_cast<uint64_t>(value));
    return text;
}

std::string rangeText(int64_t min, int64_t max) {
    char text[96];
    std::snprintf(text, sizeof(text), "%" PRId64 " to %" PRId64 " (0x%" PRIX64 ")", min, max,
                  static_cast<uint64_t>(max));
    return text;
}

int usageError(const std::string& message) {
    std::fprintf(stderr, "camtune key: %s\n", message.c_str());
    return 2;
}

// One value of the command line with its meaning and range.
struct Argument {
    const char* meaning;
    int64_t min;
    int64_t max;
    int64_t value = 0;
};

bool readArguments(const std::vector<std::string>& texts, std::vector<Argument>* arguments,
                   std::string* error) {
    if (texts.size() != arguments->size()) {
        std::string wanted;
        for (const Argument& argument : *arguments) {
            wanted += wanted.empty() ? "" : ", ";
            wanted += argument.meaning;
        }
        *error = "expected " + std::to_string(arguments->size()) + " values (" + wanted +
                 "), got " + std::to_string(texts.size());
        return false;
    }
    for (size_t i = 0; i < texts.size(); ++i) {
        Argument& argument = (*arguments)[i];
        std::string why;
        if (!readNumber(texts[i], argument.min, argument.max, false, &argument.value, &why)) {
            *error = std::string(argument.meaning) + " '" + texts[i] + "' " + why;
            if (why == "is out of range") {
                *error += ": it must be " + rangeText(argument.min, argument.max);
            }
            return false;
        }
    }
    return true;
}

int encode(KeyKind kind, const std::vector<std::string>& texts, bool json) {
    std::vector<Argument> arguments = {{"unique key", INT32_MIN, INT32_MAX},
                                       {"request number", 0, kMax16}};
    if (kind == KeyKind::Ndd) arguments.push_back({"frame number", 0, kMax16});
    std::string error;
    if (!readArguments(texts, &arguments, &error)) return usageError(error);

    const int32_t uniqueKey = static_cast<int32_t>(arguments[0].value);
    const int32_t requestNo = static_cast<int32_t>(arguments[1].value);
    Json out = Json::object();
    out["kind"] = kindName(kind);
    out["unique_key"] = uniqueKey;
    out["request"] = requestNo;
    int64_t key = 0;
    std::string note;
    if (kind == KeyKind::Ndd) {
        const int32_t frameNo = static_cast<int32_t>(arguments[2].value);
        out["frame"] = frameNo;
        key = NSCam::TuningUtils::composeNddKey(uniqueKey, requestNo, frameNo);
        if ((requestNo & kNddRequestSignBit) != 0 && uniqueKey != -1) {
            note = "request number " + std::to_string(requestNo) +
                   " has bit 15 set: the key's lower word is sign-extended over the unique "
                   "key, so it decodes with unique key -1";
        }
    } else {
        key = NSCam::TuningUtils::scenariorecorder::makeKey(uniqueKey, requestNo);
    }
    out["key"] = key;
    out["hex"] = hex64(key);
    if (!note.empty()) out["note"] = note;
    if (json) {
        std::printf("%s\n", jsonText(out, 2).c_str());
    } else {
        std::printf("%" PRId64 " %s\n", key, hex64(key).c_str());
        if (!note.empty()) std::fprintf(stderr, "camtune key: note: %s\n", note.c_str());
    }
    return 0;
}

// Takes `key` apart; false with `why` when it is not a key of that kind.
bool decodeKey(KeyKind kind, int64_t key, Json* out, std::string* why) {
    int uniqueKey = 0, requestNo = 0, frameNo = 0;
    if (kind == KeyKind::Ndd) {
        NSCam::TuningUtils::INdd::getInstance()->query_uniquekey(static_cast<long long>(key),
                                                                 uniqueKey, requestNo, frameNo);
    } else {
        // The inverse of the composition for request numbers 0 to 0xFFFF, the only ones whose
        // bits stay clear of the unique key's.
        const int64_t upper = key >> kRecorderRequestBits;
        if (upper < INT32_MIN || upper > INT32_MAX) {
            *why = "no 32-bit unique key composes it (key >> 16 is " + std::to_string(upper) + ")";
            return false;
        }
        uniqueKey = static_cast<int>(upper);
        requestNo = static_cast<int>(key & kMax16);
    }
    (*out)["unique_key"] = uniqueKey;
    (*out)["request"] = requestNo;
    if (kind == KeyKind::Ndd) {
        (*out)["frame"] = frameNo;
        char prefix[48];
        std::snprintf(prefix, sizeof(prefix), "%09d-%04d-%04d", uniqueKey,
                      requestNo % kPrefixModulus, frameNo % kPrefixModulus);
        (*out)["name_prefix"] = prefix;
        if ((requestNo & kNddRequestSignBit) != 0 && uniqueKey == -1) {
            (*out)["note"] =
                    "request number has bit 15 set, so the upper word is its sign extension: "
                    "the unique key it was composed with is hidden";
        }
    }
    return true;
}

int decode(KeyKind kind, const std::vector<std::string>& texts, bool json) {
    if (texts.empty()) return usageError("decode needs at least one KEY");
    std::vector<int64_t> keys;
    for (const std::string& text : texts) {
        int64_t key = 0;
        std::string why;
        if (!readNumber(text, INT64_MIN, INT64_MAX, true, &key, &why)) {
            return usageError(
                    "key '" + text + "' " + why +
                    (why == "is out of range" ? ": it must fit a signed 64-bit number" : ""));
        }
        keys.push_back(key);
    }
    int status = 0;
    Json array = Json::array();
    for (size_t i = 0; i < keys.size(); ++i) {
        Json out = Json::object();
        out["input"] = texts[i];
        out["kind"] = kindName(kind);
        out["key"] = keys[i];
        out["hex"] = hex64(keys[i]);
        std::string why;
        if (!decodeKey(kind, keys[i], &out, &why)) {
            status = 1;
            std::fprintf(stderr, "camtune key: %s: not a %s key: %s\n", texts[i].c_str(),
                         kindName(kind), why.c_str());
            out["error"] = why;
            array.push_back(std::move(out));
            continue;
        }
        if (!json) {
            std::printf("%s:", texts[i].c_str());
            for (auto it = out.begin(); it != out.end(); ++it) {
                if (it.key() == "input" || it.key() == "kind" || it.key() == "note") continue;
                std::printf(
                        " %s=%s", it.key().c_str(),
                        it->is_string() ? it->get<std::string>().c_str() : jsonText(*it).c_str());
            }
            std::printf("\n");
            if (out.contains("note")) {
                std::fprintf(stderr, "camtune key: %s: note: %s\n", texts[i].c_str(),
                             out["note"].get<std::string>().c_str());
            }
        }
        array.push_back(std::move(out));
    }
    if (json) std::printf("%s\n", jsonText(array, 2).c_str());
    return status;
}

int runKey(const Args& args) {
    CLI::App app(
            "Composes and takes apart the library's two 64-bit keys.\n"
            "\n"
            "  camtune key encode --ndd UNIQUE REQUEST FRAME\n"
            "  camtune key encode --request UNIQUE REQUEST\n"
            "  camtune key decode --ndd KEY...\n"
            "  camtune key decode --request KEY...\n"
            "\n"
            "NDD key (--ndd): the unique key in the upper 32 bits, the request number in bits 16\n"
            "to 31, the frame number in bits 0 to 15 (request and frame 0 to 65535). The lower\n"
            "word is sign-extended, so a request number with bit 15 set (0x8000 and up) fills\n"
            "the upper word with ones and hides the unique key; encode adds a note when it does.\n"
            "Every 64-bit value decodes.\n"
            "\n"
            "Recorder request key (--request): the unique key shifted left by 16, OR-ed with\n"
            "the request number sign-extended. Only request numbers 0 to 65535 stay clear of\n"
            "the unique key's bits, so encode takes only those. Decoding is not unique for other\n"
            "numbers: it reads unique key = key >> 16 (arithmetic) and request = the low 16 bits.\n"
            "A key whose upper 48 bits are no 32-bit number is reported, exit status 1.\n"
            "\n"
            "Numbers are decimal (a leading '-' allowed) or hexadecimal after 0x; a key in\n"
            "hexadecimal is its 64 bits (0xFFFFFFFF80000000 is negative). Keys print in decimal\n"
            "and hexadecimal, or with --json as JSON (decode: an array, one object per key).\n"
            "\n"
            "Exit status: 0 success, 1 a key could not be decoded (the others are printed),\n"
            "2 bad usage or a value that is not a number or is out of range.",
            "camtune key");
    app.require_subcommand(1);
    struct Mode {
        bool ndd = false;
        bool request = false;
        bool json = false;
        std::vector<std::string> values;
    } encodeMode, decodeMode;
    auto configure = [](CLI::App* sub, Mode* mode, const char* values) {
        auto* ndd = sub->add_flag("--ndd", mode->ndd, "an NDD key");
        auto* request = sub->add_flag("--request", mode->request, "a recorder request key");
        ndd->excludes(request);
        sub->add_flag("--json", mode->json, "print JSON");
        sub->add_option("values", mode->values, values);
    };
    configure(app.add_subcommand("encode",
                                 "compose a key: --ndd UNIQUE REQUEST FRAME, or "
                                 "--request UNIQUE REQUEST"),
              &encodeMode, "UNIQUE REQUEST [FRAME]");
    configure(app.add_subcommand("decode", "take keys apart: --ndd KEY..., or --request KEY..."),
              &decodeMode, "KEY...");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;

    const bool encoding = app.got_subcommand("encode");
    const Mode& mode = encoding ? encodeMode : decodeMode;
    if (!mode.ndd && !mode.request) {
        return usageError(std::string(encoding ? "encode" : "decode") +
                          ": say which key, --ndd or --request");
    }
    const KeyKind kind = mode.ndd ? KeyKind::Ndd : KeyKind::Request;
    return encoding ? encode(kind, mode.values, mode.json) : decode(kind, mode.values, mode.json);
}

}  // namespace

CAMTUNE_COMMAND("key", "compose or take apart NDD keys and recorder request keys", runKey);

}  // namespace cli
}  // namespace camtune
