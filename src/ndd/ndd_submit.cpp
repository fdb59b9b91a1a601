// Submissions: what the pipeline hands over, up to the writer.
#define LOG_TAG "NDD"

#include <cstring>

#include "camtune/odt.h"
#include "camtune/platform/clock.h"
#include "camtune/platform/image_buffer.h"
#include "camtune/platform/log.h"
#include "ndd/item_names.h"
#include "ndd/named_trace.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"

namespace NSCam {
namespace TuningUtils {

namespace {

constexpr char kBufferTrace[] = "NDD_BUFFER_%s";
constexpr char kImageTrace[] = "NDD_IMAGE_%s";

int elapsedNs(int64_t startNs) {
    const int64_t ns = camtune::clock::monotonicNs() - startNs;
    return ns > INT32_MAX ? INT32_MAX : static_cast<int>(ns);
}

}  // namespace

void Ndd::submit_request(eCategory category, eModule module, NddData& data, const void* buffer,
                         int size, const char* file, int line) {
    if (!is_ndd_data_valid(category, module, data)) return;
    (void)line;
    if (size < 0 || (size > 0 && buffer == nullptr)) {
        CAM_LOGE(ndd_msg::kBadSize, size, file != nullptr ? file : "");
        mFailedDumps.fetch_add(1);
        return;
    }
    make_ndd_dir();
    applyOdtPrefix(data);
    std::string path;
    if (!composePath(category, module, data, nullptr, &path)) return;

    const int64_t start = camtune::clock::monotonicNs();
    const char* moduleName = mTables->getModuleName(module);
    {
        NamedTrace trace(kBufferTrace, moduleName);
        if (overByteLimit() || mDirectWrite.load(std::memory_order_relaxed)) {
            // The pipeline thread pays for the write instead of the memory growing further.
            if (writeNow(path, buffer, static_cast<size_t>(size), ndd_msg::kDirectOpenFailed)) {
                reportWritten(data, path);
            }
        } else {
            DumpBytes copy = transfer(buffer, size);
            if (copy.empty()) {
                CAM_LOGE(ndd_msg::kAllocationFailed, static_cast<long>(mQueuedSize.load()));
                if (writeNow(path, buffer, static_cast<size_t>(size), ndd_msg::kOpenFailed)) {
                    reportWritten(data, path);
                }
            } else {
                queueOrWrite(std::move(copy), category, module, data, path);
            }
        }
    }
    CAM_LOGD(ndd_msg::kBufferHandover, mTables->getCategoryName(category), category, moduleName,
             module, nddFeatureName(data.feature), data.feature, elapsedNs(start), size,
             static_cast<long>(mQueuedSize.load()), path.c_str());
    reportToOdt(category, module, data, path);
}

void Ndd::submit_request(eCategory category, eModule module, NddData& data, IImageBuffer* image,
                         const char* file, int line) {
    if (!is_ndd_data_valid(category, module, data)) return;
    (void)file;
    (void)line;
    if (image == nullptr) {
        handleimgbuf(data, image);  // logs the refusal
        mFailedDumps.fetch_add(1);
        return;
    }
    make_ndd_dir();
    applyOdtPrefix(data);
    handleimgbuf(data, image);
    std::string path;
    if (!composePath(category, module, data, image, &path)) return;

    const int64_t start = camtune::clock::monotonicNs();
    const char* moduleName = mTables->getModuleName(module);
    size_t size = 0;
    {
        NamedTrace trace(kImageTrace, moduleName);
        // The planes are copied now: the pipeline reuses the buffer once this call returns.
        // Past the byte limit the copy would only grow the queue: the caller writes instead.
        DumpBytes copy;
        if (!overByteLimit()) {
            copy = copyImage(image);
            if (copy.empty()) {
                CAM_LOGE(ndd_msg::kAllocationFailed, static_cast<long>(mQueuedSize.load()));
            }
        }
        if (copy.empty()) {
            if (writeImageNow(path, image)) reportWritten(data, path);
        } else {
            size = copy.size();
            queueOrWrite(std::move(copy), category, module, data, path);
        }
    }
    CAM_LOGD(ndd_msg::kImageHandover, mTables->getCategoryName(category), category, moduleName,
             module, nddFeatureName(data.feature), data.feature, elapsedNs(start),
             static_cast<int>(size), path.c_str());
    reportToOdt(category, module, data, path);
}

bool Ndd::query_file_path(eCategory category, eModule module, NddData& data, char* out,
                          const char* file, int line) {
    (void)file;
    (void)line;
    if (!is_ndd_data_valid(category, module, data)) return false;
    make_ndd_dir();  // the caller writes the file itself, into this folder
    applyOdtPrefix(data);
    std::string path;
    if (!composePath(category, module, data, nullptr, &path)) return false;
    if (path.size() >= kNddPathMax) {
        CAM_LOGE(ndd_msg::kPathTooLong, path.c_str(), static_cast<int>(kNddPathMax));
        return false;
    }
    if (out == nullptr) return false;
    std::memcpy(out, path.c_str(), path.size() + 1);
    CAM_LOGD(ndd_msg::kQueriedPath, path.c_str());
    reportWritten(data, path);
    return true;
}

void Ndd::force_frame_order(int sensorId, std::vector<unsigned int> order) {
    if (sensorId < 0) return;
    if (auto odt = IOdtUtils::getInstance(static_cast<unsigned int>(sensorId))) {
        odt->write_frame_order(std::move(order));
    }
}

void Ndd::reportToOdt(eCategory category, eModule module, NddData& data, const std::string& path) {
    if (data.sensorId < 0 || !is_enable_dumpin(data, category, module)) return;
    auto odt = IOdtUtils::getInstance(static_cast<unsigned int>(data.sensorId));
    if (!odt) return;
    odt->write_frame_data(mTables->getModuleName(module), static_cast<unsigned int>(data.frameNo),
                          mTables->getSensorIdName(data.sensorId), data.stage, data.feature, path);
}

}  // namespace TuningUtils
}  // namespace NSCam
