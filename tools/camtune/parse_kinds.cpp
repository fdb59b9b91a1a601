#include "parse_kinds.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "camtune/naming.h"
#include "camtune/platform/image_format.h"
#include "naming/data_file_kinds.h"
#include "naming/dump_format_names.h"
#include "naming/name_elements.h"
#include "recorder/recorder_constants.h"

namespace camtune {
namespace cli {
namespace parse {

namespace recorder = NSCam::TuningUtils::scenariorecorder;

// A grammar tried on a name, and how far the name fitted it.
struct NameDecoder::Attempt {
    bool tried = false;
    std::string description;
    size_t furthest = 0;
    std::string refusal;
    std::string gaveUpOn;

    // Keeps the grammar the name came closest to: a complete match refused by its check, else
    // the longest partial match.
    void note(const std::string& what, const MatchResult& result) {
        if (result.gaveUp && gaveUpOn.empty()) gaveUpOn = what;
        if (!refusal.empty()) return;
        if (!result.refusal.empty() || !tried || result.furthest > furthest) {
            tried = true;
            description = what;
            furthest = result.furthest;
            refusal = result.refusal;
        }
    }
};

namespace {

// Texts the prefix prints for negative numbers.
constexpr char kNoUniqueKey[] = "uniquekey";
constexpr char kNoRequest[] = "rqst";
constexpr char kNoFrame[] = "frme";
constexpr int64_t kNumberModulus = 10000;

// Recorder log files: "<prefix>_<start time>_TuningLog_<NN>.txt", the prefix
// "%09d_%04d_%04d_<kind>_".
constexpr char kLogMiddle[] = "_TuningLog_";
constexpr char kLogExtension[] = ".txt";

// The dump-in list of on-device tuning, "%09d-0000-0000_dumpin.cfg", and its log (the list's
// path with "_log" appended).
constexpr char kDumpinTail[] = "-0000-0000_dumpin.cfg";
constexpr char kDumpinLogTail[] = "_log";

// Values tried on the naming elements that map a small number to a text (exposure selectors,
// colour-filter orders); each has far fewer.
constexpr int kMaxProbe = 64;

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// "<key>-<request>-<frame>[_<ev>EV]": numbers below zero print as fixed words.
Sequence namingPrefix() {
    auto numberOrWord = [](const char* field, const char* format, int64_t max, const char* word) {
        return oneOf({{number(field, format, 0, max)}, {choice({{word, {{field, nullptr}}}})}});
    };
    return {numberOrWord("unique_key", "%09d", INT32_MAX, kNoUniqueKey),
            literal("-"),
            numberOrWord("request", "%04d", kNumberModulus - 1, kNoRequest),
            literal("-"),
            numberOrWord("frame", "%04d", kNumberModulus - 1, kNoFrame),
            optional({literal("_"), number("ev", "%01d"), literal("EV")})};
}

// "-<sensor>" for every sensor device bit with a name, then the name of the others.
Element sensorElement(bool optionalSensor) {
    const std::string other = camtune::naming::sensorName(0);
    std::vector<Option> options;
    for (int bit = 0; bit < 31; ++bit) {
        const int32_t device = 1 << bit;
        const std::string name = camtune::naming::sensorName(device);
        if (name != other) {
            options.push_back(Option{"-" + name, {{"sensor", name}, {"sensor_dev", device}}});
        }
    }
    options.push_back(Option{"-" + other, {{"sensor", other}, {"sensor_dev", nullptr}}});
    if (optionalSensor) options.push_back(Option{"", {}});
    return choice(std::move(options));
}

// Port pieces by value until the first value without one, then "-undef" and no port at all.
Element portElement(const char* (*piece)(int32_t)) {
    const std::string undefined = piece(-1);
    std::vector<Option> options;
    for (int32_t port = 0; piece(port) != undefined; ++port) {
        options.push_back(Option{piece(port), {{"port", piece(port) + 1}, {"port_value", port}}});
    }
    options.push_back(Option{undefined, {{"port", undefined.substr(1)}, {"port_value", nullptr}}});
    options.push_back(Option{"", {}});
    return choice(std::move(options));
}

// The hint's free text and the caller's, each "-<text>" when not empty, read as one text.
Element freeText() {
    return optional({literal("-"), text("text", false)});
}

Sequence bufferGeometry() {
    return {literal("-PW"),       number("buf_width"), literal("-PH"),
            number("buf_height"), literal("-BW"),      number("buf_stride")};
}

// "-<exposure label>" or nothing.
Element exposureElement() {
    std::vector<Option> options;
    for (int32_t selector = 0; selector < kMaxProbe; ++selector) {
        if (const char* label = camtune::naming::exposureLabel(selector)) {
            options.push_back(Option{std::string("-") + label, {{"exposure", label}}});
        }
    }
    options.push_back(Option{"", {}});
    return choice(std::move(options));
}

Element bitDepthElement() {
    size_t count = 0;
    const naming::DumpFormatNames* formats = naming::dumpFormatNames(&count);
    std::vector<Option> options;
    std::set<std::string> seen;
    for (size_t i = 0; i < count; ++i) {
        const std::string bits = formats[i].bitDepth;
        if (bits == naming::kUnknownDumpBitDepth || !seen.insert(bits).second) continue;
        options.push_back(Option{bits, {{"bits", std::stoi(bits)}}});
    }
    options.push_back(Option{naming::kUnknownDumpBitDepth, {{"bits", nullptr}}});
    return choice(std::move(options));
}

Element extensionElement() {
    return choice(dumpExtensionOptions("extension"));
}

Element colourOrderElement() {
    const std::string other = camtune::naming::colourOrderName(-1);
    std::vector<Option> options;
    for (int32_t order = 0; order < kMaxProbe; ++order) {
        const std::string name = camtune::naming::colourOrderName(order);
        if (name != other) options.push_back(Option{name, {{"colour_order", order}}});
    }
    options.push_back(Option{other, {{"colour_order", nullptr}}});
    return choice(std::move(options));
}

Element profileElement() {
    std::vector<Option> options;
    for (int32_t profile = 0; profile < NSIspTuning::EIspProfile_NUM; ++profile) {
        if (const char* name = NSCam::TuningUtils::getIspProfileName(
                    static_cast<NSIspTuning::EIspProfile_T>(profile))) {
            options.push_back(Option{std::string("-") + name, {{"profile", name}}});
        }
    }
    options.push_back(Option{camtune::naming::kNoProfileElement, {{"profile", nullptr}}});
    return choice(std::move(options));
}

Sequence concat(Sequence first, const Sequence& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Sequence imageGrammar(const std::string& kind) {
    Sequence grammar = namingPrefix();
    if (kind == "jpg") {
        return concat(grammar, {freeText(), literal(".jpg")});
    }
    const bool raw = kind == "raw";
    grammar.push_back(sensorElement(true));
    grammar.push_back(
            portElement(raw ? camtune::naming::rawPortPiece : camtune::naming::yuvPortPiece));
    grammar.push_back(freeText());
    grammar = concat(grammar, bufferGeometry());
    if (raw) grammar.push_back(exposureElement());
    grammar = concat(grammar, {literal("__"), number("width"), literal("x"), number("height"),
                               literal("_"), bitDepthElement(), literal("_")});
    grammar.push_back(raw ? colourOrderElement() : literal("s0"));
    return concat(grammar, {literal("."), extensionElement()});
}

Sequence dataGrammar(const camtune::naming::DataFileKind& kind) {
    using camtune::naming::DataExtra;
    Sequence grammar = namingPrefix();
    grammar.push_back(sensorElement(kind.sensor == camtune::naming::SensorElement::WhenSet));
    if (kind.suffix == nullptr && kind.extra != DataExtra::ExposureLabel) {
        // Whatever follows the sensor: the free texts and what the caller appended.
        grammar.push_back(text("rest", true));
        return grammar;
    }
    grammar.push_back(freeText());
    if (kind.extra == DataExtra::LcsoGeometry) {
        grammar = concat(grammar, bufferGeometry());
        grammar = concat(grammar, {literal("__"), number("width"), literal("x"), number("height"),
                                   literal("_"), number("bits"), literal("_s0")});
    }
    if (kind.profile) grammar.push_back(profileElement());
    if (kind.extra == DataExtra::ExposureLabel) grammar.push_back(exposureElement());
    if (kind.suffix != nullptr) {
        grammar.push_back(literal(kind.suffix));
    } else {
        // The caller's extension.
        grammar.push_back(optional({literal("."), text("extension", false)}));
    }
    return grammar;
}

// The recorder's start time, element by element from its strftime format.
Sequence timeStampGrammar() {
    struct Conversion {
        char letter;
        const char* field;
        const char* format;
        int min;
        int max;
    };
    constexpr Conversion kConversions[] = {
            {'Y', "year", "%d", 0, 9999},   {'m', "month", "%02d", 1, 12},
            {'d', "day", "%02d", 1, 31},    {'H', "hour", "%02d", 0, 23},
            {'M', "minute", "%02d", 0, 59}, {'S', "second", "%02d", 0, 60},
    };
    Sequence grammar;
    std::string pending;
    for (const char* c = recorder::kTimeStampFormat; *c != '\0'; ++c) {
        if (*c != '%' || c[1] == '\0') {
            pending += *c;
            continue;
        }
        ++c;
        if (!pending.empty()) grammar.push_back(literal(pending));
        pending.clear();
        for (const Conversion& conversion : kConversions) {
            if (conversion.letter == *c) {
                grammar.push_back(number(conversion.field, conversion.format, conversion.min,
                                         conversion.max));
            }
        }
    }
    if (!pending.empty()) grammar.push_back(literal(pending));
    return grammar;
}

Sequence recorderLogGrammar() {
    Sequence grammar = {number("unique_key", "%09d"),
                        literal("_"),
                        number("request", "%04d"),
                        literal("_"),
                        number("third", "%04d"),
                        literal("_"),
                        choice({{recorder::kPreviewKind, {{"series", recorder::kPreviewKind}}},
                                {recorder::kCaptureKind, {{"series", recorder::kCaptureKind}}}}),
                        literal("__")};
    grammar = concat(grammar, timeStampGrammar());
    return concat(grammar, {literal(kLogMiddle), number("file_index", "%02d", 1, INT32_MAX),
                            literal(kLogExtension)});
}

// The recorder cuts its name prefix to the room of its buffer; a longer one cannot be its.
std::string recorderPrefixMismatch(const Fields& fields) {
    char prefix[256];
    const int length =
            std::snprintf(prefix, sizeof(prefix), "%09d_%04d_%04d_%s_",
                          fields["unique_key"].get<int>(), fields["request"].get<int>(),
                          fields["third"].get<int>(), fields["series"].get<std::string>().c_str());
    if (length >= 0 && static_cast<size_t>(length) < recorder::kNamePrefixSize) return "";
    return "its prefix " + std::string(prefix) + " is longer than the recorder's " +
           std::to_string(recorder::kNamePrefixSize - 1) + " characters";
}

// Folds the time-stamp elements into one local time.
void foldStartTime(Fields* fields) {
    constexpr const char* kParts[] = {"year", "month", "day", "hour", "minute", "second"};
    int values[std::size(kParts)];
    for (size_t i = 0; i < std::size(kParts); ++i) {
        auto part = fields->find(kParts[i]);
        if (part == fields->end()) return;  // a format without this part: left as it is
        values[i] = part->get<int>();
    }
    char text[64];
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d:%02d:%02d", values[0], values[1],
                  values[2], values[3], values[4], values[5]);
    Fields folded = Fields::object();
    for (auto it = fields->begin(); it != fields->end(); ++it) {
        const auto part = std::find(std::begin(kParts), std::end(kParts), it.key());
        if (part == std::begin(kParts)) folded["start_time"] = text;
        if (part == std::end(kParts)) folded[it.key()] = *it;
    }
    *fields = std::move(folded);
}

// A kind with its grammar and what it adds to the decoded fields.
struct KindGrammar {
    KindGrammar(std::string name, Sequence sequence, Check acceptMatch = nullptr,
                std::function<void(Fields*)> finishFields = nullptr)
        : kind(std::move(name)),
          grammar(std::move(sequence)),
          accept(std::move(acceptMatch)),
          finish(std::move(finishFields)) {}

    std::string kind;
    Sequence grammar;
    Check accept;
    std::function<void(Fields*)> finish;
    bool tryByDefault = true;
};

void addImageFormats(Fields* fields) {
    const std::string extension = (*fields)["extension"].get<std::string>();
    const Fields& bits = (*fields)["bits"];
    const std::string bitsName = bits.is_null() ? std::string(naming::kUnknownDumpBitDepth)
                                                : std::to_string(bits.get<int>());
    (*fields)["formats"] = imageFormatsFor(&bitsName, extension);
}

// Every kind but NDD's, in the order they are tried: the fixed shapes first, then the naming
// functions' names, the data kinds with a suffix of their own before those without.
const std::vector<KindGrammar>& kindGrammars() {
    static const std::vector<KindGrammar> sKinds = [] {
        std::vector<KindGrammar> kinds;
        kinds.emplace_back(kRecorderLogKind, recorderLogGrammar(), recorderPrefixMismatch,
                           foldStartTime);
        kinds.emplace_back(kDumpinListKind,
                           Sequence{number("unique_key", "%09d"), literal(kDumpinTail)});
        kinds.emplace_back(kDumpinLogKind, Sequence{number("unique_key", "%09d"),
                                                    literal(kDumpinTail), literal(kDumpinLogTail)});
        for (const char* image : {"raw", "yuv", "jpg"}) {
            KindGrammar kind{image, imageGrammar(image)};
            if (kind.kind != "jpg") kind.finish = addImageFormats;
            kinds.push_back(std::move(kind));
        }
        size_t count = 0;
        const camtune::naming::DataFileKind* data = camtune::naming::dataFileKinds(&count);
        std::vector<KindGrammar> openEnded;
        for (size_t i = 0; i < count; ++i) {
            KindGrammar kind{lowerCase(data[i].name), dataGrammar(data[i])};
            if (data[i].suffix != nullptr) {
                kinds.push_back(std::move(kind));
            } else {
                kind.tryByDefault = kind.kind != kVsdofKind;
                openEnded.push_back(std::move(kind));
            }
        }
        for (KindGrammar& kind : openEnded) kinds.push_back(std::move(kind));
        return kinds;
    }();
    return sKinds;
}

Fields configJson(const std::string& path, int line, const NSCam::TuningUtils::configInfo& info) {
    Fields config = Fields::object();
    config["file"] = path;
    config["line"] = line;
    config["feature"] = info.feature;
    config["stage"] = info.stage;
    config["category"] = info.category;
    config["module"] = info.module;
    config["pattern"] = info.format;
    config["enable"] = info.enable;
    config["dumpin"] = info.dumpin;
    return config;
}

}  // namespace

bool NameDecoder::loadNddConfig(const std::string& path, std::string* error,
                                std::vector<std::string>* warnings) {
    using NSCam::TuningUtils::ConfigLineStatus;
    using NSCam::TuningUtils::ConfigTable;
    std::ifstream in(path);
    if (!in.is_open()) {
        *error = "cannot read the NDD configuration " + path;
        return false;
    }
    std::vector<NddPattern> patterns;
    std::map<std::string, size_t> byKey;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        NddPattern pattern;
        pattern.line = number;
        if (NSCam::TuningUtils::parseConfigLine(line, &pattern.info) != ConfigLineStatus::Ok) {
            warnings->push_back(path + ":" + std::to_string(number) +
                                ": not a configuration line (seven fields, the last two "
                                "numbers); NDD stops reading there, so it and the lines after "
                                "it are not used");
            break;
        }
        pattern.grammar = nddPatternGrammar(pattern.info.format);
        const std::string key = ConfigTable::keyOf(pattern.info);
        auto known = byKey.find(key);
        if (known != byKey.end()) {
            warnings->push_back(path + ":" + std::to_string(number) + ": replaces line " +
                                std::to_string(patterns[known->second].line) + " (" + key + ")");
            patterns[known->second] = std::move(pattern);
        } else {
            byKey.emplace(key, patterns.size());
            patterns.push_back(std::move(pattern));
        }
    }
    mConfigPath = path;
    mPatterns = std::move(patterns);
    return true;
}

std::vector<std::string> NameDecoder::kinds() {
    std::vector<std::string> names;
    for (const KindGrammar& kind : kindGrammars()) {
        names.push_back(kind.kind);
        // NDD names are tried after the fixed shapes, before the naming functions' names.
        if (kind.kind == kDumpinLogKind) names.push_back(kNddKind);
    }
    return names;
}

bool NameDecoder::isKind(const std::string& kind) {
    const std::vector<std::string> all = kinds();
    return std::find(all.begin(), all.end(), kind) != all.end();
}

bool NameDecoder::decodeNdd(const std::string& name, Decoded* out, Attempt* closest) const {
    bool found = false;
    for (const NddPattern& pattern : mPatterns) {
        const MatchResult result = matchName(name, pattern.grammar, [&](const Fields& fields) {
            return nddLineMismatch(fields, pattern.info);
        });
        closest->note("configuration line " + std::to_string(pattern.line) + " (" +
                              pattern.info.format + ")",
                      result);
        if (!result.matched) continue;
        if (found) {
            out->otherLines.push_back(pattern.line);
            continue;
        }
        found = true;
        out->kind = kNddKind;
        out->fields = result.fields;
        auto format = out->fields.find("format");
        if (format != out->fields.end()) {
            out->fields["formats"] = imageFormatsFor(nullptr, format->get<std::string>());
        }
        out->config = configJson(mConfigPath, pattern.line, pattern.info);
    }
    return found;
}

bool NameDecoder::decode(const std::string& name, const std::string& kind, Decoded* out,
                         std::string* reason) const {
    Attempt closest;
    const bool nddWanted = kind.empty() || kind == kNddKind;
    for (const KindGrammar& grammar : kindGrammars()) {
        if (kind.empty() ? grammar.tryByDefault : kind == grammar.kind) {
            const MatchResult result = matchName(name, grammar.grammar, grammar.accept);
            closest.note("the " + grammar.kind + " name", result);
            if (result.matched) {
                out->kind = grammar.kind;
                out->fields = result.fields;
                if (grammar.finish) grammar.finish(&out->fields);
                return true;
            }
        }
        if (grammar.kind == kDumpinLogKind && nddWanted && decodeNdd(name, out, &closest)) {
            return true;
        }
    }

    std::string why = kind.empty() ? "no kind fits" : "not of kind " + kind;
    if (!closest.tried) {
        why += ": no NDD configuration line to match against";
    } else if (!closest.refusal.empty()) {
        why += ": it reads as " + closest.description + ", but " + closest.refusal;
    } else if (closest.furthest == 0) {
        why += kind.empty() ? ": it does not start like any of them"
                            : ": it does not start like one";
    } else if (closest.furthest >= name.size()) {
        why += ": it ends early for " + closest.description;
    } else {
        constexpr size_t kShownRest = 40;
        std::string rest = name.substr(closest.furthest, kShownRest);
        if (closest.furthest + kShownRest < name.size()) rest += "...";
        why += ": " + closest.description + " fits the first " + std::to_string(closest.furthest) +
               " characters, not '" + rest + "'";
    }
    if (!closest.gaveUpOn.empty()) {
        why += "; gave up on " + closest.gaveUpOn +
               ", which it can be read against in too many "
               "ways";
    }
    if (nddWanted && mConfigPath.empty()) why += "; no NDD configuration was read";
    *reason = why;
    return false;
}

std::vector<Option> dumpExtensionOptions(const char* field) {
    size_t count = 0;
    const naming::DumpFormatNames* formats = naming::dumpFormatNames(&count);
    std::vector<Option> options;
    std::set<std::string> seen;
    for (size_t i = 0; i <= count; ++i) {
        const char* extension = i < count ? formats[i].extension : naming::kUnknownDumpExtension;
        if (seen.insert(extension).second)
            options.push_back(Option{extension, {{field, extension}}});
    }
    return options;
}

}  // namespace parse
}  // namespace cli
}  // namespace camtune
