#include "dng_writer.h"

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <memory>

#include "image_bayer.h"

namespace camtune {
namespace cli {
namespace image {
namespace {

constexpr uint8_t kDngVersion[4] = {1, 4, 0, 0};
constexpr uint8_t kDngBackwardVersion[4] = {1, 1, 0, 0};
constexpr uint16_t kCfaRepeat[2] = {2, 2};
constexpr char kCameraModel[] = "camtune dump";
constexpr uint16_t kIlluminantD65 = 21;
// XYZ (D65) to linear sRGB: the dump carries no calibration, so its colours are taken as sRGB's.
constexpr float kXyzToSrgb[9] = {3.2406f, -1.5372f, -0.4986f, -0.9689f, 1.8758f,
                                 0.0415f, 0.0557f,  -0.2040f, 1.0570f};
constexpr float kNeutral[3] = {1.0f, 1.0f, 1.0f};

int keepError(TIFF*, void* message, const char* module, const char* format, va_list args) {
    char text[512];
    std::vsnprintf(text, sizeof(text), format, args);
    *static_cast<std::string*>(message) =
            std::string(module != nullptr ? module : "libtiff") + ": " + text;
    return 1;
}

int ignoreWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

struct OptionsDeleter {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
struct TiffCloser {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

bool setTags(TIFF* tiff, const DngMosaic& mosaic) {
    const CfaColour* tile = cfaTile(mosaic.order);
    const uint8_t pattern[4] = {tile[0], tile[1], tile[2], tile[3]};
    const Levels levels = bayerLevels(mosaic.bits);
    const float black = static_cast<float>(levels.black);
    const uint32_t white = levels.white;
    return TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, 0) &&
           TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(mosaic.width)) &&
           TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(mosaic.height)) &&
           TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 16) &&
           TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1) &&
           TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE) &&
           TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CFA) &&
           TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) &&
           TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) &&
           TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0)) &&
           TIFFSetField(tiff, TIFFTAG_MAKE, "camtune") &&
           TIFFSetField(tiff, TIFFTAG_MODEL, kCameraModel) &&
           TIFFSetField(tiff, TIFFTAG_UNIQUECAMERAMODEL, kCameraModel) &&
           TIFFSetField(tiff, TIFFTAG_DNGVERSION, kDngVersion) &&
           TIFFSetField(tiff, TIFFTAG_DNGBACKWARDVERSION, kDngBackwardVersion) &&
           TIFFSetField(tiff, TIFFTAG_CFAREPEATPATTERNDIM, kCfaRepeat) &&
           TIFFSetField(tiff, TIFFTAG_CFAPATTERN, 4, pattern) &&
           TIFFSetField(tiff, TIFFTAG_BLACKLEVEL, 1, &black) &&
           TIFFSetField(tiff, TIFFTAG_WHITELEVEL, 1, &white) &&
           TIFFSetField(tiff, TIFFTAG_COLORMATRIX1, 9, kXyzToSrgb) &&
           TIFFSetField(tiff, TIFFTAG_CALIBRATIONILLUMINANT1, kIlluminantD65) &&
           TIFFSetField(tiff, TIFFTAG_ASSHOTNEUTRAL, 3, kNeutral);
}

}  // namespace

bool writeDng(const std::string& path, const DngMosaic& mosaic, std::string* error) {
    if (cfaTile(mosaic.order) == nullptr) {
        *error = "no colour-filter order";
        return false;
    }
    std::string message = "libtiff failed";
    std::unique_ptr<TIFFOpenOptions, OptionsDeleter> options(TIFFOpenOptionsAlloc());
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepError, &message);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), ignoreWarning, nullptr);
    std::unique_ptr<TIFF, TiffCloser> tiff(TIFFOpenExt(path.c_str(), "w", options.get()));
    bool ok = tiff != nullptr && setTags(tiff.get(), mosaic);
    std::vector<uint16_t> row(mosaic.width);
    for (int y = 0; ok && y < mosaic.height; ++y) {
        const uint16_t* from = mosaic.samples->data() + static_cast<size_t>(y) * mosaic.width;
        row.assign(from, from + mosaic.width);
        ok = TIFFWriteScanline(tiff.get(), row.data(), static_cast<uint32_t>(y), 0) == 1;
    }
    if (ok) ok = TIFFFlush(tiff.get()) == 1;
    if (!ok) *error = message;
    return ok;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
