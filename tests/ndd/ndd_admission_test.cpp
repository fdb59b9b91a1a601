// Which sensors and frames may dump, and the admission check with its messages.
#include <gtest/gtest.h>

#include "camtune/platform/properties.h"
#include "ndd_fixture.h"

namespace NSCam {
namespace TuningUtils {
namespace testing_ndd {
namespace {

constexpr char kStreamingAao[] =
        "Preview,Default,[Prefix],Streaming,AAO,1,0\n"
        "Preview,Default,[Prefix],Capture,AAO,1,0\n";

int previewProperty() {
    return props::getInt(props::kNddPreviewReady);
}

class NddAdmissionTest : public NddTest {
protected:
    bool admitted(eCategory category, int frameNo, int sensorId = 0) {
        return mNdd->is_ndd_data_valid(category, eModule_AAO, item(frameNo, sensorId));
    }
};

TEST_F(NddAdmissionTest, PreviewCountAdmitsThatManyFramesThenResetsTheProperty) {
    start(kStreamingAao);
    mProps.set(props::kNddSensorDump, std::string("0"));
    mProps.set(props::kNddPreviewReady, 3);
    LogCapture log;
    for (int frame = 1; frame <= 5; ++frame) {
        mNdd->frame_begin(0, frame);
        EXPECT_EQ(admitted(eCategory_Streaming, frame), frame <= 3) << frame;
        EXPECT_EQ(previewProperty(), frame <= 3 ? 3 : 0) << frame;
    }
    EXPECT_EQ(log.count("Preview Dump Request Count Received (3)"), 1);
    EXPECT_EQ(log.count("sensor(0) : Add FrameNo 3 in map, map size(3)"), 1);
    EXPECT_EQ(log.count("sensor(0) :Reset prv_ready to 0"), 1);
    // frame_end withdraws a frame.
    mNdd->frame_end(0, 2);
    EXPECT_TRUE(log.contains("find frame(2) map size(3)"));
    EXPECT_FALSE(admitted(eCategory_Streaming, 2));
    EXPECT_TRUE(admitted(eCategory_Streaming, 3));
}

TEST_F(NddAdmissionTest, ASensorThatJoinsLateFollowsTheOthers) {
    start(kStreamingAao, {0, 1});
    mProps.set(props::kNddSensorDump, std::string("1"));
    mNdd->frame_begin(0, 100);  // takes "1": sensor 1 permitted (0 was by stream_on)
    mProps.set(props::kNddPreviewReady, 4);
    mNdd->frame_begin(0, 101);  // every counter becomes 4; sensor 0 uses one
    mNdd->frame_begin(0, 102);  // sensor 0 has 2 left
    LogCapture log;
    mNdd->stream_on({2}, 1234);  // a third sensor, counter 0
    mNdd->frame_begin(2, 500);
    EXPECT_TRUE(log.contains("sensor(2) align count(4)"));
    EXPECT_TRUE(admitted(eCategory_Streaming, 500, 2));
    EXPECT_TRUE(admitted(eCategory_Streaming, 101, 0));
    EXPECT_FALSE(admitted(eCategory_Streaming, 100, 0));
    EXPECT_FALSE(admitted(eCategory_Streaming, 101, 1));  // sensor 1 had no frame yet
}

TEST_F(NddAdmissionTest, PreviewCountAcrossTwoSensorsIsWrittenBackOnce) {
    start(kStreamingAao, {0, 1});
    mProps.set(props::kNddPreviewReady, 2);
    int admittedFrames[2] = {0, 0};
    for (int frame = 1; frame <= 4; ++frame) {
        for (int sensor = 0; sensor < 2; ++sensor) {
            mNdd->frame_begin(sensor, frame);
            admittedFrames[sensor] += admitted(eCategory_Streaming, frame, sensor) ? 1 : 0;
        }
    }
    EXPECT_EQ(admittedFrames[0], 2);
    EXPECT_EQ(admittedFrames[1], 2);
    EXPECT_EQ(previewProperty(), 0);
}

TEST_F(NddAdmissionTest, SensorDumpPropertyPermitsAndWithdrawsOnce) {
    start(kStreamingAao, {0, 1, 2});
    struct Step {
        const char* text;
        bool sensor2;
        int logged;  // "Sensor Permission Received" lines for this step
    } steps[] = {
            {"-2", false, 1}, {"-2", false, 0},  // unchanged text: acted on once
            {"2", true, 1},   {"2", true, 0},
            {"-2", false, 1}, {"x", false, 1},  // not a sensor id: logged and ignored
    };
    for (const Step& step : steps) {
        mProps.set(props::kNddSensorDump, std::string(step.text));
        LogCapture log;
        mNdd->frame_begin(0, 1);
        EXPECT_EQ(admitted(eCategory_Capture, 1, 2), step.sensor2) << step.text;
        EXPECT_EQ(log.countContaining("Sensor Permission Received"), step.logged) << step.text;
    }
    EXPECT_TRUE(admitted(eCategory_Capture, 1, 1));
}

TEST_F(NddAdmissionTest, ChecksRunInOrderAndSayWhy) {
    mProps.set(props::kNddActionEnable, 2);
    start("Preview,Default,[Prefix],Streaming,AAO,1,0\n"
          "Preview,Default,[Prefix],Capture,AAO,1,0\n"
          "Preview,AFBLD_F0,[Prefix],Capture,LSC,0,0\n",
          {0});
    struct Case {
        const char* what;
        eCategory category;
        int module, feature, stage, sensorId, action;  // the item's: 0, 0, 0, -1
        bool admitted;
        const char* message;  // "" for none
    } cases[] = {
            {"capture, configured", eCategory_Capture, eModule_AAO, 0, 0, 0, -1, true, ""},
            {"feature 53", eCategory_Capture, eModule_AAO, 53, 0, 0, -1, false, ""},
            {"module 450", eCategory_Capture, 450, 0, 0, 0, -1, false, ""},
            {"category 2", static_cast<eCategory>(2), eModule_AAO, 0, 0, 0, -1, false, ""},
            {"negative module", eCategory_Capture, -1, 0, 0, 0, -1, false, ""},
            {"not configured", eCategory_Capture, eModule_AFO, 0, 0, 0, -1, false,
             "Data Dump disabled under given conditions: (Preview, Default, Capture, AFO)"},
            {"configured off", eCategory_Capture, eModule_LSC, 0, 1, 0, -1, false,
             "Data Dump disabled under given conditions: (Preview, AFBLD_F0, Capture, LSC)"},
            {"stage without a name", eCategory_Capture, eModule_AAO, 0, 191, 0, -1, false,
             "Data Dump disabled under given conditions: (Preview, Capture, AAO)"},
            {"sensor not permitted", eCategory_Capture, eModule_AAO, 0, 0, 3, -1, false,
             "Data Dump of this sensorId (3) has been disabled!"},
            {"streaming frame not admitted", eCategory_Streaming, eModule_AAO, 0, 0, 0, -1, false,
             "[is_ndd_data_valid] Given FrameNo(1) doesn't exist in permission list"},
            {"other action", eCategory_Capture, eModule_AAO, 0, 0, 0, 3, false,
             "[is_ndd_data_valid] action(3) is not the permitted action(2)"},
            {"permitted action", eCategory_Capture, eModule_AAO, 0, 0, 0, 2, true, ""},
    };
    for (const Case& c : cases) {
        NddData data = item(1, c.sensorId);
        data.feature = c.feature;
        data.stage = c.stage;
        data.action = c.action;
        LogCapture log;
        EXPECT_EQ(mNdd->is_ndd_data_valid(c.category, static_cast<eModule>(c.module), data),
                  c.admitted)
                << c.what;
        const auto lines = log.lines();
        if (c.message[0] == '\0') {
            EXPECT_TRUE(lines.empty()) << c.what << ": " << lines.front().text;
        } else {
            ASSERT_EQ(lines.size(), 1u) << c.what;
            EXPECT_EQ(lines.front().text, c.message);
        }
    }
}

TEST_F(NddAdmissionTest, ANegativeActionFilterLetsEveryActionThrough) {
    start(kStreamingAao);
    NddData data = item();
    data.action = 7;
    EXPECT_TRUE(mNdd->is_ndd_data_valid(eCategory_Capture, eModule_AAO, data));
}

TEST_F(NddAdmissionTest, DumpAndDumpInFlagsComeFromTheConfiguration) {
    start("Preview,Default,[Prefix],Capture,AAO,0,1\n"
          "Preview,Default,[Prefix],Capture,LSC,5,0\n");
    NddData data = item();
    EXPECT_FALSE(mNdd->is_enable_dump(data, eCategory_Capture, eModule_AAO));
    EXPECT_TRUE(mNdd->is_enable_dumpin(data, eCategory_Capture, eModule_AAO));
    EXPECT_TRUE(mNdd->is_enable_dump(data, eCategory_Capture, eModule_LSC));
    EXPECT_FALSE(mNdd->is_enable_dumpin(data, eCategory_Capture, eModule_LSC));
    data.feature = 53;
    EXPECT_FALSE(mNdd->is_enable_dump(data, eCategory_Capture, eModule_LSC));
    // Looking up keys that were never configured adds nothing.
    EXPECT_EQ(mNdd->configEntryCount(), 2u);
}

}  // namespace
}  // namespace testing_ndd
}  // namespace TuningUtils
}  // namespace NSCam
