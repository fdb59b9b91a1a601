// Text rules of properties shared by every backend and the host seed file.
#pragma once

#include <cstdint>
#include <string>

namespace camtune {

// Integer value of a property's text, as Android reads it: base inferred ("0x" hex, leading
// "0" octal, else decimal), optional sign and leading spaces, trailing text ignored. No digits,
// or a value outside int32, gives `defaultValue`.
int32_t parsePropertyInt32(const char* text, int32_t defaultValue);
// The same rules: true and the value in `*value` when the text holds one, else false.
bool tryParsePropertyInt32(const char* text, int32_t* value);

enum class PropertyLine { Blank, Entry, Malformed };

// One line of a property seed file: "key=value", "[key]: [value]" (what `adb shell getprop`
// prints), blank, or a "#" comment.
PropertyLine parsePropertyLine(const std::string& line, std::string* key, std::string* value);

}  // namespace camtune
