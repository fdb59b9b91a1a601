// Scenario recorder: per-request text records of the pipeline's decisions and execution
// results, written by one low-priority service thread into rolling log files.
//
// The recorder is a process-wide object reached through IScenarioRecorder::getInstance(). It is
// started at library load when vendor.debug.camera.scenarioRecorder.enable is 1; records submitted
// while it is stopped are dropped.
#pragma once

#include <cstdint>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {
class IMetadata;
}  // namespace NSCam

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

// What a module decided (decision records) or how a stage ended (execution records).
enum DecisionType : int32_t {
    DECISION_ATMS_MAPPING = 1,
    DECISION_TOP_CONTROL = 2,
    DECISION_NORMAL_DATA_DUMP = 3,
    DECISION_AE_EXPOSURE_PARAM = 4,
    DECISION_TRIGGER_FEATURE = 5,
    DECISION_ISP_FLOW = 6,
};

struct DecisionInput {
    int32_t sensorIdx = -1;  // -1: the record names no sensor
    uint32_t moduleId = 0;
    int32_t reserved = 0;  // carried for callers; the recorder ignores it
    DecisionType decisionType = DECISION_ATMS_MAPPING;
};

struct ExecResultInput {
    int32_t sensorIdx = -1;
    uint32_t moduleId = 0;
    int32_t reserved = 0;
    DecisionType result = DECISION_ATMS_MAPPING;
    int32_t stage = -1;             // -1: no stage
    bool appendToHeadline = false;  // also append the text to the request's first line
};

class IScenarioRecorder {
public:
    // The one recorder of the process, created on first use.
    static IScenarioRecorder* getInstance();

    // Binds request (uniqueKey, requestNo) to a log file: preview requests of one unique key
    // share a file; every capture request gets its own, written once it has been quiet for
    // vendor.debug.camera.scenarioRecorder.flushCapSec seconds. `third` is the third number of
    // the file-name prefix.
    virtual void recordNddInfo(int uniqueKey, int requestNo, int third, bool isCapture) = 0;
    virtual bool isScenarioRecorderOn() = 0;
    virtual void submitDecisionRecord(const IMetadata* meta, const DecisionInput& input,
                                      const char* text) = 0;
    virtual void submitDecisionRecord(long long nddKey, const DecisionInput& input,
                                      const char* text) = 0;
    virtual void submitExecutionRecord(const IMetadata* meta, const ExecResultInput& input,
                                       const char* text) = 0;
    virtual void submitExecutionRecord(long long nddKey, const ExecResultInput& input,
                                       const char* text) = 0;
    virtual ~IScenarioRecorder() = default;
};

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam

CAMTUNE_EXPORT_END
