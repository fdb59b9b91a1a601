#include "ndd/config_table.h"

#include <cstring>
#include <stdexcept>

namespace NSCam {
namespace TuningUtils {
namespace {

constexpr char kKeySeparator = ',';
constexpr size_t kFieldCount = 7;
// Keys are composed on the stack; every name of the tables fits many times over.
constexpr size_t kKeyBufferSize = 512;

size_t hashKey(std::string_view key) {
    return std::hash<std::string_view>()(key);
}

bool toInt(const std::string& text, int* out) {
    try {
        *out = std::stoi(text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

std::vector<std::string> splitFields(const std::string& line, char separator) {
    std::vector<std::string> fields;
    size_t start = 0;
    while (start < line.size()) {
        size_t end = line.find(separator, start);
        if (end == std::string::npos) {
            fields.push_back(line.substr(start));
            break;
        }
        fields.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    return fields;
}

ConfigLineStatus parseConfigLine(const std::string& line, configInfo* out) {
    std::vector<std::string> fields = splitFields(line, kKeySeparator);
    if (fields.size() != kFieldCount) return ConfigLineStatus::WrongFieldCount;
    configInfo info;
    if (!toInt(fields[5], &info.enable) || !toInt(fields[6], &info.dumpin)) {
        return ConfigLineStatus::BadNumber;
    }
    info.feature = std::move(fields[0]);
    info.stage = std::move(fields[1]);
    info.format = std::move(fields[2]);
    info.category = std::move(fields[3]);
    info.module = std::move(fields[4]);
    *out = std::move(info);
    return ConfigLineStatus::Ok;
}

ConfigTable::ConfigTable() {
    mEntries.max_load_factor(1.0f);
    mIndex.max_load_factor(1.0f);
}

std::string ConfigTable::keyOf(const configInfo& info) {
    std::string key;
    key.reserve(info.feature.size() + info.stage.size() + info.category.size() +
                info.module.size() + 3);
    key.append(info.feature).append(1, kKeySeparator).append(info.stage);
    key.append(1, kKeySeparator).append(info.category).append(1, kKeySeparator);
    key.append(info.module);
    return key;
}

void ConfigTable::put(configInfo info) {
    std::string key = keyOf(info);
    auto [it, inserted] = mEntries.insert_or_assign(std::move(key), std::move(info));
    if (inserted) mIndex.emplace(hashKey(it->first), &*it);
}

const configInfo* ConfigTable::find(std::string_view feature, std::string_view stage,
                                    std::string_view category, std::string_view module) const {
    char buffer[kKeyBufferSize];
    const std::string_view parts[] = {feature, stage, category, module};
    size_t length = 0;
    for (size_t i = 0; i < 4; ++i) {
        if (length + parts[i].size() + 1 > sizeof(buffer)) return nullptr;
        if (i != 0) buffer[length++] = kKeySeparator;
        std::memcpy(buffer + length, parts[i].data(), parts[i].size());
        length += parts[i].size();
    }
    std::string_view key(buffer, length);
    auto [first, last] = mIndex.equal_range(hashKey(key));
    for (auto it = first; it != last; ++it) {
        if (it->second->first == key) return &it->second->second;
    }
    return nullptr;
}

void ConfigTable::clear() {
    mIndex.clear();
    mEntries.clear();
}

}  // namespace TuningUtils
}  // namespace NSCam
