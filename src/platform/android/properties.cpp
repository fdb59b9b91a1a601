// Device properties: the camtune wrapper over Android system properties (libcutils).
#include "camtune/platform/properties.h"

#include <cutils/properties.h>

#include <cstring>

namespace NSCam {
namespace Utils {
namespace Properties {

static_assert(kPropertyValueMax == PROP_VALUE_MAX, "value buffers must fit a system property");

int property_get(const char* key, char* value, const char* defaultValue) {
    // libcutils dereferences the key; a null key reads as an unset property, as on a host.
    if (key == nullptr || key[0] == '\0') {
        const char* fallback = defaultValue != nullptr ? defaultValue : "";
        size_t length = std::strlen(fallback);
        if (length >= static_cast<size_t>(kPropertyValueMax)) length = kPropertyValueMax - 1;
        std::memcpy(value, fallback, length);
        value[length] = '\0';
        return static_cast<int>(length);
    }
    return ::property_get(key, value, defaultValue);
}

int32_t property_get_int32(const char* key, int32_t defaultValue) {
    if (key == nullptr || key[0] == '\0') return defaultValue;
    return ::property_get_int32(key, defaultValue);
}

int property_set(const char* key, const char* value) {
    if (key == nullptr || key[0] == '\0') return -1;
    const char* text = value != nullptr ? value : "";
    if (std::strlen(text) >= static_cast<size_t>(kPropertyValueMax)) return -1;
    // libcutils reports failure as any negative errno; callers only see -1.
    return ::property_set(key, text) == 0 ? 0 : -1;
}

}  // namespace Properties
}  // namespace Utils
}  // namespace NSCam
