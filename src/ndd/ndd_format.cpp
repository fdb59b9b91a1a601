// Raw-format overrides chosen by properties.
#define LOG_TAG "NDD"

#include "camtune/platform/image_format.h"
#include "camtune/platform/log.h"
#include "ndd/ndd_impl.h"
#include "ndd/ndd_messages.h"
#include "platform/property_registry.h"

namespace NSCam {
namespace TuningUtils {

namespace props = camtune::props;

namespace {

// Raw output points of the pipeline that the overrides select.
enum RawSelector : int32_t {
    kSelectorNone = 0,
    kSelectorAfterBpc = 1,
    kSelectorAfterLsc = 5,
    kSelectorAfterLtm = 7,
};

struct ProcessingOverride {
    const props::Property& property;
    int32_t format;
    int32_t selector;
};

// First match wins.
const ProcessingOverride kProcessingOverrides[] = {
        {props::kNddAfterLsc, eImgFmt_BAYER16_UNPAK, kSelectorAfterLsc},
        {props::kNddAfterBpc, eImgFmt_BAYER12, kSelectorAfterBpc},
        {props::kNddAfterLtm, eImgFmt_BAYER12, kSelectorAfterLtm},
};

struct BitDepthOverride {
    int32_t bits;
    int32_t format;
};

const BitDepthOverride kBitDepthOverrides[] = {
        {10, eImgFmt_BAYER10},
        {12, eImgFmt_BAYER12},
        {14, eImgFmt_BAYER14},
        {16, eImgFmt_BAYER16_UNPAK},
};

}  // namespace

bool Ndd::force_buffer_format(NddFormat& format) {
    bool chosen = false;
    format.format = 0;
    format.selector = kSelectorNone;
    for (const ProcessingOverride& row : kProcessingOverrides) {
        if (props::getInt(row.property) != 0) {
            format.format = row.format;
            format.selector = row.selector;
            chosen = true;
            break;
        }
    }
    if (chosen && mDebugging.load()) {
        CAM_LOGD(ndd_msg::kForcedFormat, format.format, format.selector);
    }
    const int32_t bits = props::getInt(props::kNddImgoBit);
    for (const BitDepthOverride& row : kBitDepthOverrides) {
        if (row.bits == bits) {
            format.format = row.format;
            CAM_LOGD(ndd_msg::kForceChangeFormat, format.format);
            break;
        }
    }
    return chosen;
}

}  // namespace TuningUtils
}  // namespace NSCam
