// A record line built piece by piece in a fixed buffer, cut at the longest line a record holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "recorder/recorder_constants.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

class RecordLine {
public:
    RecordLine() { mText[0] = '\0'; }
    RecordLine(const RecordLine&) = delete;
    RecordLine& operator=(const RecordLine&) = delete;

    RecordLine& append(const char* text) {
        return text != nullptr ? append(text, std::strlen(text)) : *this;
    }
    RecordLine& append(const char* text, size_t length) {
        const size_t room = kMaxLength - mLength;
        if (length > room) length = room;
        std::memcpy(mText + mLength, text, length);
        mLength += length;
        mText[mLength] = '\0';
        return *this;
    }
    RecordLine& append(int32_t value) {
        char digits[12];
        char* end = digits + sizeof(digits);
        char* p = end;
        uint32_t magnitude = value < 0 ? 0u - static_cast<uint32_t>(value) : value;
        do {
            *--p = static_cast<char>('0' + magnitude % 10);
            magnitude /= 10;
        } while (magnitude != 0);
        if (value < 0) *--p = '-';
        return append(p, static_cast<size_t>(end - p));
    }

    const char* text() const { return mText; }
    size_t length() const { return mLength; }

private:
    // A record's text holds at most this many characters before its terminator.
    static constexpr size_t kMaxLength = kMaxRecordText - 1;
    char mText[kMaxRecordText];
    size_t mLength = 0;
};

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
