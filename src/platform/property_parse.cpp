#include "platform/property_parse.h"

#include <cerrno>
#include <cinttypes>
#include <cstdlib>

namespace camtune {
namespace {

std::string trim(const std::string& text) {
    const char* kSpace = " \t\r\n";
    size_t first = text.find_first_not_of(kSpace);
    if (first == std::string::npos) return std::string();
    size_t last = text.find_last_not_of(kSpace);
    return text.substr(first, last - first + 1);
}

}  // namespace

int32_t parsePropertyInt32(const char* text, int32_t defaultValue) {
    int savedErrno = errno;
    errno = 0;
    char* end = nullptr;
    intmax_t value = std::strtoimax(text, &end, 0);
    bool failed = end == text || errno == ERANGE || value < INT32_MIN || value > INT32_MAX;
    errno = savedErrno;
    return failed ? defaultValue : static_cast<int32_t>(value);
}

PropertyLine parsePropertyLine(const std::string& line, std::string* key, std::string* value) {
    std::string text = trim(line);
    if (text.empty() || text[0] == '#') return PropertyLine::Blank;
    size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) return PropertyLine::Malformed;
    *key = trim(text.substr(0, equals));
    *value = trim(text.substr(equals + 1));
    return key->empty() ? PropertyLine::Malformed : PropertyLine::Entry;
}

}  // namespace camtune
