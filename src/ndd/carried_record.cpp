#define LOG_TAG "NDD"

#include "ndd/carried_record.h"

#include <cstring>

#include "camtune/platform/log.h"

namespace NSCam {
namespace TuningUtils {
namespace {

struct CarriedTag {
    int module;
    uint32_t tag;
};

constexpr CarriedTag kCarriedTags[] = {
        {eModule_AAO, 0xC0120007u},     {eModule_AAHO, 0xC0120008u},   {eModule_AISA, 0xC0120009u},
        {eModule_AIMA, 0xC012000Au},    {eModule_AIFA, 0xC012000Bu},   {eModule_LTMSO, 0xC012000Cu},
        {eModule_LTM_OUT, 0xC012000Du}, {eModule_AE_OUT, 0xC012000Eu}, {eModule_CAC, 0xC012000Fu},
};

// The integer fields in record order; the user string sits between the ninth and the tenth.
constexpr int32_t NddData::*kFieldsBeforeString[] = {
        &NddData::version, &NddData::uniqueKey, &NddData::requestNo,
        &NddData::frameNo, &NddData::sensorId,  &NddData::stage,
        &NddData::feature, &NddData::action,    &NddData::sensorFeatureMode,
};
constexpr int32_t NddData::*kFieldsAfterString[] = {
        &NddData::paddedWidth, &NddData::paddedHeight, &NddData::bufferWidth, &NddData::width,
        &NddData::height,      &NddData::bitDepth,     &NddData::bayerOrder,  &NddData::sign,
        &NddData::cell,        &NddData::delay,        &NddData::layer,       &NddData::sensorExp,
        &NddData::expOdr,      &NddData::dualCamId,    &NddData::ruleVersion,
};
constexpr size_t kStringRefSize = sizeof(uint64_t) + sizeof(uint32_t);
static_assert(sizeof(kFieldsBeforeString) / sizeof(kFieldsBeforeString[0]) * 4 + kStringRefSize +
                              sizeof(kFieldsAfterString) / sizeof(kFieldsAfterString[0]) * 4 ==
                      kCarriedRecordSize,
              "the carried record is 24 integers and a string reference");

template <typename T>
uint8_t* put(uint8_t* out, T value) {
    std::memcpy(out, &value, sizeof(value));
    return out + sizeof(value);
}

template <typename T>
const uint8_t* get(const uint8_t* in, T* value) {
    std::memcpy(value, in, sizeof(*value));
    return in + sizeof(*value);
}

}  // namespace

uint32_t carriedTagOf(int module) {
    for (const CarriedTag& row : kCarriedTags) {
        if (row.module == module) return row.tag;
    }
    return 0;
}

void encodeCarriedRecord(const NddData& data, uint8_t* out) {
    for (auto field : kFieldsBeforeString) out = put(out, data.*field);
    CarriedStrings::Ref ref = CarriedStrings::instance().keep(data.userStr);
    out = put(out, ref.address);
    out = put(out, ref.length);
    for (auto field : kFieldsAfterString) out = put(out, data.*field);
}

NddData decodeCarriedRecord(const uint8_t* in) {
    NddData data;
    for (auto field : kFieldsBeforeString) in = get(in, &(data.*field));
    CarriedStrings::Ref ref;
    in = get(in, &ref.address);
    in = get(in, &ref.length);
    data.userStr = CarriedStrings::instance().resolve(ref);
    for (auto field : kFieldsAfterString) in = get(in, &(data.*field));
    return data;
}

void encodeCarriedHeader(eCategory category, eModule module, const NddData& data, uint8_t* out) {
    out = put(out, static_cast<int32_t>(category));
    out = put(out, static_cast<int32_t>(module));
    encodeCarriedRecord(data, out);
}

void decodeCarriedHeader(const uint8_t* in, eCategory* category, eModule* module, NddData* data) {
    int32_t value = 0;
    in = get(in, &value);
    *category = static_cast<eCategory>(value);
    in = get(in, &value);
    *module = static_cast<eModule>(value);
    *data = decodeCarriedRecord(in);
}

CarriedStrings& CarriedStrings::instance() {
    // Never destroyed: carried entries may be read by pipeline threads during exit.
    static CarriedStrings* sInstance = new CarriedStrings();
    return *sInstance;
}

CarriedStrings::Ref CarriedStrings::keep(const std::string& text) {
    if (text.empty()) return Ref();
    std::lock_guard<std::mutex> guard(mLock);
    auto found = mByText.find(std::string_view(text));
    const std::string* kept = nullptr;
    if (found != mByText.end()) {
        kept = found->second;
    } else if (mByText.size() >= kMaxStrings) {
        if (!mFullLogged) {
            mFullLogged = true;
            CAM_LOGW("carried user strings: %zu kept already, later new ones are carried empty",
                     kMaxStrings);
        }
        return Ref();
    } else {
        std::string* copy = new std::string(text);  // kept for the life of the process
        mByText.emplace(std::string_view(*copy), copy);
        mByAddress.emplace(reinterpret_cast<uintptr_t>(copy->data()), copy);
        kept = copy;
    }
    Ref ref;
    ref.address = reinterpret_cast<uintptr_t>(kept->data());
    ref.length = static_cast<uint32_t>(kept->size());
    return ref;
}

std::string CarriedStrings::resolve(Ref ref) const {
    if (ref.address == 0) return std::string();
    std::lock_guard<std::mutex> guard(mLock);
    auto found = mByAddress.find(ref.address);
    if (found == mByAddress.end() || found->second->size() != ref.length) return std::string();
    return *found->second;
}

}  // namespace TuningUtils
}  // namespace NSCam
