#include "naming/name_writer.h"

#include <cstdarg>
#include <cstdio>

namespace camtune {
namespace naming {

NameWriter::NameWriter(char* buf, int size)
    : mBuf(buf), mSize(buf != nullptr && size > 0 ? size : 0) {}

int NameWriter::append(const char* fmt, ...) {
    const int room = mSize - mLength;
    char* at = room > 0 ? mBuf + mLength : nullptr;
    va_list args;
    va_start(args, fmt);
    const int printed = std::vsnprintf(at, static_cast<size_t>(room), fmt, args);
    va_end(args);
    mLastFitted = printed >= 0 && printed < room;
    if (mLastFitted) mLength += printed;
    return printed;
}

}  // namespace naming
}  // namespace camtune
