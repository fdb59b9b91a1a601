// The scenario recorder's log files, read back into requests: each headline
// "[UKey: u][ReqNum: r], ..." starts a request, and the record lines after it are its decision
// and execution records.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace camtune {
namespace cli {
namespace report {

struct RecordLine {
    enum class Type { Decision, Execution, Other };
    Type type = Type::Other;
    std::string sensor;  // "" when the record names none
    int64_t frame = -1;
    std::string module;
    std::string stage;    // executions only
    std::string outcome;  // the decision's or the result's name
    std::string text;     // the caller's text; the whole line for Other
};

struct LoggedRequest {
    int64_t uniqueKey = -1;
    int64_t request = -1;
    bool capture = false;
    std::string headline;  // as written, appended texts included
    std::string logFile;   // name of the file that holds the headline
    std::vector<RecordLine> records;
};

// Parses one line that is not a headline.
RecordLine parseRecordLine(const std::string& line);

// Reads the log `text` of the file named `logFile` and appends its requests to `requests`.
// In a file that starts with "-- CONTINUED --" (a series carried on in a new file), lines before
// its first headline continue the last request of `requests`; otherwise they make a request of
// unknown key.
void readRecorderLog(const std::string& text, const std::string& logFile, bool capture,
                     std::vector<LoggedRequest>* requests);

}  // namespace report
}  // namespace cli
}  // namespace camtune
