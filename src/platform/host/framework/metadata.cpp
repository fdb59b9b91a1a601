#include "camtune/platform/metadata.h"

namespace NSCam {

size_t IMetadata::IEntry::elementSize(MetaType type) {
    switch (type) {
        case MetaType::Uint8:
            return sizeof(uint8_t);
        case MetaType::Int32:
            return sizeof(int32_t);
        case MetaType::Int64:
            return sizeof(int64_t);
        case MetaType::Float:
            return sizeof(float);
        case MetaType::Double:
            return sizeof(double);
        case MetaType::None:
            break;
    }
    return 1;
}

bool IMetadata::IEntry::adoptType(MetaType type) {
    if (mType == MetaType::None || mBytes.empty()) {
        mType = type;
        return true;
    }
    return mType == type;
}

bool IMetadata::IEntry::pushBytes(const void* data, size_t size) {
    if (!adoptType(MetaType::Uint8)) return false;
    const auto* bytes = static_cast<const uint8_t*>(data);
    mBytes.insert(mBytes.end(), bytes, bytes + size);
    return true;
}

IMetadata::IEntry IMetadata::entryFor(uint32_t tag) const {
    auto it = mEntries.find(tag);
    return it != mEntries.end() ? it->second : IEntry(tag);
}

int IMetadata::update(uint32_t tag, const IEntry& entry) {
    IEntry stored = entry;
    stored.mTag = tag;
    mEntries[tag] = std::move(stored);
    return 0;
}

int IMetadata::remove(uint32_t tag) {
    return mEntries.erase(tag) != 0 ? 0 : -1;
}

}  // namespace NSCam
