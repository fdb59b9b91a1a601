// Decision and execution records: one formatted line each in the request's log.
#define LOG_TAG "ScenarioRecorder"

#include <atomic>

#include "camtune/ndd.h"
#include "camtune/platform/log.h"
#include "camtune/platform/sensor_list.h"
#include "recorder/convert_to_string.h"
#include "recorder/record_line.h"
#include "recorder/scenario_recorder_impl.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {
namespace {

constexpr int kNone = -1;

struct SensorDevName {
    int devIdx;
    const char* name;
};

constexpr SensorDevName kSensorDevNames[] = {
        {1, "main"},   {2, "sub"},   {4, "main2"},  {8, "sub2"},
        {16, "main3"}, {32, "sub3"}, {64, "main4"},
};
constexpr char kUnknownSensorDev[] = "sensor";

const char* sensorDevName(int devIdx) {
    for (const SensorDevName& row : kSensorDevNames) {
        if (row.devIdx == devIdx) return row.name;
    }
    return kUnknownSensorDev;
}

constexpr char kNullMetadata[] = "input metadata is nullptr, we can't parse key";
constexpr char kNoNdd[] = "pNdd is nullptr, we can't parse key";

}  // namespace

// The pieces both kinds of record start with: sensor and frame, when known.
static void appendSubject(ScenarioRecorder& recorder, RecordLine& line, int sensorIdx,
                          int frameNo) {
    if (sensorIdx != kNone) {
        line.append("[SensorDevName: ")
                .append(sensorDevName(recorder.querySendorDevIdx(sensorIdx)))
                .append("]");
    }
    if (frameNo != kNone) line.append("[FrameNum: ").append(frameNo).append("]");
}

int ScenarioRecorder::querySendorDevIdx(int sensorIndex) {
    // The sensor list does not change while the camera service runs: each index is asked once.
    const bool cacheable = sensorIndex >= 0 && sensorIndex < kCachedSensors;
    if (cacheable) {
        int cached = mSensorDevCache[sensorIndex].load(std::memory_order_relaxed);
        if (cached != 0) return cached;
    }
    IHalSensorList* list = IHalSensorList::get();
    if (list == nullptr) {
        CAM_LOGE("[%s] pIHalSensorList is nullptr", __func__);
        return 0;
    }
    int devIdx = static_cast<int>(list->querySensorDevIdx(static_cast<uint32_t>(sensorIndex)));
    if (cacheable && devIdx != 0) {
        mSensorDevCache[sensorIndex].store(devIdx, std::memory_order_relaxed);
    }
    return devIdx;
}

int ScenarioRecorder::queryNddInfo(const IMetadata* meta, int& uniqueKey, int& requestNo,
                                   int& frameNo) {
    if (meta == nullptr) {
        CAM_LOGE("[%s] %s", __func__, kNullMetadata);
        return 1;
    }
    INdd* ndd = INdd::getInstance();
    if (ndd == nullptr) {
        CAM_LOGE("[%s] %s", __func__, kNoNdd);
        return 1;
    }
    return ndd->query_uniquekey(*meta, uniqueKey, requestNo, frameNo) == 0 ? 0 : 1;
}

void ScenarioRecorder::submitDecisionRecord(const IMetadata* meta, const DecisionInput& input,
                                            const char* text) {
    if (!isInitialised()) return;
    DecisionParam param;
    queryNddInfo(meta, param.uniqueKey, param.requestNo, param.frameNo);
    param.fill(input);
    submitDecisionRecord(param, text);
}

void ScenarioRecorder::submitDecisionRecord(long long nddKey, const DecisionInput& input,
                                            const char* text) {
    if (!isInitialised()) return;
    DecisionParam param;
    INdd::getInstance()->query_uniquekey(nddKey, param.uniqueKey, param.requestNo, param.frameNo);
    param.fill(input);
    submitDecisionRecord(param, text);
}

void ScenarioRecorder::submitExecutionRecord(const IMetadata* meta, const ExecResultInput& input,
                                             const char* text) {
    if (!isInitialised()) return;
    ResultParam param;
    queryNddInfo(meta, param.uniqueKey, param.requestNo, param.frameNo);
    param.fill(input);
    submitExecutionRecord(param, text);
}

void ScenarioRecorder::submitExecutionRecord(long long nddKey, const ExecResultInput& input,
                                             const char* text) {
    if (!isInitialised()) return;
    ResultParam param;
    INdd::getInstance()->query_uniquekey(nddKey, param.uniqueKey, param.requestNo, param.frameNo);
    param.fill(input);
    submitExecutionRecord(param, text);
}

void ScenarioRecorder::submitDecisionRecord(const DecisionParam& param, const char* text) {
    if (!isInitialised()) return;
    const ConvertToString* names = ConvertToString::getInstance();
    RecordLine line;
    appendSubject(*this, line, param.sensorIdx, param.frameNo);
    line.append("[ModuleName: ")
            .append(names->getModuleName(static_cast<int>(param.moduleId)))
            .append("][Decision: ")
            .append(names->getDecisionName(param.decisionType))
            .append("] ")
            .append(text != nullptr ? text : "");
    submitRecordText(param.uniqueKey, param.requestNo, line.text(), line.length(), nullptr);
}

void ScenarioRecorder::submitExecutionRecord(const ResultParam& param, const char* text) {
    if (!isInitialised()) return;
    const ConvertToString* names = ConvertToString::getInstance();
    RecordLine line;
    appendSubject(*this, line, param.sensorIdx, param.frameNo);
    line.append("[ModuleName: ").append(names->getModuleName(static_cast<int>(param.moduleId)));
    if (param.stage == kNone) {
        line.append("][INVALID_STAGE]");
    } else {
        line.append("][").append(names->getStageName(param.stage)).append("]");
    }
    line.append("[Result: ")
            .append(names->getDecisionName(param.result))
            .append("] ")
            .append(text != nullptr ? text : "");
    submitRecordText(param.uniqueKey, param.requestNo, line.text(), line.length(),
                     param.appendToHeadline ? (text != nullptr ? text : "") : nullptr);
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
