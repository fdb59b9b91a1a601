// Property text: the line and integer rules on the input, and the host seed-file loader on the
// input written to a file. The integer rule is checked against the C library's strtoll, which
// is how Android reads an integer property.
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz_support.h"
#include "platform/host/property_file.h"
#include "platform/host/root.h"
#include "platform/property_parse.h"

namespace {

constexpr char kSeedFile[] = "/props.txt";

int32_t referenceInt32(const char* text, int32_t defaultValue) {
    errno = 0;
    char* end = nullptr;
    long long value = std::strtoll(text, &end, 0);
    if (end == text || errno == ERANGE || value < INT32_MIN || value > INT32_MAX) {
        return defaultValue;
    }
    return static_cast<int32_t>(value);
}

void checkInt32(const std::string& text) {
    for (int32_t defaultValue : {0, -7}) {
        camtune::fuzz::check(camtune::parsePropertyInt32(text.c_str(), defaultValue) ==
                                     referenceInt32(text.c_str(), defaultValue),
                             "parsePropertyInt32 differs from strtoll");
    }
}

// The blanks parsePropertyLine trims.
bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isTrimmed(const std::string& text) {
    return text.empty() || (!isBlank(text.front()) && !isBlank(text.back()));
}

std::string trimmed(const std::string& text) {
    size_t first = 0;
    size_t last = text.size();
    while (first < last && isBlank(text[first])) ++first;
    while (last > first && isBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

void checkLine(const std::string& line) {
    std::string key;
    std::string value;
    if (camtune::parsePropertyLine(line, &key, &value) != camtune::PropertyLine::Entry) return;
    camtune::fuzz::check(!key.empty(), "entry key empty");
    const std::string text = trimmed(line);
    if (text[0] == '[') {
        // What getprop prints is taken as it stands between the brackets.
        camtune::fuzz::check(text == "[" + key + "]: [" + value + "]",
                             "getprop entry not read between its brackets");
    } else {
        camtune::fuzz::check(key.find('=') == std::string::npos, "entry key holding '='");
        camtune::fuzz::check(isTrimmed(key) && isTrimmed(value), "entry not trimmed");
    }
    checkInt32(value);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    camtune::fuzz::setUpRoot();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    checkInt32(text);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        checkLine(text.substr(start, end - start));
        start = end + 1;
    }

    camtune::fuzz::writeDeviceFile(kSeedFile, data, size);
    camtune::fuzz::check(
            camtune::host::loadPropertyFile(camtune::host::hostPath(kSeedFile).c_str()),
            "loadPropertyFile failed on a readable file");
    return 0;
}
