// The element-append rule shared by every dump-file name.
#pragma once

namespace camtune {
namespace naming {

// Appends the elements of a name into a caller's buffer with bounded printing. An element that
// does not fit is cut by the print (the buffer stays terminated) and the position does not move,
// so the next element starts where the cut one started.
class NameWriter {
public:
    // A null buffer or a negative size is treated as no room at all.
    NameWriter(char* buf, int size);

    // Prints one element at the current position and returns the print's result; the position
    // moves on only when the result is 0 or more and smaller than the room left.
    int append(const char* fmt, ...) __attribute__((format(printf, 2, 3)));

    bool lastFitted() const { return mLastFitted; }
    // Characters written so far.
    int length() const { return mLength; }

private:
    char* mBuf;
    int mSize;
    int mLength = 0;
    bool mLastFitted = true;
};

}  // namespace naming
}  // namespace camtune
