// Buffers carried in request metadata: records and payloads of any length pushed with
// push_buffer, entries of any bytes and type put at the carriage tags directly, and request
// identity tags of any type, then dump_buffer. A push must store the category, the module, the
// record and the payload as documented; every file dump_buffer writes must hold exactly the
// payload of an entry naming its category and module.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "camtune/ndd_tables.h"
#include "camtune/platform/metadata.h"
#include "fuzz_records.h"
#include "fuzz_support.h"
#include "ndd/carried_record.h"
#include "ndd_session.h"
#include "platform/host/root.h"

namespace {

using namespace NSCam::TuningUtils;
using camtune::fuzz::check;
using NSCam::IMetadata;

constexpr int kSensorId = 0;
constexpr size_t kMaxOperations = 12;
constexpr size_t kMaxPayload = 4096;

constexpr eModule kCarriedModules[] = {eModule_AAO,     eModule_AAHO,   eModule_AISA,
                                       eModule_AIMA,    eModule_AIFA,   eModule_LTMSO,
                                       eModule_LTM_OUT, eModule_AE_OUT, eModule_CAC};
constexpr uint32_t kIdentityTags[] = {kNddTagPipelineUniqueKey,
                                      kNddTagPipelineFrameNo,
                                      kNddTagPipelineRequestNo,
                                      kNddTagCaptureInfo,
                                      kNddTagStreamingFeature,
                                      kNddTagKey,
                                      kNddTagAction};

Ndd* gNdd = nullptr;

// One constant file name per category and module, so a file can only come from an entry
// naming both, and the folder never fills up.
std::string fileNameOf(int category, int module) {
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    return std::string("carried-") + tables->getCategoryName(category) + "-" +
           tables->getModuleName(module) + ".bin";
}

// Every carried item enabled, for a feature and a stage with or without a name.
std::string configuration() {
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    std::string text;
    for (int category = 0; category < static_cast<int>(tables->categoryCount()); ++category) {
        for (eModule module : kCarriedModules) {
            for (const char* feature : {"", "Preview"}) {
                for (const char* stage : {"", "Default"}) {
                    text += std::string(feature) + "," + stage + "," +
                            fileNameOf(category, module) + "," + tables->getCategoryName(category) +
                            "," + tables->getModuleName(module) + ",1,0\n";
                }
            }
        }
    }
    return text;
}

std::string devicePath(const std::string& name) {
    return gNdd->dumpFolder() + "/" + name;
}

// Puts a value of a type the input picks (the tag's own or not) at `tag`, or leaves it out.
void setTag(FuzzedDataProvider& input, IMetadata& meta, uint32_t tag) {
    IMetadata::IEntry entry(tag);
    switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            return;
        case 1:
            entry.push_back(input.ConsumeIntegral<int32_t>());
            break;
        case 2:
            entry.push_back(input.ConsumeIntegral<int64_t>());
            break;
        default:
            entry.push_back(input.ConsumeIntegral<uint8_t>());
            break;
    }
    meta.update(tag, entry);
}

NddData recordFrom(FuzzedDataProvider& input) {
    NddData data = camtune::fuzz::nddNumbersFrom(input);
    // Mostly items that can be admitted: the streamed sensor, a named stage or none.
    data.sensorId = input.ConsumeIntegralInRange(-1, 2);
    data.stage = input.ConsumeIntegralInRange(-1, 1);
    data.feature = input.ConsumeIntegralInRange(-1, 1);
    data.userStr = input.ConsumeRandomLengthString(64);
    return data;
}

// push_buffer, and what it must have put in `meta`.
void push(FuzzedDataProvider& input, IMetadata& meta) {
    const auto category = static_cast<eCategory>(input.ConsumeIntegralInRange(-1, 2));
    const auto module = static_cast<eModule>(
            input.ConsumeBool() ? kCarriedModules[input.ConsumeIntegralInRange<size_t>(
                                          0, std::size(kCarriedModules) - 1)]
                                : input.ConsumeIntegralInRange<int>(-1, eModule_NUM));
    NddData data = recordFrom(input);
    std::string payload = input.ConsumeRandomLengthString(kMaxPayload);
    const int size = input.ConsumeBool() ? static_cast<int>(payload.size()) : -1;

    const uint32_t tag = carriedTagOf(module);
    const IMetadata before = meta;
    gNdd->push_buffer(category, module, data, payload.data(), size, meta, __FILE__, __LINE__);
    if (tag == 0 || size < 0) {
        check(meta.count() == before.count() &&
                      (tag == 0 ||
                       meta.entryFor(tag).sizeInBytes() == before.entryFor(tag).sizeInBytes()),
              "a push that is refused changed the metadata");
        return;
    }
    const IMetadata::IEntry entry = meta.entryFor(tag);
    check(entry.type() == NSCam::MetaType::Uint8 &&
                  entry.count() == kCarriedHeaderSize + payload.size(),
          "the carried entry is not the header and the payload");
    int32_t storedCategory = 0;
    int32_t storedModule = 0;
    std::memcpy(&storedCategory, entry.data(), sizeof(storedCategory));
    std::memcpy(&storedModule, entry.data() + sizeof(storedCategory), sizeof(storedModule));
    check(storedCategory == category && storedModule == module,
          "the entry does not start with the category and the module");
    check(std::memcmp(entry.data() + kCarriedHeaderSize, payload.data(), payload.size()) == 0,
          "the entry does not end with the payload");
    const NddData stored =
            decodeCarriedRecord(entry.data() + kCarriedHeaderSize - kCarriedRecordSize);
    check(stored.uniqueKey == data.uniqueKey && stored.ruleVersion == data.ruleVersion &&
                  stored.sensorId == data.sensorId && stored.stage == data.stage,
          "the carried record reads back other numbers");
    // The string store is bounded: past it a string travels empty.
    check(stored.userStr == data.userStr || stored.userStr.empty(),
          "the carried record reads back another user string");
}

// An entry of any bytes, or of another type, at a carriage tag or next to one.
void putEntry(FuzzedDataProvider& input, IMetadata& meta) {
    const uint32_t tag =
            input.ConsumeIntegralInRange(kNddTagCarriedFirst - 1, kNddTagCarriedLast + 1);
    IMetadata::IEntry entry(tag);
    if (input.ConsumeBool()) {
        const std::string bytes = input.ConsumeRandomLengthString(kMaxPayload);
        entry.pushBytes(bytes.data(), bytes.size());
    } else {
        entry.push_back(input.ConsumeIntegral<int32_t>());
    }
    meta.update(tag, entry);
}

// What each file may hold after dump_buffer: the payload of a carried entry that names the
// file's category and module. Which one depends on which entries are admitted (the last one
// admitted, in tag order).
std::map<std::string, std::set<std::string>> expectedFiles(const IMetadata& meta) {
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    std::map<std::string, std::set<std::string>> files;
    for (uint32_t tag = kNddTagCarriedFirst; tag <= kNddTagCarriedLast; ++tag) {
        const IMetadata::IEntry entry = meta.entryFor(tag);
        if (entry.type() != NSCam::MetaType::Uint8 || entry.count() < kCarriedHeaderSize) continue;
        int32_t category = 0;
        int32_t module = 0;
        std::memcpy(&category, entry.data(), sizeof(category));
        std::memcpy(&module, entry.data() + sizeof(category), sizeof(module));
        if (category < 0 || static_cast<size_t>(category) >= tables->categoryCount() ||
            module < 0 || static_cast<size_t>(module) >= tables->moduleCount()) {
            continue;
        }
        files[fileNameOf(category, module)].insert(
                std::string(reinterpret_cast<const char*>(entry.data()) + kCarriedHeaderSize,
                            entry.count() - kCarriedHeaderSize));
    }
    return files;
}

std::string readFile(const std::string& path) {
    std::ifstream in(camtune::host::hostPath(path.c_str()), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    gNdd = camtune::fuzz::startNdd(true);
    camtune::fuzz::streamOn(gNdd, configuration(), {kSensorId});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    FuzzedDataProvider input(bytes, size);
    IMetadata meta;
    for (uint32_t tag : kIdentityTags) setTag(input, meta, tag);
    for (size_t i = 0; i < kMaxOperations && input.remaining_bytes() > 0; ++i) {
        if (input.ConsumeBool()) {
            push(input, meta);
        } else {
            putEntry(input, meta);
        }
    }

    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    std::vector<std::string> names;
    for (int category = 0; category < static_cast<int>(tables->categoryCount()); ++category) {
        for (eModule module : kCarriedModules) names.push_back(fileNameOf(category, module));
    }
    for (const std::string& name : names) camtune::fs::unlink(devicePath(name).c_str());

    int32_t frameNo = 0;
    IMetadata::getEntry<int32_t>(&meta, kNddTagPipelineFrameNo, frameNo);
    camtune::fuzz::beginAdmittedFrame(gNdd, kSensorId, frameNo);
    gNdd->dump_buffer(meta);
    gNdd->frame_end(kSensorId, frameNo);

    const std::map<std::string, std::set<std::string>> expected = expectedFiles(meta);
    for (const std::string& name : names) {
        camtune::fs::FileInfo info;
        if (camtune::fs::stat(devicePath(name).c_str(), &info) != 0) continue;
        auto wanted = expected.find(name);
        check(wanted != expected.end(), "dump_buffer wrote a file no entry names");
        check(wanted->second.count(readFile(devicePath(name))) != 0,
              "a dumped file does not hold its entry's payload");
    }
    return 0;
}
