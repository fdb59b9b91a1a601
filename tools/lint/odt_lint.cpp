#include "lint/odt_lint.h"

#include <algorithm>
#include <exception>
#include <map>
#include <sstream>
#include <tuple>

#include "camtune/ndd_tables.h"
#include "camtune/platform/fs.h"
#include "odt/odt_line_format.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

constexpr size_t kDataFieldCount = 5;
constexpr const char* kTrailingTrim = " \t\r\n";

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

// Decimal digits only (a leading "-" when `allowSign`): the conversions would accept leading
// blanks, a "+" or trailing text and silently read something else.
bool isStrictDecimal(const std::string& text, bool allowSign) {
    size_t start = allowSign && !text.empty() && text[0] == '-' ? 1 : 0;
    if (start == text.size()) return false;
    return std::all_of(text.begin() + start, text.end(),
                       [](char c) { return c >= '0' && c <= '9'; });
}

bool isInt32(const std::string& text) {
    if (!isStrictDecimal(text, true)) return false;
    try {
        std::stoi(text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool isUint32(const std::string& text) {
    if (!isStrictDecimal(text, false)) return false;
    try {
        toUint32(text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    size_t start = 0;
    for (size_t at = text.find(separator); at != std::string::npos;
         at = text.find(separator, start)) {
        pieces.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    pieces.push_back(text.substr(start));
    return pieces;
}

class Linter {
public:
    explicit Linter(FileExists exists) : mExists(exists) {}

    std::vector<LintFinding> run(std::istream& in) {
        std::string line;
        for (mLine = 1; std::getline(in, line); ++mLine) {
            if (isBlankLine(line)) continue;
            if (isOrderLine(line)) {
                checkOrderLine(line);
            } else {
                checkDataLine(line);
            }
        }
        return std::move(mFindings);
    }

private:
    void report(const std::string& message) { mFindings.push_back({mLine, message}); }

    void checkOrderLine(const std::string& line) {
        std::istringstream in(line.substr(std::char_traits<char>::length(kOrderTag)));
        std::string piece;
        while (in >> piece) {
            if (!isUint32(piece)) {
                report("order id " + quoted(piece) + " is not an unsigned 32-bit decimal number");
            }
        }
    }

    void checkDataLine(const std::string& line) {
        // Scanned as the parser does: four fields ended by ",", the fifth by ";", then the file.
        std::vector<std::string> fields;
        size_t start = 0;
        while (fields.size() + 1 < kDataFieldCount) {
            size_t comma = line.find(',', start);
            if (comma == std::string::npos) {
                report("expected 5 fields module,frame,sensor,stage,feature before \";\", found " +
                       std::to_string(fields.size() + 1));
                return;
            }
            fields.push_back(line.substr(start, comma - start));
            start = comma + 1;
        }
        size_t end = line.find(';', start);
        if (end == std::string::npos) {
            report("no \";\" ends the fifth field: expected "
                   "module,frame,sensor,stage,feature;file");
            return;
        }
        fields.push_back(line.substr(start, end - start));

        const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
        const std::string& module = fields[0];
        const std::string& sensor = fields[2];
        std::string file = line.substr(end + 1);
        file.erase(file.find_last_not_of(kTrailingTrim) + 1);
        size_t before = mFindings.size();

        if (tables->findModule(module) < 0) {
            report("unknown module " + quoted(module) + ": no lookup will find this item");
        }
        if (!isUint32(fields[1])) {
            report("frame number " + quoted(fields[1]) + " is not an unsigned decimal number");
        }
        if (tables->findSensorId(sensor) < 0) {
            report("unknown sensor " + quoted(sensor) + ": every sensor drops this line");
        }
        checkIndex("stage", fields[3], stageName, streamingStageFallback());
        checkIndex("feature", fields[4], featureName, kFeatureFallback);
        checkFile(file);
        checkParsedLine(line, mFindings.size() != before);
    }

    void checkIndex(const char* what, const std::string& text, const char* (*name)(int),
                    const char* fallback) {
        if (!isInt32(text)) {
            report(std::string(what) + " " + quoted(text) + " is not a decimal number");
        } else if (name(std::stoi(text)) == nullptr) {
            report(std::string(what) + " " + text + " has no name: the item is keyed under " +
                   quoted(fallback));
        }
    }

    void checkFile(const std::string& file) {
        if (file.empty()) {
            report("no file after \";\"");
            return;
        }
        size_t slash = file.rfind('/');
        std::string name = slash == std::string::npos ? file : file.substr(slash + 1);
        std::vector<std::string> pieces = split(name, '-');
        bool keyed =
                pieces.size() >= 3 && std::all_of(pieces.begin(), pieces.begin() + 3,
                                                  [](const std::string& p) { return isInt32(p); });
        if (!keyed) {
            report("file name " + quoted(name) +
                   " does not begin with a dump key (unique key-request-frame)");
        }
        if (!mExists(file)) report("file " + quoted(file) + " does not exist: nothing to replay");
    }

    // The parser must take the line (anything it refuses has been reported above already), and
    // the line must not silently replace an earlier item.
    void checkParsedLine(const std::string& line, bool reported) {
        DataLine data;
        try {
            data = parseDataLine(line);
        } catch (const std::exception& e) {
            if (!reported) report(std::string("rejected: ") + e.what());
            return;
        }
        ItemId id{data.sensor, data.uniqueKey, data.requestNo, data.keyFrameNo,
                  itemKey(data.module, data.stage, data.feature, streamingStageFallback())};
        auto [at, added] = mItems.emplace(id, mLine);
        if (!added) {
            report("replaces the item of line " + std::to_string(at->second) +
                   " (same frame, module, stage and feature)");
            at->second = mLine;
        }
    }

    using ItemId = std::tuple<std::string, int32_t, int32_t, int32_t, std::string>;

    FileExists mExists;
    int mLine = 0;
    std::vector<LintFinding> mFindings;
    std::map<ItemId, int> mItems;  // item -> line that set it last
};

}  // namespace

bool regularFileExists(const std::string& path) {
    camtune::fs::FileInfo info;
    return camtune::fs::stat(path.c_str(), &info) == 0 && info.isRegular();
}

std::vector<LintFinding> lintReplayConfig(std::istream& in, FileExists exists) {
    return Linter(exists).run(in);
}

}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
