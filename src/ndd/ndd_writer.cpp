// The queue, the writer threads, and what is reported once a file is written.
#define LOG_TAG "NDD"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "camtune/platform/clock.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/log.h"
#include "camtune/platform/thread.h"
#include "camtune/platform/trace.h"
#include "camtune/scenario_recorder.h"
#include "ndd/dump_file.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"
#include "platform/property_registry.h"

namespace NSCam {
namespace TuningUtils {

namespace props = camtune::props;
using camtune::trace::ScopedTrace;
using scenariorecorder::ExecResultInput;
using scenariorecorder::IScenarioRecorder;

namespace {

constexpr char kThreadNameFormat[] = "NDD_THD_%d";
// A writer that has written an item in the last kWriterLingerNs polls the queue every
// kWriterPoll; after that it sleeps until a producer wakes it.
constexpr std::chrono::milliseconds kWriterPoll{1};
constexpr int64_t kWriterLingerNs = 250 * 1000 * 1000;
// Copies kept for reuse while no dump comes.
constexpr size_t kIdleKeptBuffers = 2;
constexpr char kAllocTrace[] = "NDD_transfer_alloc";
constexpr char kCopyTrace[] = "NDD_transfer_copy";
constexpr char kWriteTrace[] = "write";
constexpr char kScenarioTrace[] = "scenario";
constexpr char kImageUser[] = "NDD";
// Records of NDD name the "Utils" module of the scenario recorder.
constexpr uint32_t kRecorderModuleId = 0x40007001u;

// Logs a failed write of `path`; `openFailedFormat` is the text for a failed open.
void logWriteFailure(const DumpFileResult& result, const std::string& path,
                     const char* openFailedFormat) {
    if (result.status == DumpFileResult::OpenFailed) {
        CAM_LOGE(openFailedFormat, std::strerror(result.error));
    } else if (result.status == DumpFileResult::WriteFailed) {
        CAM_LOGE(ndd_msg::kWriteFailed, std::strerror(result.error), result.written, result.total,
                 path.c_str());
    }
}

}  // namespace

DumpBytes Ndd::transfer(const void* buffer, int size) {
    DumpBytes copy;
    {
        ScopedTrace trace(kAllocTrace);
        copy = mPool.acquire(size > 0 ? static_cast<size_t>(size) : 0);
    }
    if (!copy.empty() && size > 0) {
        ScopedTrace trace(kCopyTrace);
        std::memcpy(copy.data(), buffer, static_cast<size_t>(size));
    }
    return copy;
}

DumpBytes Ndd::copyImage(IImageBuffer* image) {
    const size_t planes = image->getPlaneCount();
    size_t total = 0;
    for (size_t i = 0; i < planes; ++i) {
        if (image->getBufVA(i) != nullptr) total += image->getBufSizeInBytes(i);
    }
    DumpBytes copy;
    {
        ScopedTrace trace(kAllocTrace);
        copy = mPool.acquire(total);
    }
    if (copy.empty()) return copy;
    ScopedTrace trace(kCopyTrace);
    const bool locked = image->lockBuf(kImageUser, eBUFFER_USAGE_SW_READ_OFTEN);
    image->syncCache(eCACHECTRL_INVALID);
    size_t at = 0;
    for (size_t i = 0; i < planes; ++i) {
        const uint8_t* plane = image->getBufVA(i);
        if (plane == nullptr) continue;
        const size_t bytes = image->getBufSizeInBytes(i);
        std::memcpy(copy.data() + at, plane, bytes);
        at += bytes;
    }
    if (locked) image->unlockBuf(kImageUser);
    return copy;
}

void Ndd::queueOrWrite(DumpBytes copy, eCategory category, eModule module, const NddData& data,
                       const std::string& path) {
    dumpInfo info;
    info.data = std::move(copy);
    info.category = category;
    info.module = module;
    info.ndd = data;
    info.path = path;
    mQueuedSize.fetch_add(static_cast<int64_t>(info.data.size()));
    bool queued = false;
    bool wake = false;
    {
        std::lock_guard<std::mutex> guard(mMainLock);
        if (mRunning.load()) {
            mQueue.push_back(std::move(info));
            queued = true;
            wake = mSleepingWriters > 0;
        }
    }
    if (queued) {
        // Writers that dumped recently poll and need no wake-up. One item needs one writer,
        // and waking it after the unlock spares it blocking on the lock.
        if (wake) mQueueSignal.notify_one();
        return;
    }
    // The writers have stopped since the item was admitted: write it here, so it is not lost.
    if (writeNow(info.path, info.data.data(), info.data.size(), ndd_msg::kOpenFailed)) {
        dump_info_scenario_recorder(info);
    }
    finishQueuedItem(info);
}

void Ndd::consume_request(int index) {
    char name[16];
    std::snprintf(name, sizeof(name), kThreadNameFormat, index);
    camtune::thread::setName(name);
    auto ready = [this] { return (!mQueue.empty() && !mWritersPaused) || !mRunning.load(); };
    bool wroteAny = false;
    bool trimmed = true;
    int64_t lastItemNs = 0;
    for (;;) {
        dumpInfo info;
        {
            std::unique_lock<std::mutex> lock(mMainLock);
            while (!ready()) {
                // While dumps keep coming, look for the next one every poll interval rather
                // than have each producer pay for waking a sleeping writer.
                if (wroteAny && camtune::clock::monotonicNs() - lastItemNs < kWriterLingerNs) {
                    mQueueSignal.wait_for(lock, kWriterPoll);
                } else if (!trimmed) {
                    // Dumps have stopped: give back the copies kept for them.
                    trimmed = true;
                    lock.unlock();
                    mPool.trim(kIdleKeptBuffers);
                    lock.lock();
                } else {
                    ++mSleepingWriters;
                    mQueueSignal.wait(lock);
                    --mSleepingWriters;
                }
            }
            if (mQueue.empty()) return;
            info = std::move(mQueue.front());
            mQueue.pop_front();
        }
        bool written;
        {
            ScopedTrace trace(kWriteTrace);
            written = dump_to_file(info);
        }
        if (written) {
            ScopedTrace trace(kScenarioTrace);
            dump_info_scenario_recorder(info);
        } else {
            CAM_LOGE("%s", ndd_msg::kDumpFailed);
            mFailedDumps.fetch_add(1);
        }
        finishQueuedItem(info);
        wroteAny = true;
        trimmed = false;
        lastItemNs = camtune::clock::monotonicNs();
    }
}

void Ndd::setWritersPaused(bool paused) {
    std::lock_guard<std::mutex> guard(mMainLock);
    mWritersPaused = paused;
    mQueueSignal.notify_all();
}

bool Ndd::dump_to_file(dumpInfo& info) {
    const DumpPiece piece{info.data.data(), info.data.size()};
    DumpFileResult result = writeDumpFile(info.path, &piece, 1);
    logWriteFailure(result, info.path, ndd_msg::kOpenFailed);
    return result.status == DumpFileResult::Written;
}

bool Ndd::writeNow(const std::string& path, const void* data, size_t size,
                   const char* openFailedFormat) {
    const DumpPiece piece{data, size};
    DumpFileResult result = writeDumpFile(path, &piece, 1);
    logWriteFailure(result, path, openFailedFormat);
    if (result.status == DumpFileResult::Written) return true;
    mFailedDumps.fetch_add(1);
    return false;
}

bool Ndd::writeImageNow(const std::string& path, IImageBuffer* image) {
    std::vector<DumpPiece> pieces;
    for (size_t i = 0; i < image->getPlaneCount(); ++i) {
        if (const uint8_t* plane = image->getBufVA(i)) {
            pieces.push_back(DumpPiece{plane, image->getBufSizeInBytes(i)});
        }
    }
    const bool locked = image->lockBuf(kImageUser, eBUFFER_USAGE_SW_READ_OFTEN);
    image->syncCache(eCACHECTRL_INVALID);
    DumpFileResult result = writeDumpFile(path, pieces.data(), pieces.size());
    if (locked) image->unlockBuf(kImageUser);
    logWriteFailure(result, path, ndd_msg::kOpenFailed);
    if (result.status == DumpFileResult::Written) return true;
    mFailedDumps.fetch_add(1);
    return false;
}

void Ndd::finishQueuedItem(dumpInfo& info) {
    // Image copies count too: they hold memory like any other copy, and dump_size reads 0
    // only once every queued item is on disk. The copy goes back to the pool first, so a
    // producer that saw the queue empty finds it there.
    const auto size = static_cast<int64_t>(info.data.size());
    mPool.release(std::move(info.data));
    mQueuedSize.fetch_sub(size);
    publishQueuedSize();
}

void Ndd::publishQueuedSize() {
    // Writers finish items at once: the size is read under the lock, so the value published
    // last is the current one and dump_size ends at 0, not at a stale count.
    std::lock_guard<std::mutex> guard(mPublishLock);
    char text[32];
    std::snprintf(text, sizeof(text), "%" PRId64, mQueuedSize.load());
    props::set(props::kNddDumpSize, text);
}

void Ndd::reportWritten(const NddData& data, const std::string& text) {
    // A stopped recorder drops the record at once.
    IScenarioRecorder* recorder = IScenarioRecorder::getInstance();
    if (recorder == nullptr) return;
    ExecResultInput input;
    input.sensorIdx = data.sensorId;
    input.moduleId = kRecorderModuleId;
    input.result = scenariorecorder::DECISION_NORMAL_DATA_DUMP;
    input.stage = data.stage;
    recorder->submitExecutionRecord(compose_ndd_key(data.uniqueKey, data.requestNo, data.frameNo),
                                    input, text.c_str());
}

void Ndd::dump_info_scenario_recorder(const dumpInfo& info) {
    reportWritten(info.ndd, info.path);
}

void Ndd::disabled_info_scenario_recorder(const NddData& data, eModule module) {
    char text[128];
    std::snprintf(text, sizeof(text), ndd_msg::kSkipRecord, mTables->getModuleName(module));
    reportWritten(data, text);
}

}  // namespace TuningUtils
}  // namespace NSCam
