// System properties: the switches of every camtune feature.
//
// On a device these are Android system properties. On a host they live in a process-wide store
// seeded from the file named by CAMTUNE_PROPS. Reads are cheap enough for every call of a
// disabled feature: no allocation and no lock shared between readers.
#pragma once

#include <cstdint>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

namespace NSCam {
namespace Utils {
namespace Properties {

// Largest value a property may hold, terminator included (Android's PROP_VALUE_MAX).
constexpr int kPropertyValueMax = 92;

// Copies the value of `key` into `value` (at least kPropertyValueMax bytes) and returns its
// length. An unset or empty property yields `defaultValue` (or "" when null) instead.
int property_get(const char* key, char* value, const char* defaultValue = nullptr);

// Reads `key` as an integer the way Android does: base inferred ("0x" hex, leading "0" octal,
// else decimal), optional sign, trailing text ignored; no digits, or a value outside int32,
// gives `defaultValue`.
int32_t property_get_int32(const char* key, int32_t defaultValue);

// Sets `key` to `value` (null means ""). Returns 0, or -1 when the key is null or empty or the
// value does not fit kPropertyValueMax.
int property_set(const char* key, const char* value);

}  // namespace Properties
}  // namespace Utils
}  // namespace NSCam

CAMTUNE_EXPORT_END
