#include "naming/name_writer.h"

#include <climits>

namespace camtune {
namespace naming {

NameWriter::NameWriter(char* buf, int size)
    : mBuf(buf), mSize(buf != nullptr && size > 0 ? size : 0) {}

void NameWriter::Element::put(Decimal number) {
    char text[16];
    char* const end = text + sizeof(text);
    char* p = end;
    const bool negative = number.value < 0;
    uint32_t magnitude = negative ? 0u - static_cast<uint32_t>(number.value)
                                  : static_cast<uint32_t>(number.value);
    do {
        *--p = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    // Zeros go between the sign and the digits; the sign counts towards the width.
    const int width = number.width < 12 ? number.width : 12;
    while (static_cast<int>(end - p) + (negative ? 1 : 0) < width) *--p = '0';
    if (negative) *--p = '-';
    put(Span{p, static_cast<size_t>(end - p)});
}

int NameWriter::finish(size_t printed, int room) {
    const int length = printed < static_cast<size_t>(INT_MAX) ? static_cast<int>(printed) : -1;
    mLastFitted = length >= 0 && length < room;
    if (mLastFitted) mLength += length;
    return length;
}

}  // namespace naming
}  // namespace camtune
