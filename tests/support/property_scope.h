// Sets system properties for one test and restores every one of them afterwards.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/property_registry.h"

namespace camtune {
namespace test {

class PropertyScope {
public:
    PropertyScope() = default;
    ~PropertyScope();
    PropertyScope(const PropertyScope&) = delete;
    PropertyScope& operator=(const PropertyScope&) = delete;

    void set(const props::Property& property, const std::string& value);
    void set(const props::Property& property, int value);
    void set(const char* key, const std::string& value);
    // Empties the property, which reads as unset.
    void clear(const props::Property& property) { set(property, std::string()); }

private:
    std::vector<std::pair<std::string, std::string>> mSaved;  // key, value before the first set
};

}  // namespace test
}  // namespace camtune
