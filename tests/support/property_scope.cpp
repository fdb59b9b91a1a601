#include "support/property_scope.h"

#include <algorithm>

#include "camtune/platform/properties.h"

namespace camtune {
namespace test {

using NSCam::Utils::Properties::kPropertyValueMax;
using NSCam::Utils::Properties::property_get;
using NSCam::Utils::Properties::property_set;

PropertyScope::~PropertyScope() {
    // Restore in reverse so a key set twice ends at its original value.
    for (auto it = mSaved.rbegin(); it != mSaved.rend(); ++it) {
        property_set(it->first.c_str(), it->second.c_str());
    }
}

void PropertyScope::set(const char* key, const std::string& value) {
    bool saved = std::any_of(mSaved.begin(), mSaved.end(),
                             [&](const auto& entry) { return entry.first == key; });
    if (!saved) {
        char previous[kPropertyValueMax];
        property_get(key, previous, "");
        mSaved.emplace_back(key, previous);
    }
    property_set(key, value.c_str());
}

void PropertyScope::set(const props::Property& property, const std::string& value) {
    set(property.name, value);
}

void PropertyScope::set(const props::Property& property, int value) {
    set(property.name, std::to_string(value));
}

}  // namespace test
}  // namespace camtune
