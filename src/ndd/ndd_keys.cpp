// The NDD key and the request identity carried in metadata.
#include "camtune/platform/metadata.h"
#include "ndd/ndd_impl.h"

namespace NSCam {
namespace TuningUtils {

long long Ndd::compose_ndd_key(int uniqueKey, int requestNo, int frameNo) {
    return composeNddKey(uniqueKey, requestNo, frameNo);
}

int Ndd::query_uniquekey(long long key, int& uniqueKey, int& requestNo, int& frameNo) {
    const uint64_t bits = static_cast<uint64_t>(key);
    const uint32_t low = static_cast<uint32_t>(bits);
    uniqueKey = static_cast<int32_t>(static_cast<uint32_t>(bits >> 32));
    requestNo = static_cast<int>(low >> 16);
    frameNo = static_cast<int>(low & 0xFFFFu);
    return 0;
}

int Ndd::query_uniquekey(const IMetadata& meta, int& uniqueKey, int& requestNo, int& frameNo) {
    int64_t key = 0;
    if (IMetadata::getEntry<int64_t>(&meta, kNddTagKey, key) && key != 0) {
        return query_uniquekey(static_cast<long long>(key), uniqueKey, requestNo, frameNo);
    }
    int32_t value = 0;
    if (!IMetadata::getEntry<int32_t>(&meta, kNddTagPipelineUniqueKey, value)) return -1;
    uniqueKey = value;
    if (!IMetadata::getEntry<int32_t>(&meta, kNddTagPipelineRequestNo, value)) return -1;
    requestNo = value;
    if (IMetadata::getEntry<int32_t>(&meta, kNddTagPipelineFrameNo, value)) frameNo = value;
    return 0;
}

int Ndd::update_uniquekey(IMetadata& meta, int uniqueKey, int requestNo, int frameNo) {
    IMetadata::setEntry<int64_t>(&meta, kNddTagKey, compose_ndd_key(uniqueKey, requestNo, frameNo));
    return 0;
}

int Ndd::align_uniquekey(const IMetadata& in, IMetadata& out) {
    int inKey = 0, inRequest = 0, inFrame = 0;
    int outKey = 0, outRequest = 0, outFrame = 0;
    if (query_uniquekey(in, inKey, inRequest, inFrame) != 0) return -1;
    if (query_uniquekey(out, outKey, outRequest, outFrame) != 0) return -1;
    return update_uniquekey(out, inKey, inRequest, outFrame);
}

int Ndd::query_ndd_info(const IMetadata& meta, eCategory& category, NddData& data) {
    int result = query_uniquekey(meta, data.uniqueKey, data.requestNo, data.frameNo);
    data.version = kNddDataVersion;
    int64_t captureInfo = -1;  // both halves -1: a streaming request
    IMetadata::getEntry<int64_t>(&meta, kNddTagCaptureInfo, captureInfo);
    int32_t streamingFeature = -1;
    IMetadata::getEntry<int32_t>(&meta, kNddTagStreamingFeature, streamingFeature);
    int32_t action = data.action;
    if (IMetadata::getEntry<int32_t>(&meta, kNddTagAction, action)) data.action = action;

    const uint64_t bits = static_cast<uint64_t>(captureInfo);
    const int32_t high = static_cast<int32_t>(static_cast<uint32_t>(bits >> 32));
    const int32_t low = static_cast<int32_t>(static_cast<uint32_t>(bits));
    if (high == -1 && low == -1) {
        category = eCategory_Streaming;
        data.feature = streamingFeature;
    } else {
        category = eCategory_Capture;
        data.feature = low;
    }
    return result;
}

}  // namespace TuningUtils
}  // namespace NSCam
