// NDD's instance, start and stop.
#define LOG_TAG "NDD"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <system_error>

#include "camtune/platform/log.h"
#include "camtune/platform/properties.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"
#include "platform/property_registry.h"
#include "platform/thread_start.h"

namespace NSCam {
namespace TuningUtils {

namespace props = camtune::props;
using NSCam::Utils::Properties::kPropertyValueMax;

namespace {

// vendor.debug.ndd.thdnum read as a decimal number, as the C library reads one (leading blanks,
// a sign, trailing text ignored); -1 when it holds no number in range.
int parseThreadCount(const char* text) {
    errno = 0;
    char* end = nullptr;
    long value = std::strtol(text, &end, 10);
    if (end == text || errno == ERANGE || value < 0 || value > INT_MAX) return -1;
    return static_cast<int>(value);
}

}  // namespace

INdd* INdd::getInstance() {
    return Ndd::getInstance();
}

Ndd* Ndd::getInstance() {
    // Never destroyed: pipeline threads may still call in while the process exits.
    static Ndd* sInstance = new Ndd();
    return sInstance;
}

Ndd::Ndd() : mTables(NddAutoGenExcel2C::getInstance()) {}

Ndd::~Ndd() {
    uninit();
}

int Ndd::is_enable_ndd() {
    return mThreadCount.load(std::memory_order_relaxed);
}

void Ndd::init() {
    // What happened, logged once the locks are released.
    enum class Outcome { AlreadyRunning, BadCount, Disabled, Started } outcome;
    char text[kPropertyValueMax];
    int requested = 0;
    bool threadFailed = false;
    {
        std::lock_guard<std::mutex> lifecycle(mLifecycleLock);
        std::lock_guard<std::mutex> guard(mMainLock);
        if (mRunning.load()) {
            outcome = Outcome::AlreadyRunning;
        } else {
            mQueuedSize.store(0);
            mFailedDumps.store(0);
            mRunning.store(true);
            props::getString(props::kNddThreadCount, text);
            requested = parseThreadCount(text);
            if (requested < 0) {
                outcome = Outcome::BadCount;
            } else if (requested == 0) {
                outcome = Outcome::Disabled;
            } else {
                outcome = Outcome::Started;
                const int count = requested > kMaxThreads ? kMaxThreads : requested;
                for (int i = 0; i < count && !threadFailed; ++i) {
                    try {
                        mWriters.push_back(camtune::thread::start(&Ndd::consume_request, this, i));
                    } catch (const std::system_error&) {
                        threadFailed = true;
                    }
                }
                // Only the threads that started take items.
                mThreadCount.store(static_cast<int>(mWriters.size()));
            }
        }
    }
    switch (outcome) {
        case Outcome::AlreadyRunning:
            CAM_LOGD(ndd_msg::kAlreadyRunning, mThreadCount.load());
            return;
        case Outcome::BadCount:
            CAM_LOGE(ndd_msg::kBadThreadCount, text, kMaxThreads);
            return;
        case Outcome::Disabled:
            CAM_LOGI("%s", ndd_msg::kDisabled);
            return;
        case Outcome::Started:
            break;
    }
    if (requested > kMaxThreads) {
        CAM_LOGW(ndd_msg::kThreadCountCapped, requested, kMaxThreads, kMaxThreads);
    }
    if (threadFailed) CAM_LOGE("%s", ndd_msg::kThreadFailed);
    CAM_LOGI(ndd_msg::kEnabled, mThreadCount.load());
    publishQueuedSize();
}

void Ndd::uninit() {
    std::lock_guard<std::mutex> lifecycle(mLifecycleLock);
    {
        std::lock_guard<std::mutex> guard(mMainLock);
        if (!mRunning.load()) return;  // never started, or stopped already
        mRunning.store(false);
        // Refuse new items from here on; items already admitted are written by the writers
        // below or, if they miss the queue, by their caller.
        mThreadCount.store(0);
        mQueueSignal.notify_all();
    }
    for (std::thread& writer : mWriters) {
        if (writer.joinable()) writer.join();
    }
    CAM_LOGI(ndd_msg::kRemaining, static_cast<long>(mQueuedSize.load()));
    if (mFailedDumps.load() != 0) {
        CAM_LOGW(ndd_msg::kFailedDumps, static_cast<long long>(mFailedDumps.load()));
    }
    mWriters.clear();
    mPool.clear();
}

NddInitializerImp::NddInitializerImp() {
    Ndd::getInstance()->init();
}

NddInitializerImp::~NddInitializerImp() {
    Ndd::getInstance()->uninit();
}

NddInitializer::NddInitializer() : mImp(std::make_unique<NddInitializerImp>()) {}

NddInitializer::~NddInitializer() = default;

}  // namespace TuningUtils
}  // namespace NSCam
