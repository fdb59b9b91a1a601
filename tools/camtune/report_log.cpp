#include "report_log.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <utility>

namespace camtune {
namespace cli {
namespace report {
namespace {

constexpr char kContinued[] = "-- CONTINUED --";

// Reads "<prefix><number>]" at `at`, leaving `at` past the bracket.
bool readNumber(const std::string& line, const char* prefix, size_t* at, int64_t* value) {
    const size_t length = std::strlen(prefix);
    if (line.compare(*at, length, prefix) != 0) return false;
    const char* start = line.c_str() + *at + length;
    char* end = nullptr;
    errno = 0;
    const long long number = std::strtoll(start, &end, 10);
    if (end == start || *end != ']' || errno != 0) return false;
    *value = number;
    *at = static_cast<size_t>(end - line.c_str()) + 1;
    return true;
}

bool parseHeadline(const std::string& line, int64_t* uniqueKey, int64_t* request) {
    size_t at = 0;
    int64_t key = 0, number = 0;
    // The recorder appends ", <text>" for every execution that asked for it, and nothing else.
    if (!readNumber(line, "[UKey: ", &at, &key) || !readNumber(line, "[ReqNum: ", &at, &number) ||
        (at != line.size() && line.compare(at, 2, ", ") != 0)) {
        return false;
    }
    *uniqueKey = key;
    *request = number;
    return true;
}

// Reads the "[Key: value]" and "[Stage]" groups at the start of a record line.
bool readGroups(const std::string& line, RecordLine* record, size_t* textStart) {
    size_t at = 0;
    while (at < line.size() && line[at] == '[') {
        const size_t close = line.find(']', at);
        if (close == std::string::npos) return false;
        const std::string group = line.substr(at + 1, close - at - 1);
        const size_t colon = group.find(": ");
        const std::string key = colon == std::string::npos ? "" : group.substr(0, colon);
        const std::string value = colon == std::string::npos ? group : group.substr(colon + 2);
        if (key == "SensorDevName") {
            record->sensor = value;
        } else if (key == "FrameNum") {
            record->frame = std::strtoll(value.c_str(), nullptr, 10);
        } else if (key == "ModuleName") {
            record->module = value;
        } else if (key == "Decision") {
            record->type = RecordLine::Type::Decision;
            record->outcome = value;
        } else if (key == "Result") {
            record->type = RecordLine::Type::Execution;
            record->outcome = value;
        } else if (key.empty()) {
            record->stage = value;
        } else {
            return false;
        }
        at = close + 1;
    }
    *textStart = at < line.size() && line[at] == ' ' ? at + 1 : at;
    return true;
}

}  // namespace

RecordLine parseRecordLine(const std::string& line) {
    RecordLine record;
    size_t textStart = 0;
    if (!readGroups(line, &record, &textStart) || record.type == RecordLine::Type::Other) {
        RecordLine other;
        other.text = line;
        return other;
    }
    record.text = line.substr(textStart);
    return record;
}

void readRecorderLog(const std::string& text, const std::string& logFile, bool capture,
                     std::vector<LoggedRequest>* requests) {
    std::istringstream in(text);
    // Whether lines go to requests->back(): in a file, after a headline; before one, only in a
    // file that continues the previous one.
    bool attached = false;
    bool first = true;
    for (std::string line; std::getline(in, line);) {
        // A NUL (space the recorder never wrote) ends the line's text.
        const size_t nul = line.find('\0');
        if (nul != std::string::npos) line.resize(nul);
        if (line.empty()) continue;
        if (std::exchange(first, false) && line == kContinued) {
            attached = !requests->empty();
            continue;
        }
        LoggedRequest next;
        next.capture = capture;
        next.logFile = logFile;
        if (parseHeadline(line, &next.uniqueKey, &next.request)) {
            next.headline = line;
            requests->push_back(std::move(next));
            attached = true;
            continue;
        }
        if (!attached) {
            next.headline = "(lines before the first headline)";
            requests->push_back(std::move(next));
            attached = true;
        }
        requests->back().records.push_back(parseRecordLine(line));
    }
}

}  // namespace report
}  // namespace cli
}  // namespace camtune
