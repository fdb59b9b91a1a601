// Buffers carried in request metadata until the request that carries them is dumped.
#define LOG_TAG "NDD"

#include "camtune/platform/log.h"
#include "camtune/platform/metadata.h"
#include "ndd/carried_record.h"
#include "ndd/item_names.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"

namespace NSCam {
namespace TuningUtils {

void Ndd::push_buffer(eCategory category, eModule module, NddData& data, void* buffer, int size,
                      IMetadata& meta, const char* file, int line) {
    // Carrying costs a copy into the metadata; with NDD off nothing would ever dump it.
    if (mThreadCount.load(std::memory_order_relaxed) == 0) return;
    const uint32_t tag = carriedTagOf(module);
    if (tag == 0) return;
    if (size < 0 || (size > 0 && buffer == nullptr)) {
        CAM_LOGE(ndd_msg::kBadSize, size, file != nullptr ? file : "");
        return;
    }
    (void)line;
    uint8_t header[kCarriedHeaderSize];
    encodeCarriedHeader(category, module, data, header);
    IMetadata::IEntry entry(tag);
    entry.pushBytes(header, sizeof(header));
    if (size > 0) entry.pushBytes(buffer, static_cast<size_t>(size));
    if (mDebugging.load()) {
        CAM_LOGD(ndd_msg::kPushBuffer, mTables->getCategoryName(category), category,
                 mTables->getModuleName(module), module, data.uniqueKey, data.requestNo,
                 data.frameNo, size, static_cast<int>(entry.count()));
    }
    meta.update(tag, entry);
}

void Ndd::dump_buffer(const IMetadata& meta) {
    if (mThreadCount.load(std::memory_order_relaxed) == 0) return;
    for (uint32_t tag = kNddTagCarriedFirst; tag <= kNddTagCarriedLast; ++tag) {
        if (!meta.contains(tag)) continue;
        IMetadata::IEntry entry = meta.entryFor(tag);
        if (entry.type() != MetaType::Uint8 || entry.count() < kCarriedHeaderSize) continue;
        const uint8_t* bytes = entry.data();
        eCategory category;
        eModule module;
        NddData data;
        decodeCarriedHeader(bytes, &category, &module, &data);
        eCategory requestCategory = category;
        query_ndd_info(meta, requestCategory, data);
        const int size = static_cast<int>(entry.count() - kCarriedHeaderSize);
        if (mDebugging.load()) {
            CAM_LOGD(ndd_msg::kDumpCarried, mTables->getCategoryName(category), category,
                     mTables->getModuleName(module), module, data.uniqueKey, data.requestNo,
                     data.frameNo, nddFeatureName(data.feature), data.feature, size,
                     static_cast<int>(entry.count()));
        }
        submit_request(category, module, data, bytes + kCarriedHeaderSize, size, __FILE__,
                       __LINE__);
    }
}

}  // namespace TuningUtils
}  // namespace NSCam
