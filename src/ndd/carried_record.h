// Buffers carried in request metadata: the entry layout and the user strings it points to.
//
// An entry is the category and module (4 bytes each), the item's record in a fixed 108-byte
// layout, then the payload. The record's user string travels as a pointer and a length, so the
// carriage only means something inside this process. The pointer always names a string kept by
// CarriedStrings for the life of the process, so reading it back is safe whenever the entry was
// made; a pointer that CarriedStrings did not hand out reads back as an empty string.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "camtune/ndd.h"

namespace NSCam {
namespace TuningUtils {

constexpr size_t kCarriedRecordSize = 108;
constexpr size_t kCarriedHeaderSize = 8 + kCarriedRecordSize;

// The carriage tag of `module`, or 0 for a module that cannot be carried.
uint32_t carriedTagOf(int module);

// Writes `data` into `out` (kCarriedRecordSize bytes).
void encodeCarriedRecord(const NddData& data, uint8_t* out);
// Reads a record written by encodeCarriedRecord.
NddData decodeCarriedRecord(const uint8_t* in);

// The start of an entry (kCarriedHeaderSize bytes): category, module, then the record.
void encodeCarriedHeader(eCategory category, eModule module, const NddData& data, uint8_t* out);
void decodeCarriedHeader(const uint8_t* in, eCategory* category, eModule* module, NddData* data);

// The process's kept user strings. Bounded: beyond kMaxStrings distinct strings a new one is
// carried as empty.
class CarriedStrings {
public:
    static constexpr size_t kMaxStrings = 4096;

    static CarriedStrings& instance();

    struct Ref {
        uint64_t address = 0;
        uint32_t length = 0;
    };
    // A reference to a kept copy of `text`; {0, 0} for an empty text or a full store.
    Ref keep(const std::string& text);
    // The text of a reference made by keep(), or "" for any other reference.
    std::string resolve(Ref ref) const;

private:
    CarriedStrings() = default;

    mutable std::mutex mLock;
    // Keys view the mapped strings' own bytes (nodes never move).
    std::unordered_map<std::string_view, std::string*> mByText;
    std::unordered_map<uint64_t, const std::string*> mByAddress;
    bool mFullLogged = false;
};

}  // namespace TuningUtils
}  // namespace NSCam
