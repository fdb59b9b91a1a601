// Splitting and comparing the text of dump-in list and reprocess lines.
#pragma once

#include <string>

#include "camtune/file_read_rule.h"

namespace camtune {
namespace dumpin {

// The text before the first `separator` of `rest`; `rest` becomes the text after it. Without
// the separator the field is all of `rest` and `rest` stays as it was.
std::string takeField(std::string& rest, char separator);

// Cuts `text` at the first character of `ends`, if any.
void cutAtAny(std::string& text, const char* ends);

bool contains(const std::string& text, const char* word);

// Reduces an image entry's remainder to its path: drops everything up to the first ";" and
// cuts at the first line end or blank.
void removeRedundancy(std::string& text);

// True when an entry of this profile text is chosen per request.
bool isRequestSensitive(const std::string& ispProfile);

// "%04d" of `reqNum` in a fixed 50-byte buffer; false (and `out` left empty) when it would not
// fit.
bool formatRequestText(int reqNum, std::string& out);

// Decimal value at the start of `text` as atoi reads it (leading blanks, optional sign), 0 when
// there is none; values past the int range saturate instead of being undefined.
int leadingInt(const std::string& text);

// True when `text` starts with what leadingInt reads as a number.
bool hasLeadingInt(const std::string& text);

// A warping-raw line: "format,reqNum,usage,ispProfile;path".
struct WarpingEntry {
    std::string format;
    std::string reqNum;
    std::string usage;
    std::string ispProfile;
    std::string file;
};
WarpingEntry parseWarpingEntry(std::string line);

// "%s" of `text` with a null pointer shown as "(null)", as the device's printf does.
inline const char* printable(const char* text) {
    return text != nullptr ? text : "(null)";
}

}  // namespace dumpin
}  // namespace camtune
