// NDD file names: a file-name pattern, an item's record and an image's geometry, all from the
// input, named by get_filename for a raw buffer and for an image. The path query for the raw
// buffer must write a terminated path within kNddPathMax bytes, in the dump folder, and refuse
// (leaving the buffer alone) exactly the names that cannot be a file of that folder: empty,
// holding a '/' or a NUL, "." or "..", or too long.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "camtune/ndd_tables.h"
#include "camtune/platform/image_buffer.h"
#include "fuzz_records.h"
#include "fuzz_support.h"
#include "naming/dump_format_names.h"
#include "ndd/item_names.h"
#include "ndd_session.h"

namespace {

using namespace NSCam::TuningUtils;
using camtune::fuzz::check;

// Every naming rule prints into a buffer of 100 bytes.
constexpr size_t kLongestPiece = 99;

Ndd* gNdd = nullptr;

// An image that reports whatever geometry the input gives it and has no pixels: naming reads
// only the geometry.
class GeometryImage : public NSCam::IImageBuffer {
public:
    explicit GeometryImage(FuzzedDataProvider& input) {
        size_t count = 0;
        const camtune::naming::DumpFormatNames* formats = camtune::naming::dumpFormatNames(&count);
        mFormat = input.ConsumeBool()
                          ? formats[input.ConsumeIntegralInRange<size_t>(0, count - 1)].code
                          : input.ConsumeIntegral<int32_t>();
        mSize.w = input.ConsumeIntegral<int32_t>();
        mSize.h = input.ConsumeIntegral<int32_t>();
        mStride = input.ConsumeIntegral<size_t>();
        mPlaneBits = input.ConsumeIntegral<size_t>();
        mImageBits = input.ConsumeIntegral<size_t>();
        mRows = input.ConsumeIntegral<size_t>();
    }

    NSCam::MSize getImgSize() const override { return mSize; }
    int32_t getImgFormat() const override { return mFormat; }
    size_t getPlaneCount() const override { return 1; }
    size_t getImgBitsPerPixel() const override { return mImageBits; }
    size_t getPlaneBitsPerPixel(size_t) const override { return mPlaneBits; }
    size_t getBufStridesInBytes(size_t) const override { return mStride; }
    size_t getBufHeight(size_t) const override { return mRows; }
    size_t getBufSizeInBytes(size_t) const override { return 0; }
    uint8_t* getBufVA(size_t) const override { return nullptr; }
    bool lockBuf(const char*, uint32_t) override { return false; }
    bool unlockBuf(const char*) override { return false; }
    bool syncCache(int32_t) override { return false; }
    bool saveToFile(const char*) override { return false; }
    bool loadFromFile(const char*) override { return false; }

private:
    int32_t mFormat;
    NSCam::MSize mSize;
    size_t mStride, mPlaneBits, mImageBits, mRows;
};

NddData recordFrom(FuzzedDataProvider& input) {
    NddData data = camtune::fuzz::nddNumbersFrom(input);
    // On-device tuning keeps an instance per sensor id it is asked about, so ids stay few: the
    // named ones and one beyond on each side.
    const int32_t sensors = static_cast<int32_t>(NddAutoGenExcel2C::getInstance()->sensorIdCount());
    data.sensorId = input.ConsumeIntegralInRange<int32_t>(-1, sensors);
    // Features beyond the last named one are refused before naming.
    data.feature = input.ConsumeIntegralInRange<int32_t>(-2, Ndd::kMaxFeature + 1);
    data.userStr = input.ConsumeRandomLengthString(2 * kLongestPiece);
    return data;
}

// A file name the dump folder can hold.
bool isFileName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string("/\0", 2)) == std::string::npos;
}

// Each bracketed rule of the pattern prints at most one piece.
void checkLength(const std::string& name, const std::string& pattern) {
    const size_t rules = static_cast<size_t>(std::count(pattern.begin(), pattern.end(), '['));
    check(name.size() <= pattern.size() + rules * kLongestPiece, "a rule printed a long piece");
}

void checkRawQuery(eCategory category, eModule module, const NddData& data,
                   const std::string& name) {
    NddData queried = data;
    camtune::fuzz::GuardedBuffer out(kNddPathMax);
    const bool named =
            gNdd->query_file_path(category, module, queried, out.data(), __FILE__, __LINE__);
    check(out.guardIntact(), "query_file_path wrote past kNddPathMax");
    const std::string path = gNdd->dumpFolder() + "/" + name;
    check(named == (isFileName(name) && path.size() < kNddPathMax),
          "query_file_path refused a usable name or named an unusable one");
    if (!named) {
        check(out.untouched(), "query_file_path failed but wrote into the buffer");
        return;
    }
    check(out.terminated() && path == out.data(), "query_file_path wrote another path");
}

void checkImagePath(eCategory category, eModule module, NddData data, GeometryImage* image) {
    gNdd->handleimgbuf(data, image);
    NddData named = data;
    const std::string name = gNdd->get_filename(category, module, named, image);
    std::string path;
    const bool composed = gNdd->composePath(category, module, data, image, &path);
    check(composed == isFileName(name), "an image's name was refused or passed wrongly");
    check(!composed || path == gNdd->dumpFolder() + "/" + name, "an image's path is not its name");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    gNdd = camtune::fuzz::startNdd(false);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    FuzzedDataProvider input(bytes, size);
    const NddAutoGenExcel2C* tables = NddAutoGenExcel2C::getInstance();
    const auto category = static_cast<eCategory>(
            input.ConsumeIntegralInRange<size_t>(0, tables->categoryCount() - 1));
    const auto module = static_cast<eModule>(
            input.ConsumeIntegralInRange<size_t>(0, tables->moduleCount() - 1));
    const NddData data = recordFrom(input);
    GeometryImage image(input);
    std::string pattern = input.ConsumeRemainingBytesAsString();
    // A separator would split the configuration line the pattern sits in.
    std::replace(pattern.begin(), pattern.end(), ',', '_');
    std::replace(pattern.begin(), pattern.end(), '\n', '_');

    // One line for the item, under the names its own feature and stage look it up by.
    const std::string line = std::string(nddFeatureName(data.feature)) + "," +
                             nddStageName(data.stage) + "," + pattern + "," +
                             tables->getCategoryName(category) + "," +
                             tables->getModuleName(module) + ",1,0\n";
    camtune::fuzz::streamOn(gNdd, line, {data.sensorId});
    camtune::fuzz::beginAdmittedFrame(gNdd, data.sensorId, data.frameNo);

    NddData raw = data;
    const std::string name = gNdd->get_filename(category, module, raw, nullptr);
    checkLength(name, pattern);
    if (data.feature <= Ndd::kMaxFeature) checkRawQuery(category, module, data, name);
    checkImagePath(category, module, data, &image);

    gNdd->frame_end(data.sensorId, data.frameNo);
    gNdd->stream_off({data.sensorId});
    return 0;
}
