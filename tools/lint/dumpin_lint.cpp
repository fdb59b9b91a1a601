// Check of a dump-in list, line by line, with the library's own parsing.
#include "lint/dumpin_lint.h"

#include <cstdarg>
#include <cstdio>
#include <map>
#include <string>

#include "camtune/file_read_rule.h"
#include "camtune/platform/fs.h"
#include "dumpin/line_scanner.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "lint/dumpin_lint_messages.h"

namespace camtune {
namespace dumpin {
namespace lint {

std::string format(const char* fmt, ...) {
    char text[512];
    va_list args;
    va_start(args, fmt);
    std::vsnprintf(text, sizeof(text), fmt, args);
    va_end(args);
    return text;
}

bool isRequestText(const std::string& text) {
    if (!hasLeadingInt(text)) return false;
    std::string canonical;
    return formatRequestText(leadingInt(text), canonical) && canonical == text;
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::string checkPath(const std::string& path) {
    if (path.empty()) return kEmptyPath;
    if (contains(path, kDefaultPath)) return format(kDefaultInPath, path.c_str());
    fs::FileInfo info;
    if (fs::stat(path.c_str(), &info) != 0) return format(kNoSuchFile, path.c_str());
    return std::string();
}

std::string checkEntrySeparators(const std::string& line) {
    size_t first = line.find(kFieldSeparator);
    if (first == std::string::npos) return format(kMissingComma, kFormatField);
    size_t second = line.find(kFieldSeparator, first + 1);
    if (second == std::string::npos) return format(kMissingComma, kRequestField);
    if (line.find(kPathSeparator, second + 1) == std::string::npos) return kMissingSemicolon;
    return std::string();
}

}  // namespace lint

namespace {

using NSCam::TuningUtils::TUNING_CFG_T;

enum class EntryForm { Tuning, FrameNo, Image, Yuv, Warping };

struct Keyword {
    const char* word;
    EntryForm form;
};

// Image and special keywords; the tuning keywords come from the tuning format table.
constexpr Keyword kKeywords[] = {
        {kRawKeyword, EntryForm::Image},
        {kLcsoKeyword, EntryForm::Image},
        {kRrzoKeyword, EntryForm::Image},
        {kYuvKeyword, EntryForm::Yuv},
        {kWarpingKeyword, EntryForm::Warping},
        {kFrameNoKeyword, EntryForm::FrameNo},
        {NSCam::TuningUtils::kLpcnrTuningKeyword, EntryForm::Tuning},
};

constexpr const char* kValueWords[] = {kUniqueKeyWord, kRequestNoWord, kRawStrideWord};

bool findForm(const std::string& keyword, EntryForm* form) {
    for (const TuningFormatInfo& info : kTuningFormats) {
        if (keyword == info.keyword) {
            *form = EntryForm::Tuning;
            return true;
        }
    }
    for (const Keyword& known : kKeywords) {
        if (keyword == known.word) {
            *form = known.form;
            return true;
        }
    }
    return false;
}

class DumpinLinter {
public:
    void check(int number, const std::string& line) {
        mNumber = number;
        if (lint::isBlank(line)) return;
        EntryForm form = EntryForm::Tuning;
        size_t comma = line.find(kFieldSeparator);
        bool known = comma != std::string::npos && findForm(line.substr(0, comma), &form);
        if (checkValueWords(line, known) && !known) return;
        if (comma == std::string::npos)
            return report(lint::format(lint::kMissingComma, lint::kFormatField));
        if (!known) {
            return report(lint::format(lint::kUnknownKeyword, line.substr(0, comma).c_str()));
        }
        switch (form) {
            case EntryForm::Tuning:
            case EntryForm::FrameNo:
                return checkTuningEntry(line, form);
            case EntryForm::Image:
                return checkImageEntry(line, comma);
            case EntryForm::Yuv:
                return checkYuvEntry(line);
            case EntryForm::Warping:
                return checkWarpingEntry(line);
        }
    }

    std::vector<LintFinding> takeFindings() { return std::move(mFindings); }

private:
    void report(const std::string& message) { mFindings.push_back({mNumber, message}); }

    // Value lines: the first line containing the word anywhere is the one read. True when the
    // line holds a value word.
    bool checkValueWords(const std::string& line, bool isEntry) {
        bool any = false;
        for (const char* word : kValueWords) {
            if (!contains(line, word)) continue;
            any = true;
            auto first = mValueLines.find(word);
            if (first != mValueLines.end()) {
                report(lint::format(lint::kValueShadowed, word, first->second));
                continue;
            }
            mValueLines.emplace(word, mNumber);
            if (isEntry) {
                report(lint::format(lint::kEntryHasValueWord, word));
            } else if (line.find(kPathSeparator) == std::string::npos) {
                report(lint::format(lint::kValueNoSemicolon, word));
            } else {
                std::string value = line;
                removeRedundancy(value);
                if (!hasLeadingInt(value)) {
                    report(lint::format(lint::kValueNotNumber, word, value.c_str()));
                } else if (std::to_string(leadingInt(value)) != value) {
                    // Trailing text, a sign, leading blanks or an overflow: read otherwise.
                    report(lint::format(lint::kValueMisread, word, value.c_str(),
                                        leadingInt(value)));
                }
            }
        }
        return any;
    }

    void checkTuningEntry(const std::string& line, EntryForm form) {
        std::string missing = lint::checkEntrySeparators(line);
        if (!missing.empty()) return report(missing);
        std::string rest = line;
        TUNING_CFG_T entry;
        NSCam::TuningUtils::Extract_Tuning_CFG(rest, entry);
        if (!lint::isRequestText(entry.str_reqNum)) {
            report(lint::format(lint::kBadRequest, entry.str_reqNum.c_str()));
        }
        if (form == EntryForm::FrameNo) {
            if (!hasLeadingInt(entry.str_file)) {
                report(lint::format(lint::kBadFrameNo, entry.str_file.c_str()));
            }
        } else {
            std::string bad = lint::checkPath(entry.str_file);
            if (!bad.empty()) report(bad);
        }
        checkShadowed(entry, form);
    }

    // A later entry the search can never reach: same format and profile, and the same request
    // where the profile makes the search compare it.
    void checkShadowed(const TUNING_CFG_T& entry, EntryForm form) {
        // Extract_File's searches know four request-sensitive words; LPCNR and frame numbers
        // only "MFNR".
        bool extractFileSearch = form == EntryForm::Tuning &&
                                 entry.str_format != NSCam::TuningUtils::kLpcnrTuningKeyword;
        bool perRequest = extractFileSearch ? isRequestSensitive(entry.str_ispProfile)
                                            : contains(entry.str_ispProfile, kMfnrWord);
        std::string key = entry.str_format + '\n';
        if (form != EntryForm::FrameNo) key += entry.str_ispProfile;
        if (perRequest) key += '\n' + entry.str_reqNum;
        auto first = mEntries.emplace(key, mNumber);
        if (!first.second) report(lint::format(lint::kEntryShadowed, first.first->second));
    }

    void checkImageEntry(const std::string& line, size_t comma) {
        std::string rest = line.substr(comma + 1);
        size_t next = rest.find(kFieldSeparator);
        if (next == std::string::npos) {
            return report(lint::format(lint::kMissingComma, lint::kRequestField));
        }
        std::string request = rest.substr(0, next);
        if (!lint::isRequestText(request)) {
            report(lint::format(lint::kBadRequest, request.c_str()));
        }
        if (rest.find(kPathSeparator) == std::string::npos) return report(lint::kMissingSemicolon);
        removeRedundancy(rest);
        std::string bad = lint::checkPath(rest);
        if (!bad.empty()) report(bad);
    }

    // The YUV path receives the buffer, so it need not exist yet.
    void checkYuvEntry(const std::string& line) {
        if (line.find(kPathSeparator) == std::string::npos) return report(lint::kMissingSemicolon);
        std::string path = line;
        removeRedundancy(path);
        if (path.empty()) report(lint::kEmptyPath);
    }

    void checkWarpingEntry(const std::string& line) {
        const char* fields[] = {lint::kFormatField, lint::kRequestField, lint::kUsageField};
        size_t at = 0;
        for (const char* field : fields) {
            at = line.find(kFieldSeparator, at);
            if (at == std::string::npos) return report(lint::format(lint::kMissingComma, field));
            ++at;
        }
        if (line.find(kPathSeparator, at) == std::string::npos) {
            return report(lint::kMissingSemicolon);
        }
        WarpingEntry entry = parseWarpingEntry(line);
        std::string bad = lint::checkPath(entry.file);
        if (!bad.empty()) report(bad);
    }

    int mNumber = 0;
    std::vector<LintFinding> mFindings;
    std::map<std::string, int> mValueLines;
    std::map<std::string, int> mEntries;
};

}  // namespace

std::vector<LintFinding> lintDumpinList(std::istream& in) {
    DumpinLinter linter;
    int number = 0;
    scanLines(in, [&](std::string& line) {
        linter.check(++number, line);
        return false;
    });
    return linter.takeFindings();
}

}  // namespace dumpin
}  // namespace camtune
