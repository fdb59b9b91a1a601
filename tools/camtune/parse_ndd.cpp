// Grammars of NDD dump-file patterns. The pieces that name a value (sensor, stage, feature, the
// optional enumerations) are taken from the naming rules themselves, applied to every value; the
// numeric rules are written out from their formats.
#include <set>

#include "camtune/naming_vocabulary.h"
#include "camtune/ndd_tables.h"
#include "camtune/platform/image_format.h"
#include "naming/dump_format_names.h"
#include "parse_kinds.h"

namespace camtune {
namespace cli {
namespace parse {
namespace {

using NSCam::TuningUtils::NddAutoGenExcel2C;
using NSCam::TuningUtils::NddData;

constexpr char kFieldOpen = '[';
constexpr char kFieldClose = ']';
constexpr char kFormatRule[] = "Format";
// Request and frame numbers keep their last four digits, with the sign of the number.
constexpr int64_t kNumberModulus = 10000;

// What the rule `rule` prints for each value of `member` from -1 ("none") to one past `count`
// (a value without a name), each distinct piece once, "none" last.
Element enumeratedRule(const char* rule, const char* field, int32_t NddData::*member, int count) {
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    std::vector<Option> options;
    std::set<std::string> seen;
    auto add = [&](int value) {
        NddData data;
        data.*member = value;
        std::string piece;
        tables->convert(rule, data, &piece);
        if (!seen.insert(piece).second) return;
        Option option{piece, {}};
        // Pieces are "-name"; an empty piece records nothing.
        if (!piece.empty()) option.fields.emplace_back(field, piece.substr(1));
        options.push_back(std::move(option));
    };
    for (int value = 0; value <= count; ++value) add(value);
    add(-1);
    return choice(std::move(options));
}

Element formatExtension() {
    std::vector<Option> options = dumpExtensionOptions("format");
    // A buffer without an image format (an array) gets no extension.
    options.push_back(Option{"", {}});
    return choice(std::move(options));
}

// Appends what the rule called `rule` prints. Rules the tables do not know print nothing.
void appendRule(const std::string& rule, Sequence* out) {
    auto add = [out](std::initializer_list<Element> elements) {
        out->insert(out->end(), elements.begin(), elements.end());
    };
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    if (rule == kFormatRule) {
        add({formatExtension()});
    } else if (rule == "Platform") {
        add({literal("-p"), number("platform")});
    } else if (rule == "Prefix") {
        add({number("unique_key", "%09d"), literal("-"),
             number("request", "%04d", -kNumberModulus + 1, kNumberModulus - 1), literal("-"),
             number("frame", "%04d", -kNumberModulus + 1, kNumberModulus - 1)});
    } else if (rule == "SensorId") {
        add({enumeratedRule("SensorId", "sensor_id", &NddData::sensorId,
                            static_cast<int>(tables->sensorIdCount()))});
    } else if (rule == "Stage") {
        add({enumeratedRule("Stage", "stage", &NddData::stage, NAMING_STAGE_NUM)});
    } else if (rule == "Feature") {
        add({enumeratedRule("Feature", "feature", &NddData::feature, NAMING_PIPE_SCENARIO_NUM)});
    } else if (rule == "Action") {
        add({literal("-"), number("action")});
    } else if (rule == "SensorFeatureMode") {
        add({enumeratedRule("SensorFeatureMode", "sensor_feature_mode", &NddData::sensorFeatureMode,
                            static_cast<int>(tables->sensorFeatureModeCount()))});
    } else if (rule == "UserStr") {
        add({literal("-"), text("user", true)});
    } else if (rule == "Padding") {
        add({literal("-PW"), number("padded_width"), literal("-PH"), number("padded_height"),
             literal("-BW"), number("buffer_width")});
    } else if (rule == "Size") {
        add({literal("__"), number("width"), literal("x"), number("height")});
    } else if (rule == "Bit") {
        add({literal("_"), number("bit_depth")});
    } else if (rule == "BayerOrder") {
        add({literal("_"), number("bayer_order")});
    } else if (rule == "Sign") {
        add({literal("_s"), number("sign")});
    } else if (rule == "Cell") {
        add({literal("_c"), number("cell")});
    } else if (rule == "Delay") {
        add({literal("_delay"), number("delay")});
    } else if (rule == "Layer") {
        add({literal("-F"), number("layer")});
    } else if (rule == "SensorExp") {
        add({enumeratedRule("SensorExp", "sensor_exp", &NddData::sensorExp,
                            static_cast<int>(tables->sensorExpCount()))});
    } else if (rule == "ExpOdr") {
        add({enumeratedRule("ExpOdr", "exp_odr", &NddData::expOdr,
                            static_cast<int>(tables->expOdrCount()))});
    } else if (rule == "DualCamId") {
        add({enumeratedRule("DualCamId", "dual_cam_id", &NddData::dualCamId,
                            static_cast<int>(tables->dualCamIdCount()))});
    } else if (rule == "Version") {
        add({literal("-v"), number("rule_version")});
    }
    // "Port", "Plane" and unknown rule names print nothing.
}

// The name the rule prints, without its "-", for a value out of range.
std::string invalidName(const char* rule, int32_t NddData::*member) {
    NddData data;
    data.*member = -1;
    std::string piece;
    NddAutoGenExcel2C::getInstance()->convert(rule, data, &piece);
    return piece.empty() ? piece : piece.substr(1);
}

// "" when a decoded stage or feature fits the line's name; an invalid one (out of range) selects
// the line with an empty name.
std::string mismatch(const Fields& fields, const char* field, const std::string& invalid,
                     const std::string& lineName) {
    auto it = fields.find(field);
    if (it == fields.end()) return "";
    const std::string value = it->get<std::string>();
    if (value == invalid ? lineName.empty() : value == lineName) return "";
    return std::string("it prints ") + field + " " + value + " where the line has '" + lineName +
           "'";
}

}  // namespace

Fields imageFormatsFor(const std::string* bits, const std::string& extension) {
    size_t count = 0;
    const naming::DumpFormatNames* formats = naming::dumpFormatNames(&count);
    Fields names = Fields::array();
    for (size_t i = 0; i < count; ++i) {
        if (extension != formats[i].extension) continue;
        if (bits != nullptr && *bits != formats[i].bitDepth) continue;
        const NSCam::ImageFormatInfo* format = NSCam::findImageFormat(formats[i].code);
        if (format != nullptr) names.push_back(format->name);
    }
    return names;
}

Sequence nddPatternGrammar(const std::string& pattern) {
    Sequence grammar;
    size_t at = 0;
    while (at < pattern.size()) {
        const size_t open = pattern.find(kFieldOpen, at);
        if (open == std::string::npos) {
            grammar.push_back(literal(pattern.substr(at)));
            break;
        }
        if (open > at) grammar.push_back(literal(pattern.substr(at, open - at)));
        const size_t close = pattern.find(kFieldClose, open + 1);
        // NDD stops naming at a bracket that is never closed.
        if (close == std::string::npos) break;
        appendRule(pattern.substr(open + 1, close - open - 1), &grammar);
        at = close + 1;
    }
    return grammar;
}

std::string nddLineMismatch(const Fields& fields, const NSCam::TuningUtils::configInfo& info) {
    static const std::string invalidStage = invalidName("Stage", &NddData::stage);
    static const std::string invalidFeature = invalidName("Feature", &NddData::feature);
    std::string why = mismatch(fields, "stage", invalidStage, info.stage);
    return why.empty() ? mismatch(fields, "feature", invalidFeature, info.feature) : why;
}

}  // namespace parse
}  // namespace cli
}  // namespace camtune
