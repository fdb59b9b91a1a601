#include "platform/property_parse.h"

namespace camtune {
namespace {

std::string trim(const std::string& text) {
    const char* kSpace = " \t\r\n";
    size_t first = text.find_first_not_of(kSpace);
    if (first == std::string::npos) return std::string();
    size_t last = text.find_last_not_of(kSpace);
    return text.substr(first, last - first + 1);
}

unsigned digitValue(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'z') return static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'Z') return static_cast<unsigned>(c - 'A' + 10);
    return 36;
}

}  // namespace

// Written out instead of calling strtoimax: this sits on the path of every disabled feature and
// the C library's locale-aware parser costs more than the rest of the property read.
bool tryParsePropertyInt32(const char* text, int32_t* value) {
    const char* p = text;
    while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
    bool negative = false;
    if (*p == '+' || *p == '-') negative = *p++ == '-';
    unsigned base = 10;
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X') && digitValue(p[2]) < 16) {
        base = 16;
        p += 2;
    } else if (p[0] == '0') {
        base = 8;
    }
    const uint64_t limit = negative ? uint64_t{1} << 31 : (uint64_t{1} << 31) - 1;
    uint64_t magnitude = 0;
    const char* digits = p;
    for (unsigned digit; (digit = digitValue(*p)) < base; ++p) {
        magnitude = magnitude * base + digit;
        if (magnitude > limit) return false;
    }
    if (p == digits) return false;
    *value = negative ? static_cast<int32_t>(-static_cast<int64_t>(magnitude))
                      : static_cast<int32_t>(magnitude);
    return true;
}

int32_t parsePropertyInt32(const char* text, int32_t defaultValue) {
    int32_t value = 0;
    return tryParsePropertyInt32(text, &value) ? value : defaultValue;
}

PropertyLine parsePropertyLine(const std::string& line, std::string* key, std::string* value) {
    std::string text = trim(line);
    if (text.empty() || text[0] == '#') return PropertyLine::Blank;
    if (text[0] == '[') {
        // getprop's "[key]: [value]"
        const size_t keyEnd = text.find("]: [");
        if (keyEnd == std::string::npos || text.back() != ']' || keyEnd < 2) {
            return PropertyLine::Malformed;
        }
        *key = text.substr(1, keyEnd - 1);
        *value = text.substr(keyEnd + 4, text.size() - keyEnd - 5);
        return PropertyLine::Entry;
    }
    size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) return PropertyLine::Malformed;
    *key = trim(text.substr(0, equals));
    *value = trim(text.substr(equals + 1));
    return key->empty() ? PropertyLine::Malformed : PropertyLine::Entry;
}

}  // namespace camtune
