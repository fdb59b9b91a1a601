#include "image_geometry.h"

#include <cstdlib>
#include <vector>

namespace camtune {
namespace cli {
namespace image {
namespace {

// Larger sides are taken for a misread name rather than an image.
constexpr int64_t kMaxSide = 32768;

// The first of `names` that the fields hold as a number; the naming functions and NDD spell
// the same value differently ("buf_stride" / "buffer_width").
int64_t numberField(const parse::Fields& fields, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        auto it = fields.find(name);
        if (it != fields.end() && it->is_number_integer()) return it->get<int64_t>();
    }
    return -1;
}

std::string textField(const parse::Fields& fields, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        auto it = fields.find(name);
        if (it != fields.end() && it->is_string()) return it->get<std::string>();
    }
    return "";
}

struct NameFacts {
    int64_t width = -1;
    int64_t height = -1;
    int64_t stride = -1;
    int64_t rows = -1;
    int64_t bits = -1;
    int64_t order = -1;
    std::vector<std::string> formats;
    std::string kind;
};

NameFacts factsOf(const parse::Decoded* decoded) {
    NameFacts facts;
    if (decoded == nullptr) return facts;
    const parse::Fields& fields = decoded->fields;
    facts.kind = decoded->kind;
    facts.width = numberField(fields, {"width"});
    facts.height = numberField(fields, {"height"});
    facts.stride = numberField(fields, {"buf_stride", "buffer_width"});
    facts.rows = numberField(fields, {"buf_height", "padded_height"});
    facts.bits = numberField(fields, {"bits", "bit_depth"});
    facts.order = numberField(fields, {"colour_order", "bayer_order"});
    auto formats = fields.find("formats");
    if (formats != fields.end() && formats->is_array()) {
        for (const auto& name : *formats) facts.formats.push_back(name.get<std::string>());
    }
    return facts;
}

// Formats of the name that camtune decodes and that fit its kind and bit depth.
bool candidatesFromName(const NameFacts& facts, int bits, std::vector<const DecodableFormat*>* out,
                        std::string* error) {
    std::string undecodable;
    for (const std::string& name : facts.formats) {
        const DecodableFormat* format = findDecodable(name);
        if (format == nullptr) {
            undecodable += (undecodable.empty() ? "" : ", ") + name;
            continue;
        }
        // The naming functions name raw buffers "raw" and processed ones "yuv".
        if (facts.kind == "raw" && !format->isBayer()) continue;
        if (facts.kind == "yuv" && format->isBayer()) continue;
        if (bits > 0 && format->arrangement == Arrangement::BayerPacked && format->depth != bits) {
            continue;
        }
        if (bits > 0 && format->arrangement == Arrangement::BayerWords && format->depth < bits) {
            continue;
        }
        out->push_back(format);
    }
    if (!out->empty()) return true;
    if (!undecodable.empty()) {
        *error = "cannot decode " + undecodable + " (camtune decodes " + decodableNames() + ")";
    } else {
        *error = "the name gives no image format camtune decodes; give --format NAME";
    }
    return false;
}

bool candidateGeometry(const DecodableFormat* format, const NameFacts& facts,
                       const GeometryOverrides& overrides, int width, int height,
                       ImageGeometry* out, std::string* error) {
    ImageGeometry geometry;
    if (format->arrangement == Arrangement::Yuyv && width % 2 != 0) {
        *error = std::string(format->info->name) + " pairs its pixels: width " +
                 std::to_string(width) + " is odd";
        return false;
    }
    geometry.format = format;
    geometry.width = width;
    geometry.height = height;
    const size_t packed = packedRowBytes(*format->info, 0, width);
    geometry.stride = overrides.stride > 0 ? overrides.stride
                      : facts.stride > 0   ? static_cast<size_t>(facts.stride)
                                           : packed;
    if (geometry.stride < packed) {
        *error = "stride " + std::to_string(geometry.stride) + " is less than the " +
                 std::to_string(packed) + " bytes a row of " + std::to_string(width) + " " +
                 format->info->name + " pixels takes";
        return false;
    }
    geometry.rows = facts.rows >= height ? static_cast<size_t>(facts.rows) : height;
    const int bits = overrides.bits > 0 ? overrides.bits : static_cast<int>(facts.bits);
    geometry.bits = format->depth;
    if (format->arrangement == Arrangement::BayerWords && bits > 0) {
        geometry.bits = bits;  // a word holds up to 16 significant bits
    } else if (format->arrangement == Arrangement::BayerPacked && bits > 0 &&
               bits != format->depth) {
        *error = std::string(format->info->name) + " holds " + std::to_string(format->depth) +
                 "-bit samples, not " + std::to_string(bits);
        return false;
    }
    geometry.order = overrides.order >= 0 ? overrides.order : static_cast<int>(facts.order);
    *out = geometry;
    return true;
}

}  // namespace

bool resolveGeometry(const parse::Decoded* decoded, const GeometryOverrides& overrides,
                     uint64_t fileSize, ImageGeometry* out, std::string* error) {
    const NameFacts facts = factsOf(decoded);
    const int64_t width = overrides.width > 0 ? overrides.width : facts.width;
    const int64_t height = overrides.height > 0 ? overrides.height : facts.height;
    if (width <= 0 || height <= 0) {
        *error = "the name gives no image size; give --size WxH";
        return false;
    }
    if (width > kMaxSide || height > kMaxSide) {
        *error = "image size " + std::to_string(width) + "x" + std::to_string(height) +
                 " is beyond " + std::to_string(kMaxSide) + " pixels a side";
        return false;
    }
    std::vector<const DecodableFormat*> candidates;
    if (overrides.format != nullptr) {
        candidates.push_back(overrides.format);
    } else if (!candidatesFromName(
                       facts, overrides.bits > 0 ? overrides.bits : static_cast<int>(facts.bits),
                       &candidates, error)) {
        return false;
    }

    std::vector<ImageGeometry> fitting;
    std::string sizes;
    for (const DecodableFormat* format : candidates) {
        ImageGeometry geometry;
        if (!candidateGeometry(format, facts, overrides, static_cast<int>(width),
                               static_cast<int>(height), &geometry, error)) {
            if (candidates.size() == 1) return false;
            continue;
        }
        if (geometry.byteSize() == fileSize) {
            fitting.push_back(geometry);
        } else {
            sizes += (sizes.empty() ? "" : "; ") + geometry.describe() + " needs " +
                     std::to_string(geometry.byteSize()) + " bytes";
        }
    }
    if (fitting.empty()) {
        *error = "the file is " + std::to_string(fileSize) + " bytes but " +
                 (sizes.empty() ? "no format fits" : sizes);
        return false;
    }
    // Unpacked Bayer formats share one layout: the one of the given depth wins, else the
    // deepest. Any other pair that fits leaves the format open.
    const int bits = overrides.bits > 0 ? overrides.bits : static_cast<int>(facts.bits);
    auto exact = [bits](const ImageGeometry& geometry) {
        return bits > 0 && geometry.format->depth == bits;
    };
    const ImageGeometry* chosen = &fitting.front();
    for (const ImageGeometry& other : fitting) {
        if (&other == chosen) continue;
        if (other.format->arrangement != Arrangement::BayerWords ||
            chosen->format->arrangement != Arrangement::BayerWords) {
            *error = std::string("the name fits both ") + chosen->format->info->name + " and " +
                     other.format->info->name + "; give --format NAME";
            return false;
        }
        if (exact(other) || (!exact(*chosen) && other.format->depth > chosen->format->depth)) {
            chosen = &other;
        }
    }
    *out = *chosen;
    return true;
}

std::string sensorOf(const parse::Decoded& decoded) {
    return textField(decoded.fields, {"sensor_id", "sensor"});
}

std::string moduleOf(const parse::Decoded& decoded) {
    if (decoded.config.is_object()) return textField(decoded.config, {"module"});
    const std::string port = textField(decoded.fields, {"port"});
    if (!port.empty()) return port;
    return decoded.kind;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
