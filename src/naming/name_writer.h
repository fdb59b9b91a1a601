// The element-append rule shared by every dump-file name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace camtune {
namespace naming {

// A decimal number piece of an element, printed as "%0<width>d" is (the sign counts towards the
// width); a width of 0 prints it as "%d".
struct Decimal {
    int32_t value;
    int width = 0;
};

// A piece of text of a known length with no terminator in it, printed as "%.*s" is.
struct Span {
    const char* text;
    size_t length;
};

// Appends the elements of a name into a caller's buffer with bounded printing. An element that
// does not fit is cut (the buffer stays terminated) and the position does not move, so the next
// element starts where the cut one started.
//
// Elements are put together from their pieces directly, not through a printf format: a name is on
// the path of every dump, and parsing formats cost more than the rest of the name.
class NameWriter {
public:
    // A null buffer or a negative size is treated as no room at all.
    NameWriter(char* buf, int size);

    // Prints one element made of `pieces` (texts, Decimal and Span pieces) at the current position,
    // as snprintf prints it into the room left, and returns its full length; the position moves on
    // only when that is smaller than the room left.
    template <typename... Pieces>
    int append(const Pieces&... pieces) {
        const int room = mSize - mLength;
        Element element(room > 0 ? mBuf + mLength : nullptr, room > 0 ? room : 0);
        (element.put(pieces), ...);
        return finish(element.finish(), room);
    }

    bool lastFitted() const { return mLastFitted; }
    // Characters written so far.
    int length() const { return mLength; }

private:
    // The bounded print of one element: writes what fits before the terminator, counts it all.
    class Element {
    public:
        Element(char* at, int room)
            : mAt(at), mCapacity(room > 0 ? static_cast<size_t>(room) - 1 : 0) {}
        void put(const char* text) {
            if (text == nullptr) text = "(null)";  // as glibc's printf prints it
            put(Span{text, std::strlen(text)});
        }
        void put(Span span) {
            if (mCount < mCapacity) {
                const size_t room = mCapacity - mCount;
                std::memcpy(mAt + mCount, span.text, span.length < room ? span.length : room);
            }
            mCount += span.length;
        }
        void put(Decimal number);
        // Terminates the element and returns its full length.
        size_t finish() {
            if (mAt != nullptr) mAt[mCount < mCapacity ? mCount : mCapacity] = '\0';
            return mCount;
        }

    private:
        char* mAt;
        size_t mCapacity;  // characters that fit before the terminator
        size_t mCount = 0;
    };

    int finish(size_t printed, int room);

    char* mBuf;
    int mSize;
    int mLength = 0;
    bool mLastFitted = true;
};

}  // namespace naming
}  // namespace camtune
