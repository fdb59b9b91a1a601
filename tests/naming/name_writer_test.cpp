// Names are put together without printf; each element must still come out as the bounded print of
// its format would leave it, in every size of buffer.
#include "naming/name_writer.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

namespace camtune {
namespace naming {
namespace {

struct Case {
    const char* format;  // what the element means, as printf would print it
    std::function<int(NameWriter&)> append;
    std::function<int(char*, size_t)> print;  // snprintf of the format
};

#define PRINTS(...) [](char* at, size_t room) { return std::snprintf(at, room, __VA_ARGS__); }

const char kNoText[] = "-\0hidden";

const Case kCases[] = {
        {"%d of 0", [](NameWriter& w) { return w.append(Decimal{0}); }, PRINTS("%d", 0)},
        {"%04d",
         [](NameWriter& w) {
             return w.append("-", Decimal{34, 4});
         },
         PRINTS("-%04d", 34)},
        {"%04d negative",
         [](NameWriter& w) {
             return w.append(Decimal{-5, 4});
         },
         PRINTS("%04d", -5)},
        {"%04d wider",
         [](NameWriter& w) {
             return w.append(Decimal{123456, 4});
         },
         PRINTS("%04d", 123456)},
        {"%09d",
         [](NameWriter& w) {
             return w.append("/", Decimal{5012345, 9});
         },
         PRINTS("/%09d", 5012345)},
        {"%09d of INT_MIN",
         [](NameWriter& w) {
             return w.append(Decimal{INT_MIN, 9});
         },
         PRINTS("%09d", INT_MIN)},
        {"%d of INT_MAX", [](NameWriter& w) { return w.append(Decimal{INT_MAX}); },
         PRINTS("%d", INT_MAX)},
        {"%01dEV",
         [](NameWriter& w) {
             return w.append("_", Decimal{-2, 1}, "EV");
         },
         PRINTS("_%01dEV", -2)},
        {"geometry",
         [](NameWriter& w) {
             return w.append("-PW", Decimal{4000}, "-PH", Decimal{-3000}, "-BW", Decimal{5000});
         },
         PRINTS("-PW%d-PH%d-BW%d", 4000, -3000, 5000)},
        {"%.*s",
         [](NameWriter& w) {
             return w.append("-", Span{"userstring", 4});
         },
         PRINTS("-%.*s", 4, "userstring")},
        {"%s", [](NameWriter& w) { return w.append(".", "packed_word"); },
         PRINTS(".%s", "packed_word")},
        {"empty", [](NameWriter& w) { return w.append(kNoText + 1); }, PRINTS("%s", "")},
};

#undef PRINTS

// The rule elements follow, written with snprintf: cut when it does not fit, position kept.
struct Reference {
    char* buf;
    int size;
    int length = 0;
    bool fitted = true;

    int append(const std::function<int(char*, size_t)>& print) {
        const int room = size - length;
        const int printed =
                room > 0 ? print(buf + length, static_cast<size_t>(room)) : print(nullptr, 0);
        fitted = printed >= 0 && printed < room;
        if (fitted) length += printed;
        return printed;
    }
};

TEST(NameWriter, ElementsComeOutAsTheirBoundedPrintInEverySize) {
    for (const Case& c : kCases) {
        for (int size = 0; size <= 40; ++size) {
            SCOPED_TRACE(std::string(c.format) + " in " + std::to_string(size) + " bytes");
            // A first element, then the one under test, then one more that may land on it.
            char fast[48];
            char expected[48];
            std::memset(fast, '#', sizeof(fast));
            std::memset(expected, '#', sizeof(expected));

            NameWriter writer(fast, size);
            writer.append("/data", Decimal{7, 3});
            const int result = c.append(writer);
            const bool fitted = writer.lastFitted();
            writer.append("+", Decimal{1});

            Reference reference{expected, size};
            reference.append(
                    [](char* at, size_t room) { return std::snprintf(at, room, "/data%03d", 7); });
            EXPECT_EQ(result, reference.append(c.print));
            EXPECT_EQ(fitted, reference.fitted);
            reference.append(
                    [](char* at, size_t room) { return std::snprintf(at, room, "+%d", 1); });

            EXPECT_EQ(writer.length(), reference.length);
            EXPECT_EQ(std::string(fast, sizeof(fast)), std::string(expected, sizeof(expected)));
        }
    }
}

TEST(NameWriter, NoBufferIsNoRoom) {
    NameWriter writer(nullptr, 64);
    EXPECT_EQ(writer.append("abc", Decimal{-12, 4}), 7);
    EXPECT_FALSE(writer.lastFitted());
    EXPECT_EQ(writer.length(), 0);
}

}  // namespace
}  // namespace naming
}  // namespace camtune
