#include "dumpin/list_text.h"

#include <cctype>
#include <climits>
#include <cstdio>
#include <cstring>

#include "dumpin/list_vocabulary.h"

namespace camtune {
namespace dumpin {

std::string takeField(std::string& rest, char separator) {
    size_t at = rest.find(separator);
    if (at == std::string::npos) return rest;
    std::string field = rest.substr(0, at);
    rest.erase(0, at + 1);
    return field;
}

void cutAtAny(std::string& text, const char* ends) {
    size_t at = text.find_first_of(ends);
    if (at != std::string::npos) text.erase(at);
}

bool contains(const std::string& text, const char* word) {
    return text.find(word) != std::string::npos;
}

void removeRedundancy(std::string& text) {
    size_t at = text.find(kPathSeparator);
    if (at != std::string::npos) text.erase(0, at + 1);
    cutAtAny(text, kPathEnds);
}

bool isRequestSensitive(const std::string& ispProfile) {
    for (const char* word : kRequestSensitiveWords) {
        if (contains(ispProfile, word)) return true;
    }
    return false;
}

bool formatRequestText(int reqNum, std::string& out) {
    char text[kRequestTextSize];
    int length = std::snprintf(text, sizeof(text), "%04d", reqNum);
    if (length < 0 || length >= kRequestTextSize) {
        out.clear();
        return false;
    }
    out.assign(text, static_cast<size_t>(length));
    return true;
}

namespace {

// Position of the first digit and the sign of the number at the start of `text`, as atoi
// skips blanks and takes one sign.
size_t numberStart(const std::string& text, bool* negative) {
    size_t at = 0;
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) ++at;
    *negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        *negative = text[at] == '-';
        ++at;
    }
    return at;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

int leadingInt(const std::string& text) {
    bool negative = false;
    size_t at = numberStart(text, &negative);
    long long value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        value = value * 10 + (text[at] - '0');
        if (value > static_cast<long long>(INT_MAX) + 1) break;
    }
    if (negative) value = -value;
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int>(value);
}

bool hasLeadingInt(const std::string& text) {
    bool negative = false;
    size_t at = numberStart(text, &negative);
    return at < text.size() && isDigit(text[at]);
}

WarpingEntry parseWarpingEntry(std::string line) {
    WarpingEntry entry;
    entry.format = takeField(line, kFieldSeparator);
    entry.reqNum = takeField(line, kFieldSeparator);
    entry.usage = takeField(line, kFieldSeparator);
    entry.ispProfile = takeField(line, kPathSeparator);
    cutAtAny(line, kLineEnds);
    entry.file = line;
    return entry;
}

const TuningFormatInfo* findTuningFormat(NSCam::TuningUtils::ETuningFormat_T format) {
    for (const TuningFormatInfo& info : kTuningFormats) {
        if (info.format == format) return &info;
    }
    return nullptr;
}

}  // namespace dumpin
}  // namespace camtune
