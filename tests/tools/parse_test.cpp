// camtune parse, run as a user runs it, on names the library itself composed.
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;
using Json = nlohmann::json;

// Local time as the recorder stamps its log names, for comparisons.
std::string localNow() {
    const std::time_t now = std::time(nullptr);
    std::tm calendar{};
    localtime_r(&now, &calendar);
    char text[32];
    std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &calendar);
    return text;
}

class ParseTest : public CliTest {
protected:
    // Three frames, a capture every second request; returns the sim's summary.
    Json runSession(const std::vector<std::string>& extra = {}) {
        std::vector<std::string> args = {"sim",   "-o",    mRoot + "/out",    "--frames", "3",
                                         "--fps", "0",     "--capture-every", "2",        "--size",
                                         "64x32", "--raw", "64x16",           "--json"};
        args.insert(args.end(), extra.begin(), extra.end());
        CliRun run = runCli(args);
        EXPECT_EQ(run.status, 0) << run.err;
        return Json::parse(run.out, nullptr, false);
    }

    // Every file the session left in its dump folder but the configuration's copy.
    std::vector<std::string> dumps(const Json& summary) const {
        std::vector<std::string> files;
        const stdfs::path folder = hostPath(summary["dump_folder"].get<std::string>());
        for (const auto& entry : stdfs::directory_iterator(folder)) {
            if (entry.path().extension() != ".cfg") files.push_back(entry.path().string());
        }
        return files;
    }

    Json parseJson(const std::vector<std::string>& names, int wantedStatus,
                   const std::vector<std::string>& options = {}) {
        std::vector<std::string> args = {"parse", "--json"};
        args.insert(args.end(), options.begin(), options.end());
        args.insert(args.end(), names.begin(), names.end());
        CliRun run = runCli(args);
        EXPECT_EQ(run.status, wantedStatus) << run.err;
        Json out = Json::parse(run.out, nullptr, false);
        EXPECT_TRUE(out.is_array()) << run.out;
        EXPECT_EQ(out.size(), names.size());
        return out;
    }

    std::string hostPath(const std::string& devicePath) const {
        return mRoot + "/out" + devicePath;
    }

    std::string writeConfig(const std::string& text) const { return write("test.cfg", text); }
};

TEST_F(ParseTest, EveryFileOfASessionDecodes) {
    const std::string before = localNow();
    Json summary = runSession();
    const std::string after = localNow();
    ASSERT_TRUE(summary.is_object());
    const std::vector<std::string> files = dumps(summary);
    ASSERT_EQ(files.size(), summary["items"]["written"].get<size_t>());
    std::vector<std::string> names = files;
    for (const auto& log : summary["log_files"]) names.push_back(hostPath(log));
    for (const auto& list : summary["dumpin_files"]) names.push_back(hostPath(list));

    Json decoded = parseJson(names, 0);
    std::set<std::string> kinds;
    for (size_t i = 0; i < decoded.size(); ++i) {
        const Json& entry = decoded[i];
        SCOPED_TRACE(entry.dump());
        ASSERT_TRUE(entry.contains("kind"));
        const Json& fields = entry["fields"];
        kinds.insert(entry["kind"].get<std::string>());
        EXPECT_EQ(fields["unique_key"], 1);  // the simulated stream's key
        if (i < files.size()) {
            ASSERT_EQ(entry["kind"], "ndd");
            const Json& config = entry["config"];
            // Only enabled lines dump, and each names files after its own feature and stage.
            EXPECT_EQ(config["enable"], 1);
            EXPECT_EQ(fields["feature"], config["feature"]);
            EXPECT_EQ(fields["stage"], config["stage"]);
            EXPECT_EQ(fields["request"], fields["frame"]);
            const bool capture = fields["request"].get<int>() % 2 == 1;
            EXPECT_EQ(config["category"], capture ? "Capture" : "Streaming");
            if (config["module"] == "YUVO_R1") {
                EXPECT_EQ(fields["width"], 64);
                EXPECT_EQ(fields["height"], 32);
                EXPECT_EQ(fields["formats"], Json::array({"NV21"}));
            }
        } else if (entry["kind"] == "recorder_log") {
            const bool capture = fields["series"] == "capture";
            EXPECT_EQ(fields["request"].get<int>() % 2 == 1, capture);
            EXPECT_EQ(fields["file_index"], 1);
            EXPECT_LE(before, fields["start_time"].get<std::string>());
            EXPECT_GE(after, fields["start_time"].get<std::string>());
        } else {
            EXPECT_EQ(entry["kind"], "dumpin_list");
        }
    }
    EXPECT_EQ(kinds, (std::set<std::string>{"ndd", "recorder_log", "dumpin_list"}));
}

TEST_F(ParseTest, EveryNddNamingRuleDecodes) {
    // The sim's items named with every rule, an unknown one and, for arrays, no format.
    const std::string config = writeConfig(
            "Preview,P2_Single,[Prefix][Platform][SensorId][Stage][Feature][Action]"
            "[SensorFeatureMode][UserStr][Padding][Size][Bit][BayerOrder][Sign][Cell][Port]"
            "[Plane][Delay][Layer][SensorExp][ExpOdr][DualCamId][Version][Unknown]-YUVO_R1."
            "[Format],Streaming,YUVO_R1,1,0\n"
            "Capture_default,P1,[Prefix][SensorId][UserStr][UserStr]-IMGO.raw[Format],Capture,"
            "IMGO,1,0\n");
    Json summary = runSession({"--config", config});
    const std::vector<std::string> files = dumps(summary);
    ASSERT_EQ(files.size(), 3u);  // two preview frames and one capture
    Json decoded = parseJson(files, 0, {"--config", config});
    for (const Json& entry : decoded) {
        SCOPED_TRACE(entry.dump());
        const Json& fields = entry["fields"];
        EXPECT_EQ(entry["kind"], "ndd");
        EXPECT_EQ(fields["sensor_id"], "main");
        EXPECT_EQ(fields["user"], "");
        if (entry["config"]["module"] == "YUVO_R1") {
            EXPECT_EQ(fields["platform"], 6983);  // the NDD record's version
            EXPECT_EQ(fields["padded_width"], 64);
            EXPECT_EQ(fields["bit_depth"], 8);
            EXPECT_EQ(fields["format"], "nv21");
            EXPECT_FALSE(fields.contains("sensor_feature_mode"));  // none: nothing printed
        } else {
            EXPECT_EQ(fields["format"], "packed_word");  // the raw frame comes as an image
        }
    }
}

TEST_F(ParseTest, NamesOfTheNamingFunctionsDecodeToTheirHint) {
    const std::string aeb =
            "CAMTUNE_PROPS=" + write("aeb.props", "vendor.debug.enable.normalAEB=1\n");
    const std::string key = " --unique-key 5012345 --request 12 --frame 34";
    struct Case {
        std::string nameArgs;
        const char* kind;
        const char* fields;    // a subset of the decoded fields, as JSON; "<absent>": left out
        std::string env = "";  // for the name command
        const char* kindOption = nullptr;  // open-ended kinds decode only when asked for
    } cases[] = {
            {"raw --sensor-dev 1 --port 0 --format 0x2201 --width 4000 --height 3000 --buf-width "
             "4000 --buf-height 3000 --stride 5000 --order 1" +
                     key,
             "raw",
             R"({"sensor": "main", "port": "imgo", "buf_stride": 5000, "width": 4000, "bits": 10,
                 "colour_order": 1, "extension": "packed_word"})"},
            {"raw --format 0x2200 --exp LongExp --port 7" + key, "raw",
             R"({"port": "undef", "exposure": "LongExp", "bits": null, "colour_order": null,
                 "extension": "unknown"})"},
            {"yuv --sensor-dev 2 --port 0 --user P2 --format 0x11 --width 1920 --height 1080" + key,
             "yuv",
             R"({"sensor_dev": 2, "port_value": 0, "text": "P2", "height": 1080,
                 "formats": ["NV21"]})"},
            {"jpg --user P2" + key, "jpg", R"({"request": 12, "text": "P2"})"},
            {"dceso", "dceso",
             R"({"unique_key": null, "request": null, "frame": null, "sensor": "sensor",
                 "sensor_dev": null})"},
            {"yuv --request 123456 --frame -10000 --port -1", "yuv",
             R"({"request": 3456, "frame": 0, "port_value": null})"},
            {"hw_aao --sensor-dev 1 --hint-user af --user x" + key, "hw_aao",
             R"({"text": "af-af-x"})"},
            // Without a sensor device the element is left out of image and LCSO names.
            {"lcso --width 8 --height 6" + key, "lcso",
             R"({"bits": 12, "width": 8, "sensor": "<absent>"})"},
            {"tuning --sensor-dev 64" + key, "tuning", R"({"sensor": "main4", "profile": null})"},
            {"reg --exp ShtExp" + key, "reg", R"({"exposure": "ShtExp"})"},
            {"mss_reg" + key, "mss_reg", R"({"frame": 34})"},
            {"aiga" + key, "aiga", R"({"unique_key": 5012345})"},
            {"raw --ev -2 --unique-key 3", "raw", R"({"ev": -2})", aeb},
            {"vsdof_buffer --sensor-dev 2 --user depth", "vsdof_buffer",
             R"({"sensor": "sub", "rest": "-depth"})", "", "vsdof_buffer"},
    };
    for (const Case& c : cases) {
        CliRun named = runCli(words("name " + c.nameArgs), ".", {c.env});
        ASSERT_EQ(named.status, 0) << named.err;
        const std::string name = named.out.substr(0, named.out.find('\n'));
        SCOPED_TRACE(name);
        std::vector<std::string> options;
        if (c.kindOption) {
            parseJson({name}, 1);
            options = {"--kind", c.kindOption};
        }
        Json decoded = parseJson({name}, 0, options);
        EXPECT_EQ(decoded[0]["kind"], c.kind);
        const Json& fields = decoded[0]["fields"];
        const Json expected = Json::parse(c.fields);
        for (const auto& [field, value] : expected.items()) {
            if (value == "<absent>") {
                EXPECT_FALSE(fields.contains(field));
            } else {
                EXPECT_EQ(fields[field], value) << field;
            }
        }
    }
}

TEST_F(ParseTest, BadNamesAreReportedAndTheOthersStillDecoded) {
    const std::string good = "000000001-0002-0002-main-AFBLD_F0-Preview-AAO.bin";
    struct Case {
        std::string name;
        std::string reason;
    } cases[] = {
            {"garbage", "does not start like any of them"},
            {"000000001-0002-0002-main-P2_Single-Preview-YUVO_R1__64x32-PW64",
             "ends early for configuration line 5"},
            {"000000001-0002-0002-main-P1-Preview-YUVO_R1__64x32-PW64-PH32-BW64.nv21",
             "prints stage P1 where the line has 'P2_Single'"},
            {"000000001_0000_0000_preview__2026_1322_223358_TuningLog_01.txt",
             "the recorder_log name fits the first 34 characters, not '1322_"},
            {"123456789_12345_12345_capture__2026_1122_223358_TuningLog_01.txt",
             "is longer than the recorder's 29 characters"},
            {"/data/vendor/camera_dump/", "no file name after the folder"},
            {"abc\xff.bin", ""},  // stays valid JSON below
    };
    std::vector<std::string> args = {"parse", good};
    for (const Case& c : cases) args.push_back(c.name);
    CliRun run = runCli(args);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out.find(good + ": ndd line 1 (Preview,AFBLD_F0,Streaming,AAO)"), 0u) << run.out;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1);
    for (const Case& c : cases) {
        EXPECT_TRUE(has(run.err, "camtune parse: " + c.name + ": ")) << c.name;
        EXPECT_TRUE(has(run.err, c.reason));
    }
    // The JSON array keeps one object per name, in order.
    std::vector<std::string> names(args.begin() + 1, args.end());
    Json decoded = parseJson(names, 1);
    EXPECT_EQ(decoded[0]["kind"], "ndd");
    for (size_t i = 1; i < decoded.size(); ++i) EXPECT_TRUE(decoded[i].contains("error"));
}

TEST_F(ParseTest, ConfigurationsAreReadAsNddReadsThem) {
    // NDD stops at a malformed line: the line after it names nothing.
    const std::string config = writeConfig(
            "Preview,P1,[Prefix]-first.bin,Streaming,AAO,1,0\n"
            "Preview,P1,broken\n"
            "Preview,P1,[Prefix]-third.bin,Streaming,LSC,1,0\n");
    CliRun run = runCli({"parse", "--config", config, "000000001-0000-0000-first.bin",
                         "000000001-0000-0000-third.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.out, "ndd line 1"));
    EXPECT_TRUE(has(run.err, config + ":2: not a configuration line"));
    EXPECT_TRUE(has(run.err, "000000001-0000-0000-third.bin: no kind fits"));

    // A later line of the same item replaces the earlier one.
    const std::string replaced = writeConfig(
            "Preview,P1,[Prefix]-old.bin,Streaming,AAO,1,0\n"
            "Preview,P1,[Prefix]-new.bin,Streaming,AAO,1,0\n");
    Json decoded = parseJson({"000000001-0000-0000-new.bin"}, 0, {"--config", replaced});
    EXPECT_EQ(decoded[0]["config"]["line"], 2);
    parseJson({"000000001-0000-0000-old.bin"}, 1, {"--config", replaced});
}

TEST_F(ParseTest, ARuleUsedTwicePrintsOneValue) {
    const std::string config = writeConfig(
            "Preview,P1,[Prefix][UserStr]-mid[UserStr][Size].bin[Size],Streaming,AAO,1,0\n");
    struct Case {
        const char* name;
        bool decodes;
    } cases[] = {
            {"000000001-0000-0000-a-mid-a__4x2.bin__4x2", true},
            {"000000001-0000-0000-a-mid-b__4x2.bin__4x2", false},
            {"000000001-0000-0000-a-mid-a__4x2.bin__4x3", false},
    };
    for (const Case& c : cases) {
        Json decoded = parseJson({c.name}, c.decodes ? 0 : 1, {"--config", config});
        EXPECT_EQ(decoded[0].contains("error"), !c.decodes) << c.name;
        if (c.decodes) {
            EXPECT_EQ(decoded[0]["fields"]["user"], "a");
        }
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
