// Check of a reprocess configuration, line by line, with the library's own parser.
#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include "camtune/file_read_rule.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/reprocess_parser.h"
#include "lint/dumpin_lint.h"
#include "lint/dumpin_lint_messages.h"

namespace camtune {
namespace dumpin {
namespace {

using NSCam::TuningUtils::TUNING_CFG_T;

enum class Decimal { Invalid, Misread, Exact };

// How the library's decimal conversion reads `text`: it skips leading blanks and stops at the
// first character that is not a digit, so "12abc" silently reads as 12.
Decimal readDecimal(const std::string& text, int* value) {
    try {
        size_t used = 0;
        *value = std::stoi(text, &used);
        return used == text.size() ? Decimal::Exact : Decimal::Misread;
    } catch (const std::exception&) {
        return Decimal::Invalid;
    }
}

std::string trimmed(const std::string& text) {
    size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) return std::string();
    size_t end = text.find_last_not_of(" \t\r\n");
    return text.substr(begin, end - begin + 1);
}

class ReprocessLinter {
public:
    ReprocessLinter() : mParser(mFrames) {}

    void check(int number, const std::string& line) {
        mNumber = number;
        ReprocLineKind kind = classifyReprocLine(line, mParser.inBlock());
        switch (kind) {
            case ReprocLineKind::BlockOpen:
                checkMarker(line, kBlockOpen);
                break;
            case ReprocLineKind::BlockClose:
                checkMarker(line, kBlockClose);
                if (mParser.inBlock() && mParser.hasPendingEntries() && !mPendingReported) {
                    report(lint::kNoEndOfFrame);
                    mPendingReported = true;
                }
                break;
            case ReprocLineKind::Skipped:
                if (!lint::isBlank(line) && !contains(line, kCommentMark)) {
                    report(lint::kShortLine);
                }
                break;
            case ReprocLineKind::EndOfFrame:
                checkMarker(line, kEndOfFrame);
                if (!mParser.hasPendingEntries()) report(lint::kEmptyFrame);
                mFormats.clear();
                mPendingReported = false;
                mFirstPending = 0;
                break;
            case ReprocLineKind::Entry:
                if (!checkEntry(line)) return;
                if (mFirstPending == 0) mFirstPending = number;
                break;
            case ReprocLineKind::Value:
                if (!checkValue(line)) return;
                break;
            case ReprocLineKind::Ignored:
                if (!lint::isBlank(line)) report(lint::kOutsideBlock);
                break;
        }
        mParser.feed(line);
    }

    std::vector<LintFinding> finish() {
        if (mParser.hasPendingEntries() && !mPendingReported) {
            mFindings.push_back({mFirstPending, lint::kDroppedEntries});
        }
        return std::move(mFindings);
    }

private:
    void report(const std::string& message) { mFindings.push_back({mNumber, message}); }

    void checkMarker(const std::string& line, const char* marker) {
        if (trimmed(line) != marker) report(lint::format(lint::kMarkerWithText, marker));
    }

    // Reports a number field the library cannot read (`notANumber`, then false: the library
    // throws) or reads as less than it says (`misread`).
    bool checkDecimal(const std::string& text, const char* notANumber, const char* misread) {
        int number = 0;
        switch (readDecimal(text, &number)) {
            case Decimal::Invalid:
                report(lint::format(notANumber, text.c_str()));
                return false;
            case Decimal::Misread:
                report(lint::format(misread, text.c_str(), number));
                return true;
            case Decimal::Exact:
                return true;
        }
        return true;
    }

    // False when the library would throw on this line, which is then not applied.
    bool checkEntry(const std::string& line) {
        std::string missing = lint::checkEntrySeparators(line);
        if (!missing.empty()) report(missing);
        std::string rest = line;
        TUNING_CFG_T entry;
        NSCam::TuningUtils::Extract_Tuning_CFG(rest, entry);
        if (!checkDecimal(entry.str_reqNum, lint::kReprocRequestNaN, lint::kReprocRequestMisread)) {
            return false;
        }
        const std::string bare = trimmed(entry.str_format);
        if (bare != entry.str_format) {
            report(lint::format(lint::kFormatBlanks, entry.str_format.c_str(), bare.c_str()));
        }
        if (contains(entry.str_format, kNr3dWord)) {
            if (!checkDecimal(entry.str_file, lint::kNr3dNaN, lint::kNr3dMisread)) return false;
        } else if (!contains(entry.str_format, kFrameNoKeyword)) {
            std::string bad = lint::checkPath(entry.str_file);
            if (!bad.empty()) report(bad);
        }
        if (!contains(entry.str_format, kFrameNoKeyword) &&
            !mFormats.insert(entry.str_format).second) {
            report(lint::format(lint::kDuplicateFormat, entry.str_format.c_str()));
        }
        return true;
    }

    bool checkValue(const std::string& line) {
        std::string format;
        std::string value;
        splitValueLine(line, format, value);
        // Each value line replaces the one before it.
        const std::string word = contains(format, kUniqueKeyWord) ? kUniqueKeyWord : kRawStrideWord;
        auto [earlier, first] = mValueLines.emplace(word, mNumber);
        if (!first) {
            report(lint::format(lint::kValueReplaced, word.c_str(), earlier->second));
            earlier->second = mNumber;
        }
        if (contains(format, kUniqueKeyWord)) {
            if (value.empty()) {
                report(lint::kEmptyUniqueKey);
            } else if (!hasLeadingInt(value) || std::to_string(leadingInt(value)) != value) {
                report(lint::format(lint::kUniqueKeyNaN, value.c_str()));
            }
            return true;
        }
        if (!hasLeadingInt(value)) {
            report(lint::format(lint::kStrideNaN, value.c_str()));
        } else if (std::to_string(leadingInt(value)) != value) {
            report(lint::format(lint::kStrideMisread, value.c_str(), leadingInt(value)));
        }
        return true;
    }

    std::vector<NSCam::TuningUtils::TUNING_REPROCESS_CFG_T> mFrames;
    ReprocParser mParser;
    int mNumber = 0;
    int mFirstPending = 0;
    bool mPendingReported = false;
    std::set<std::string> mFormats;
    std::map<std::string, int> mValueLines;  // value word -> line that set it last
    std::vector<LintFinding> mFindings;
};

}  // namespace

std::vector<LintFinding> lintReprocessConfig(std::istream& in) {
    ReprocessLinter linter;
    int number = 0;
    scanLines(in, [&](std::string& line) {
        linter.check(++number, line);
        return false;
    });
    return linter.finish();
}

}  // namespace dumpin
}  // namespace camtune
