// The registry of every system property the library uses.
//
// Code reads properties through these constants, never through a name written elsewhere, so
// `camtune props` and the docs list exactly what the library reads.
#pragma once

#include <cstddef>
#include <cstdint>

namespace camtune {
namespace props {

enum class Type { Int, String };

struct Property {
    const char* name;
    Type type;
    const char* defaultValue;  // as text, for both types
    const char* meaning;
};

namespace internal {
constexpr int32_t parseDecimal(const char* s) {
    bool negative = *s == '-';
    if (negative) ++s;
    int32_t value = 0;
    for (; *s >= '0' && *s <= '9'; ++s) value = value * 10 + (*s - '0');
    return negative ? -value : value;
}
}  // namespace internal

#define CAMTUNE_PROPERTY(id, type, name, def, meaning) \
    inline constexpr Property id{name, Type::type, def, meaning};
#include "platform/property_registry.def"
#undef CAMTUNE_PROPERTY

// Every registered property, in registry order.
const Property* const* all(size_t* count);
// The registered property called `name`, or null.
const Property* find(const char* name);

// Integer value of an Int property, or its registered default.
int32_t getInt(const Property& property);
// Integer value with a default chosen by the caller.
int32_t getInt(const Property& property, int32_t defaultValue);
// Text value (registered default when unset) into `buf` of kPropertyValueMax bytes; returns its
// length.
int getString(const Property& property, char* buf);
int set(const Property& property, const char* value);
int set(const Property& property, int32_t value);

constexpr int32_t defaultInt(const Property& property) {
    return internal::parseDecimal(property.defaultValue);
}

}  // namespace props
}  // namespace camtune
