// Captures every log line while alive, at every level, for assertions on exact messages.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "camtune/platform/log.h"

namespace camtune {
namespace test {

struct LogLine {
    log::Level level;
    std::string tag;
    std::string text;    // the message as formatted by the caller
    std::string suffix;  // " (file){#line:function}" on error lines, else empty
};

class LogCapture {
public:
    LogCapture();   // installs the sink and lowers the threshold to Verbose
    ~LogCapture();  // restores the previous threshold and the backend output
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<LogLine> lines() const;
    // Number of lines whose text is exactly `text` (at `level`, when given).
    int count(const std::string& text) const;
    int count(log::Level level, const std::string& text) const;
    bool contains(const std::string& text) const { return count(text) > 0; }
    // Number of lines whose text contains `part`.
    int countContaining(const std::string& part) const;
    void clear();

private:
    mutable std::mutex mLock;
    std::vector<LogLine> mLines;
    log::Level mPreviousThreshold;
};

}  // namespace test
}  // namespace camtune
