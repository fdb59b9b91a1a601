// The process's recorder and the static object that runs it from library load to unload.
#include <mutex>

#include "platform/property_registry.h"
#include "recorder/scenario_recorder_impl.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace props = camtune::props;

IScenarioRecorder* IScenarioRecorder::getInstance() {
    // Never destroyed: pipeline threads may still submit records while the process exits; the
    // library's unload stops the service thread (ScenarioRecorderInitializer).
    static ScenarioRecorder* sInstance = new ScenarioRecorder();
    return sInstance;
}

ScenarioRecorderInitializerImpl::ScenarioRecorderInitializerImpl() {
    if (props::getInt(props::kRecorderEnable) != 1) return;
    static_cast<ScenarioRecorder*>(IScenarioRecorder::getInstance())->init();
    mStarted = true;
}

ScenarioRecorderInitializerImpl::~ScenarioRecorderInitializerImpl() {
    if (mStarted) static_cast<ScenarioRecorder*>(IScenarioRecorder::getInstance())->unInit();
}

ScenarioRecorderInitializer::ScenarioRecorderInitializer() {
    mImpl = std::make_unique<ScenarioRecorderInitializerImpl>();
}

ScenarioRecorderInitializer::~ScenarioRecorderInitializer() = default;

namespace {
const ScenarioRecorderInitializer sInitializer;
}  // namespace

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
