#include "platform/property_registry.h"

#include <cstdio>
#include <cstring>

#include "camtune/platform/properties.h"

namespace camtune {
namespace props {
namespace {

using NSCam::Utils::Properties::property_get;
using NSCam::Utils::Properties::property_get_int32;
using NSCam::Utils::Properties::property_set;

#define CAMTUNE_PROPERTY(id, type, name, def, meaning) &id,
constexpr const Property* kAll[] = {
#include "platform/property_registry.def"
};
#undef CAMTUNE_PROPERTY

}  // namespace

const Property* const* all(size_t* count) {
    *count = sizeof(kAll) / sizeof(kAll[0]);
    return kAll;
}

const Property* find(const char* name) {
    for (const Property* p : kAll) {
        if (std::strcmp(p->name, name) == 0) return p;
    }
    return nullptr;
}

int32_t getInt(const Property& property) {
    return property_get_int32(property.name, defaultInt(property));
}

int32_t getInt(const Property& property, int32_t defaultValue) {
    return property_get_int32(property.name, defaultValue);
}

int getString(const Property& property, char* buf) {
    return property_get(property.name, buf, property.defaultValue);
}

int set(const Property& property, const char* value) {
    return property_set(property.name, value);
}

int set(const Property& property, int32_t value) {
    char text[16];
    std::snprintf(text, sizeof(text), "%d", value);
    return property_set(property.name, text);
}

}  // namespace props
}  // namespace camtune
