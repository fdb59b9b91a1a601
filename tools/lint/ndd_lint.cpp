#include "lint/ndd_lint.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <map>
#include <string>

#include "camtune/naming_vocabulary.h"
#include "camtune/ndd_tables.h"
#include "camtune/platform/image_format.h"
#include "lint/edit_distance.h"
#include "ndd/carried_record.h"
#include "ndd/config_table.h"

namespace NSCam {
namespace TuningUtils {
namespace {

constexpr size_t kFieldCount = 7;
constexpr char kFormatField[] = "Format";

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

// A name table: the names, and the nearest of them to a misspelling.
class Names {
public:
    Names(const char* what, std::vector<std::string> names)
        : mWhat(what), mNames(std::move(names)) {}

    bool contains(const std::string& name) const {
        return std::find(mNames.begin(), mNames.end(), name) != mNames.end();
    }
    // "unknown module "AAOO"; did you mean "AAO"?"
    std::string unknown(const std::string& name) const {
        std::string message =
                "unknown " + std::string(mWhat) + " " + quoted(name) + ": the item is never dumped";
        const std::string* best = nullptr;
        size_t bestDistance = 0;
        for (const std::string& candidate : mNames) {
            const size_t distance = camtune::editDistance(name, candidate);
            if (best == nullptr || distance < bestDistance) {
                best = &candidate;
                bestDistance = distance;
            }
        }
        if (best != nullptr && bestDistance <= std::max<size_t>(2, name.size() / 3)) {
            message += "; did you mean " + quoted(*best) + "?";
        }
        return message;
    }

private:
    const char* mWhat;
    std::vector<std::string> mNames;
};

template <size_t N>
std::vector<std::string> namesOf(const char* const (&table)[N]) {
    return std::vector<std::string>(std::begin(table), std::end(table));
}

std::vector<std::string> tableNames(size_t count,
                                    const char* (NddAutoGenExcel2C::*name)(int) const) {
    std::vector<std::string> names;
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    for (size_t i = 0; i < count; ++i) names.push_back((tables->*name)(static_cast<int>(i)));
    return names;
}

struct Vocabulary {
    Names features{"feature", namesOf(NAMING_PIPE_SCENARIO_CSTR)};
    Names stages{"stage", namesOf(NAMING_STAGE_CSTR)};
    Names categories{"category", tableNames(NddAutoGenExcel2C::getInstance()->categoryCount(),
                                            &NddAutoGenExcel2C::getCategoryName)};
    Names modules{"module", tableNames(NddAutoGenExcel2C::getInstance()->moduleCount(),
                                       &NddAutoGenExcel2C::getModuleName)};
};

// The enable and dump-in fields: read as std::stoi reads them, which stops at the first
// character that is not part of a number and skips leading blanks. Returns false when the
// library stops reading the file at this line.
bool checkNumber(const std::string& field, const char* what, int line,
                 std::vector<LintFinding>* findings) {
    errno = 0;
    char* end = nullptr;
    const long value = std::strtol(field.c_str(), &end, 10);
    if (end == field.c_str()) {
        findings->push_back({line, std::string(what) + " " + quoted(field) +
                                           " is not a number: the library stops reading the "
                                           "file at this line"});
        return false;
    }
    if (errno == ERANGE || value < INT_MIN || value > INT_MAX) {
        findings->push_back({line, std::string(what) + " " + quoted(field) +
                                           " is out of range: the library stops reading the "
                                           "file at this line"});
        return false;
    }
    if (*end != '\0') {
        findings->push_back({line, std::string(what) + " " + quoted(field) +
                                           " has trailing text: it reads as " +
                                           std::to_string(value)});
    } else if (field[0] == ' ' || field[0] == '\t' || field[0] == '+') {
        findings->push_back({line, std::string(what) + " " + quoted(field) + " reads as " +
                                           std::to_string(value)});
    }
    return true;
}

void checkPattern(const std::string& pattern, const std::string& module, int line,
                  std::vector<LintFinding>* findings) {
    if (pattern.empty()) {
        findings->push_back({line, "empty file-name pattern: the item is refused"});
        return;
    }
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    size_t at = 0;
    while (at < pattern.size()) {
        const size_t open = pattern.find('[', at);
        if (open == std::string::npos) break;
        const size_t close = pattern.find(']', open + 1);
        if (close == std::string::npos) {
            findings->push_back({line, "unclosed \"[\" in the pattern: the rest of it is dropped"});
            return;
        }
        const std::string field = pattern.substr(open + 1, close - open - 1);
        if (field == kFormatField) {
            // Carried statistics only ever arrive as raw buffers.
            if (carriedTagOf(tables->findModule(module)) != 0) {
                findings->push_back({line, "[Format] in the pattern of " + module +
                                                   ", which is dumped from raw buffers: it adds "
                                                   "nothing and logs an error"});
            }
        } else if (tables->findRule(field) == nullptr) {
            findings->push_back(
                    {line, "unknown field [" + field + "] in the pattern: it adds nothing"});
        }
        at = close + 1;
    }
    if (pattern.find('/') != std::string::npos) {
        findings->push_back({line, "\"/\" in the pattern: the item is refused"});
    }
}

}  // namespace

std::vector<LintFinding> lintNddConfig(std::istream& in) {
    static const Vocabulary vocabulary;
    std::vector<LintFinding> findings;
    std::map<std::string, int> keys;  // key -> line of its last definition
    std::string text;
    for (int line = 1; std::getline(in, text); ++line) {
        const std::vector<std::string> fields = splitFields(text, ',');
        if (fields.size() != kFieldCount) {
            findings.push_back(
                    {line, (text.empty() ? std::string("blank line")
                                         : std::to_string(fields.size()) + " fields instead of 7") +
                                   ": the library stops reading the file here"});
            break;
        }
        const std::string& feature = fields[0];
        const std::string& stage = fields[1];
        const std::string& pattern = fields[2];
        const std::string& category = fields[3];
        const std::string& module = fields[4];
        // Both fields are read before the library gives up on the line.
        const bool enableRead = checkNumber(fields[5], "enable", line, &findings);
        const bool dumpinRead = checkNumber(fields[6], "dump-in", line, &findings);
        if (!enableRead || !dumpinRead) break;
        if (!feature.empty() && !vocabulary.features.contains(feature)) {
            findings.push_back({line, vocabulary.features.unknown(feature)});
        }
        if (!stage.empty() && !vocabulary.stages.contains(stage)) {
            findings.push_back({line, vocabulary.stages.unknown(stage)});
        }
        if (!vocabulary.categories.contains(category)) {
            findings.push_back({line, vocabulary.categories.unknown(category)});
        }
        if (!vocabulary.modules.contains(module)) {
            findings.push_back({line, vocabulary.modules.unknown(module)});
        }
        checkPattern(pattern, module, line, &findings);
        configInfo info;
        info.feature = feature;
        info.stage = stage;
        info.category = category;
        info.module = module;
        const std::string key = ConfigTable::keyOf(info);
        auto earlier = keys.find(key);
        if (earlier != keys.end()) {
            findings.push_back({line, "same feature, stage, category and module as line " +
                                              std::to_string(earlier->second) +
                                              ": this line replaces it"});
        }
        keys[key] = line;
    }
    return findings;
}

}  // namespace TuningUtils
}  // namespace NSCam
