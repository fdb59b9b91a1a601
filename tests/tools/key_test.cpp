// camtune key, run as a user runs it.
#include <cstdint>
#include <nlohmann/json.hpp>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

nlohmann::json decodeJson(const std::string& kind, const std::vector<std::string>& keys,
                          int wantedStatus = 0) {
    std::vector<std::string> args = {"key", "decode", kind, "--json"};
    args.insert(args.end(), keys.begin(), keys.end());
    CliRun run = runCli(args);
    EXPECT_EQ(run.status, wantedStatus) << run.err;
    return nlohmann::json::parse(run.out, nullptr, false);
}

struct NddCase {
    const char* uniqueKey;
    const char* request;
    const char* frame;
    int64_t key;
    // What the key decodes to: the given numbers unless bit 15 of the request hides the key.
    int decodedUniqueKey;
    int decodedRequest;
    int decodedFrame;
};

TEST(KeyTest, NddKeysRoundTrip) {
    const NddCase cases[] = {
            {"5", "3", "2", 0x0000000500030002, 5, 3, 2},
            {"-1", "1", "2", static_cast<int64_t>(0xFFFFFFFF00010002u), -1, 1, 2},
            {"0x12345678", "0x7FFF", "0xFFFF", 0x123456787FFFFFFF, 0x12345678, 0x7FFF, 0xFFFF},
            {"-2147483648", "0", "0", INT64_MIN, INT32_MIN, 0, 0},
            {"5012345", "12", "10034", 0x004C7B79000C2732, 5012345, 12, 10034},
            // Bit 15 of the request: the upper word fills with ones, the unique key is lost.
            {"5", "0x8000", "0", static_cast<int64_t>(0xFFFFFFFF80000000u), -1, 0x8000, 0},
            {"2147483647", "65535", "65535", -1, -1, 0xFFFF, 0xFFFF},
    };
    for (const NddCase& c : cases) {
        SCOPED_TRACE(std::string(c.uniqueKey) + " " + c.request + " " + c.frame);
        CliRun encoded =
                runCli({"key", "encode", "--ndd", c.uniqueKey, c.request, c.frame, "--json"});
        ASSERT_EQ(encoded.status, 0) << encoded.err;
        nlohmann::json out = nlohmann::json::parse(encoded.out);
        EXPECT_EQ(out["key"].get<int64_t>(), c.key);
        const bool hidden = c.decodedUniqueKey != std::stoll(c.uniqueKey, nullptr, 0);
        EXPECT_EQ(out.contains("note"), hidden);

        // Back again, from the hexadecimal and from the decimal form.
        nlohmann::json decoded =
                decodeJson("--ndd", {out["hex"].get<std::string>(), std::to_string(c.key)});
        ASSERT_EQ(decoded.size(), 2u);
        for (const auto& entry : decoded) {
            EXPECT_EQ(entry["key"].get<int64_t>(), c.key);
            EXPECT_EQ(entry["unique_key"], c.decodedUniqueKey);
            EXPECT_EQ(entry["request"], c.decodedRequest);
            EXPECT_EQ(entry["frame"], c.decodedFrame);
            EXPECT_EQ(entry.contains("note"), c.decodedRequest >= 0x8000);
        }
    }
}

TEST(KeyTest, PlainOutputShowsTheKeyAndNotesOnStandardError) {
    struct Case {
        const char* args;
        int status;
        const char* out;  // "|" between texts
        const char* err;
    } cases[] = {
            {"encode --ndd 5 32768 0", 0, "-2147483648 0xFFFFFFFF80000000\n", "bit 15"},
            // The dump-name prefix keeps the last four digits.
            {"decode --ndd 0x004C7B79000C2732", 0,
             "unique_key=5012345 request=12 frame=10034|name_prefix=005012345-0012-0034", ""},
            // A key no unique key composes is reported; the others are still decoded.
            {"decode --request 0x7FFFFFFFFFFFFFFF 458773", 1,
             "458773: key=458773 hex=0x0000000000070015 unique_key=7 request=21",
             "0x7FFFFFFFFFFFFFFF: not a request key"},
    };
    for (const Case& c : cases) {
        CliRun run = runCli(words(std::string("key ") + c.args));
        EXPECT_EQ(run.status, c.status) << run.err;
        for (const std::string& text : split(c.out, '|')) EXPECT_TRUE(has(run.out, text));
        EXPECT_TRUE(has(run.err, c.err));
    }
}

TEST(KeyTest, RecorderKeysRoundTrip) {
    struct Case {
        const char* uniqueKey;
        const char* request;
        int64_t key;
    } cases[] = {
            {"7", "21", 0x70015},
            {"-1", "0", static_cast<int64_t>(0xFFFFFFFFFFFF0000u)},
            {"-2147483648", "65535", static_cast<int64_t>(0xFFFF80000000FFFFu)},
            {"2147483647", "0x8000", 0x00007FFFFFFF8000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.uniqueKey) + " " + c.request);
        CliRun encoded = runCli({"key", "encode", "--request", c.uniqueKey, c.request, "--json"});
        ASSERT_EQ(encoded.status, 0) << encoded.err;
        nlohmann::json out = nlohmann::json::parse(encoded.out);
        EXPECT_EQ(out["key"].get<int64_t>(), c.key);
        nlohmann::json decoded = decodeJson("--request", {out["hex"].get<std::string>()});
        ASSERT_EQ(decoded.size(), 1u);
        EXPECT_EQ(decoded[0]["unique_key"].get<int64_t>(), std::stoll(c.uniqueKey, nullptr, 0));
        EXPECT_EQ(decoded[0]["request"].get<int64_t>(), std::stoll(c.request, nullptr, 0));
    }
}

TEST(KeyTest, JsonKeepsAnErrorObjectForAKeyItCannotDecode) {
    nlohmann::json decoded = decodeJson("--request", {"0x7FFFFFFFFFFFFFFF", "458773"}, 1);
    ASSERT_EQ(decoded.size(), 2u);
    EXPECT_TRUE(decoded[0].contains("error"));
    EXPECT_EQ(decoded[1]["unique_key"], 7);
}

}  // namespace
}  // namespace test
}  // namespace camtune
