// IMetadata: the request metadata that travels with every frame.
//
// Entries are keyed by a 32-bit tag and hold a typed list of elements. A byte array is an entry
// of type Uint8 whose element count is its length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <type_traits>
#include <vector>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {

enum class MetaType : uint8_t { None, Uint8, Int32, Int64, Float, Double };

template <typename T>
struct MetaTypeOf;
template <>
struct MetaTypeOf<uint8_t> {
    static constexpr MetaType value = MetaType::Uint8;
};
template <>
struct MetaTypeOf<int32_t> {
    static constexpr MetaType value = MetaType::Int32;
};
template <>
struct MetaTypeOf<int64_t> {
    static constexpr MetaType value = MetaType::Int64;
};
template <>
struct MetaTypeOf<float> {
    static constexpr MetaType value = MetaType::Float;
};
template <>
struct MetaTypeOf<double> {
    static constexpr MetaType value = MetaType::Double;
};

class IMetadata {
public:
    class IEntry {
    public:
        explicit IEntry(uint32_t tag = kInvalidTag) : mTag(tag) {}

        uint32_t tag() const { return mTag; }
        MetaType type() const { return mType; }
        size_t count() const {
            return mType == MetaType::None ? 0 : mBytes.size() / elementSize(mType);
        }
        bool isEmpty() const { return count() == 0; }

        // Appends one element. The first element fixes the entry's type; an element of another
        // type is refused (returns false).
        template <typename T>
        bool push_back(T value) {
            if (!adoptType(MetaTypeOf<T>::value)) return false;
            const auto* p = reinterpret_cast<const uint8_t*>(&value);
            mBytes.insert(mBytes.end(), p, p + sizeof(T));
            return true;
        }

        // Appends `size` bytes to a Uint8 entry.
        bool pushBytes(const void* data, size_t size);

        // Element `index` as T; false when out of range or of another type.
        template <typename T>
        bool itemAt(size_t index, T& out) const {
            if (mType != MetaTypeOf<T>::value || index >= count()) return false;
            std::memcpy(&out, mBytes.data() + index * sizeof(T), sizeof(T));
            return true;
        }

        // Raw element storage (for Uint8 entries: the byte array).
        const uint8_t* data() const { return mBytes.data(); }
        size_t sizeInBytes() const { return mBytes.size(); }

        void clear() {
            mBytes.clear();
            mType = MetaType::None;
        }

        static constexpr uint32_t kInvalidTag = 0xFFFFFFFFu;

    private:
        friend class IMetadata;
        static size_t elementSize(MetaType type);
        bool adoptType(MetaType type);

        uint32_t mTag;
        MetaType mType = MetaType::None;
        std::vector<uint8_t> mBytes;
    };

    // The entry of `tag`, or an empty entry carrying `tag` when there is none.
    IEntry entryFor(uint32_t tag) const;
    // Replaces the entry of `tag`. Returns 0.
    int update(uint32_t tag, const IEntry& entry);
    int update(const IEntry& entry) { return update(entry.tag(), entry); }
    // Removes the entry of `tag`. Returns 0, or -1 when there was none.
    int remove(uint32_t tag);
    bool contains(uint32_t tag) const { return mEntries.count(tag) != 0; }
    size_t count() const { return mEntries.size(); }
    bool isEmpty() const { return mEntries.empty(); }
    void clear() { mEntries.clear(); }

    // First element of `tag` as T. A missing or empty entry, or one of another type, leaves `out`
    // unchanged and returns false.
    template <typename T>
    static bool getEntry(const IMetadata* meta, uint32_t tag, T& out) {
        if (meta == nullptr) return false;
        auto it = meta->mEntries.find(tag);
        return it != meta->mEntries.end() && it->second.itemAt(0, out);
    }

    // Replaces the entry of `tag` with the single element `value`.
    template <typename T>
    static void setEntry(IMetadata* meta, uint32_t tag, T value) {
        if (meta == nullptr) return;
        IEntry entry(tag);
        entry.push_back(value);
        meta->update(tag, entry);
    }

private:
    std::map<uint32_t, IEntry> mEntries;
};

}  // namespace NSCam

CAMTUNE_EXPORT_END
