#include "support/log_capture.h"

#include <algorithm>

namespace camtune {
namespace test {

LogCapture::LogCapture() : mPreviousThreshold(log::threshold()) {
    log::setSink([this](log::Level level, const char* tag, const char* text, const char* suffix) {
        std::lock_guard<std::mutex> guard(mLock);
        mLines.push_back({level, tag, text, suffix});
    });
    log::setThreshold(log::Level::Verbose);
}

LogCapture::~LogCapture() {
    log::setThreshold(mPreviousThreshold);
    log::setSink(nullptr);
}

std::vector<LogLine> LogCapture::lines() const {
    std::lock_guard<std::mutex> guard(mLock);
    return mLines;
}

int LogCapture::count(const std::string& text) const {
    std::lock_guard<std::mutex> guard(mLock);
    return static_cast<int>(std::count_if(mLines.begin(), mLines.end(),
                                          [&](const LogLine& l) { return l.text == text; }));
}

int LogCapture::count(log::Level level, const std::string& text) const {
    std::lock_guard<std::mutex> guard(mLock);
    return static_cast<int>(std::count_if(mLines.begin(), mLines.end(), [&](const LogLine& l) {
        return l.level == level && l.text == text;
    }));
}

int LogCapture::countContaining(const std::string& part) const {
    std::lock_guard<std::mutex> guard(mLock);
    return static_cast<int>(std::count_if(mLines.begin(), mLines.end(), [&](const LogLine& l) {
        return l.text.find(part) != std::string::npos;
    }));
}

void LogCapture::clear() {
    std::lock_guard<std::mutex> guard(mLock);
    mLines.clear();
}

}  // namespace test
}  // namespace camtune
