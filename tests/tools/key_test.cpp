// camtune key, run as a user runs it.
#include <gtest/gtest.h>

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

TEST(KeyTest, ABit15KeyIsNotedOnStandardError) {
    CliRun run = runCli({"key", "encode", "--ndd", "5", "32768", "0"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "-2147483648 0xFFFFFFFF80000000\n");
    EXPECT_NE(run.err.find("bit 15"), std::string::npos) << run.err;
}

TEST(KeyTest, DecodedNddKeysNameTheirDumpPrefix) {
    CliRun run = runCli({"key", "decode", "--ndd", "0x004C7B79000C2732"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("unique_key=5012345 request=12 frame=10034"), std::string::npos)
            << run.out;
    // The dump-name prefix keeps the last four digits.
    EXPECT_NE(run.out.find("name_prefix=005012345-0012-0034"), std::string::npos) << run.out;
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

TEST(KeyTest, ARecorderKeyNoUniqueKeyComposesIsReportedAndTheOthersDecoded) {
    CliRun run = runCli({"key", "decode", "--request", "0x7FFFFFFFFFFFFFFF", "458773"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("0x7FFFFFFFFFFFFFFF: not a request key"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("458773: key=458773 hex=0x0000000000070015 unique_key=7 request=21"),
              std::string::npos)
            << run.out;
    nlohmann::json decoded = decodeJson("--request", {"0x7FFFFFFFFFFFFFFF", "458773"}, 1);
    ASSERT_EQ(decoded.size(), 2u);
    EXPECT_TRUE(decoded[0].contains("error"));
    EXPECT_EQ(decoded[1]["unique_key"], 7);
}

TEST(KeyTest, BadArgumentsSayWhatIsWrong) {
    struct Case {
        std::vector<std::string> args;
        std::string message;
    } cases[] = {
            {{"encode", "--ndd", "5", "x", "1"}, "request number 'x' is not a number"},
            {{"encode", "--ndd", "5", "1"}, "expected 3 values"},
            {{"encode", "--ndd", "2147483648", "0", "0"},
             "unique key '2147483648' is out of range"},
            {{"encode", "--ndd", "5", "65536", "0"}, "request number '65536' is out of range"},
            {{"encode", "--ndd", "5", "0", "0x10000"}, "frame number '0x10000' is out of range"},
            {{"encode", "--request", "5", "-1"}, "request number '-1' is out of range"},
            {{"encode", "--request", "5", "1", "2"}, "expected 2 values"},
            {{"encode", "1", "2"}, "--ndd or --request"},
            {{"encode", "--ndd", "--request", "1", "2"}, "excludes"},
            {{"decode", "--ndd"}, "at least one KEY"},
            {{"decode", "--ndd", "99999999999999999999"}, "'99999999999999999999' is out of range"},
            {{"decode", "--ndd", "0x10000000000000000"}, "has more than 64 bits"},
            {{"decode", "--ndd", "-0x5"}, "'-0x5' is not a number"},
            {{"decode", "--request", "12abc"}, "'12abc' is not a number"},
            {{}, "subcommand"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = {"key"};
        args.insert(args.end(), c.args.begin(), c.args.end());
        CliRun run = runCli(args);
        EXPECT_EQ(run.status, 2) << c.message;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_TRUE(run.out.empty()) << run.out;
    }
}

TEST(KeyTest, HelpDescribesBothKeys) {
    CliRun help = runCli({"key", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--ndd"), std::string::npos);
    EXPECT_NE(help.out.find("key >> 16"), std::string::npos);
    EXPECT_NE(help.out.find("Exit status"), std::string::npos);
}

}  // namespace
}  // namespace test
}  // namespace camtune
