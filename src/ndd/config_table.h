// The NDD configuration: one entry per configured item, keyed by "feature,stage,category,module".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace NSCam {
namespace TuningUtils {

// One line of the configuration file.
struct configInfo {
    std::string feature;
    std::string stage;
    std::string format;  // file-name pattern: literal text and bracketed rule names
    std::string category;
    std::string module;
    int enable = 0;
    int dumpin = 0;
};

// Splits a line at every `separator` the way a delimited stream read does: an empty field between
// two separators counts, a trailing separator adds no field, an empty line has no field.
std::vector<std::string> splitFields(const std::string& line, char separator);

enum class ConfigLineStatus { Ok, WrongFieldCount, BadNumber };
// Reads one configuration line: seven fields, the last two decimal integers.
ConfigLineStatus parseConfigLine(const std::string& line, configInfo* out);

class ConfigTable {
public:
    using Entry = std::pair<const std::string, configInfo>;

    ConfigTable();

    // Stores `info` under its key, replacing an entry with the same key.
    void put(configInfo info);
    // The entry of the four names, or null. Allocates nothing.
    const configInfo* find(std::string_view feature, std::string_view stage,
                           std::string_view category, std::string_view module) const;
    void clear();
    size_t size() const { return mEntries.size(); }
    // Every entry, in no particular order.
    const std::unordered_map<std::string, configInfo>& entries() const { return mEntries; }

    static std::string keyOf(const configInfo& info);

private:
    std::unordered_map<std::string, configInfo> mEntries;
    // Lookup by the key's hash, so a query needs no std::string. Map nodes never move, so the
    // pointers stay valid until their entry is erased.
    std::unordered_multimap<size_t, const Entry*> mIndex;
};

}  // namespace TuningUtils
}  // namespace NSCam
