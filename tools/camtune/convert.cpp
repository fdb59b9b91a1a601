// camtune convert: dumped images as PNG pictures, or Bayer dumps as DNG raw files.
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "cli_parse.h"
#include "command.h"
#include "dng_writer.h"
#include "example_files.h"
#include "image_bayer.h"
#include "image_decode.h"
#include "image_file.h"
#include "image_geometry.h"
#include "image_names.h"
#include "json_text.h"
#include "png_writer.h"

namespace camtune {
namespace cli {
namespace {

namespace stdfs = std::filesystem;
using image::ImageGeometry;

struct ConvertOptions {
    bool dng = false;
    bool plane = false;
    std::string folder = ".";
    image::GeometryOverrides overrides;
};

// `text` broken at spaces into lines of at most `width` characters.
std::string wrapped(const std::string& text, size_t width) {
    std::string out;
    size_t lineStart = 0;
    for (size_t at = 0; at < text.size();) {
        size_t end = text.find(' ', at);
        if (end == std::string::npos) end = text.size();
        if (end - lineStart > width && at > lineStart) {
            out.back() = '\n';
            lineStart = at;
        }
        out.append(text, at, end - at + 1);
        at = end + 1;
    }
    return out;
}

std::string description() {
    return "Converts dumped images into pictures. By default each becomes a PNG: YUV as RGB,\n"
           "Bayer demosaiced bilinearly after its black level is removed. --plane writes the\n"
           "first plane as a grey PNG without loss (a Bayer mosaic as stored, shifted to fill\n"
           "16 bits). --dng writes a Bayer dump as a DNG raw file: one 16-bit CFA plane, black\n"
           "level 1/16 of the range (64 at 10 bits), white level all ones.\n"
           "\n"
           "Size, format, stride, bit depth and Bayer order come from the file's name as\n"
           "'camtune parse' decodes it (NDD names with --config, else the copy NDD left in the\n"
           "dump's folder, else the example); the options add what the name lacks or override\n"
           "it.\n"
           "Bayer orders: 0 BGGR, 1 GBRG, 2 GRBG, 3 RGGB.\n" +
           wrapped("Formats: " + image::decodableNames() + ".", 84) +
           "\n"
           "\n"
           "Each output is named after its input, with .png or .dng for the extension, in the\n"
           "output folder; an output that would replace its input is refused. A file whose\n"
           "geometry is unknown or whose size does not fit it is reported and nothing is\n"
           "written for it; the other files are still converted.\n"
           "\n"
           "Exit status: 0 every file converted, 1 a file could not be converted, 2 bad usage,\n"
           "an output folder that cannot be made or an NDD configuration that cannot be read.";
}

bool parseSize(const std::string& text, int* width, int* height) {
    char x = 0, extra = 0;
    return std::sscanf(text.c_str(), "%d%c%d%c", width, &x, height, &extra) == 3 && x == 'x' &&
           *width > 0 && *height > 0;
}

class Converter {
public:
    Converter(const ConvertOptions& options, image::DumpNames& names)
        : mOptions(options), mNames(names) {}

    // Converts one file; false with `error` when nothing was written for it.
    bool convert(const std::string& input, nlohmann::ordered_json* entry, std::string* error) {
        uint64_t size = 0;
        if (!image::inputFileSize(input, &size, error)) return false;
        ImageGeometry geometry;
        if (!geometryOf(input, size, &geometry, error)) return false;
        if (!fitsOutput(geometry, error)) return false;
        (*entry)["format"] = geometry.format->info->name;
        (*entry)["width"] = geometry.width;
        (*entry)["height"] = geometry.height;
        (*entry)["stride"] = geometry.stride;
        if (geometry.format->isBayer()) {
            (*entry)["bits"] = geometry.bits;
            if (geometry.order >= 0) (*entry)["cfa"] = image::cfaName(geometry.order);
        }

        const std::string output = outputPath(input);
        if (!claimOutput(input, output, error)) return false;
        std::vector<uint8_t> bytes;
        if (!image::readInputFile(input, size, &bytes, error)) return false;
        image::OutputFile file(output);
        if (!file.create(error) || !write(bytes.data(), geometry, file, error) ||
            !file.commit(error)) {
            return false;
        }
        (*entry)["output"] = output;
        mSummary = geometry.describe();
        if (geometry.format->isBayer()) {
            mSummary += ", " + std::to_string(geometry.bits) + " bits";
            if (geometry.order >= 0) mSummary += std::string(", ") + image::cfaName(geometry.order);
        }
        return true;
    }

    const std::string& summary() const { return mSummary; }

private:
    bool geometryOf(const std::string& input, uint64_t size, ImageGeometry* geometry,
                    std::string* error) {
        parse::Decoded decoded;
        std::string reason;
        const bool named = mNames.decode(input, &decoded, &reason);
        if (image::resolveGeometry(named ? &decoded : nullptr, mOptions.overrides, size, geometry,
                                   error)) {
            return true;
        }
        if (!named) *error += " (the name is none the library composes: " + reason + ")";
        return false;
    }

    bool fitsOutput(const ImageGeometry& geometry, std::string* error) const {
        const bool bayer = geometry.format->isBayer();
        if (mOptions.dng && !bayer) {
            *error = std::string("a DNG holds Bayer data; ") + geometry.format->info->name +
                     " is not";
            return false;
        }
        if (bayer && !mOptions.plane && geometry.order < 0) {
            *error = "the name gives no Bayer order; give --order 0 to 3 (0 BGGR, 1 GBRG, "
                     "2 GRBG, 3 RGGB), or --plane for the mosaic as grey";
            return false;
        }
        return true;
    }

    std::string outputPath(const std::string& input) const {
        stdfs::path name = stdfs::path(input).filename();
        name.replace_extension(mOptions.dng ? ".dng" : ".png");
        return (stdfs::path(mOptions.folder) / name).string();
    }

    // Refuses to replace the input, or what another input of this run wrote.
    bool claimOutput(const std::string& input, const std::string& output, std::string* error) {
        std::error_code ignored;
        if (stdfs::equivalent(input, output, ignored)) {
            *error = "the output " + output + " would replace the input";
            return false;
        }
        const std::string key = stdfs::weakly_canonical(output, ignored).string();
        if (!mClaimed.insert(key).second) {
            *error = "another input of this run was converted to " + output;
            return false;
        }
        return true;
    }

    bool write(const uint8_t* bytes, const ImageGeometry& geometry, image::OutputFile& file,
               std::string* error) const {
        if (mOptions.dng) {
            const std::vector<uint16_t> mosaic = image::unpackMosaic(bytes, geometry);
            return image::writeDng(
                    file.temporaryPath(),
                    {&mosaic, geometry.width, geometry.height, geometry.order, geometry.bits},
                    error);
        }
        const image::Picture picture = mOptions.plane ? image::decodePlane(bytes, geometry)
                                                      : image::decodePicture(bytes, geometry);
        std::vector<uint8_t> png;
        return image::encodePng(picture, &png, error) &&
               file.writeAll(png.data(), png.size(), error);
    }

    const ConvertOptions& mOptions;
    image::DumpNames& mNames;
    std::set<std::string> mClaimed;
    std::string mSummary;
};

int runConvert(const Args& args) {
    std::vector<std::string> inputs;
    ConvertOptions options;
    std::string size, format, config = kDefaultNddConfig;
    bool png = false, json = false;

    CLI::App app(description(), "camtune convert");
    app.add_option("files", inputs, "dumped image files")->required();
    auto* pngFlag = app.add_flag("--png", png, "write PNG pictures (the default)");
    app.add_flag("--dng", options.dng, "write Bayer dumps as DNG raw files")->excludes(pngFlag);
    app.add_flag("--plane", options.plane, "write the first plane (the Bayer mosaic) as grey");
    app.add_option("-o,--output", options.folder, "output folder, made when missing")
            ->capture_default_str();
    app.add_option("--size", size, "image size WxH");
    app.add_option("--format", format, "image format (see the list above)");
    app.add_option("--stride", options.overrides.stride, "bytes a row of the first plane")
            ->check(CLI::Range(size_t{1}, size_t{1} << 24));
    app.add_option("--bits", options.overrides.bits, "significant bits of a Bayer sample")
            ->check(CLI::Range(1, 16));
    app.add_option("--order", options.overrides.order,
                   "Bayer order: 0 BGGR, 1 GBRG, 2 GRBG, 3 RGGB")
            ->check(CLI::Range(0, 3));
    auto* configOption = app.add_option(
            "--config", config, "NDD configuration of every dump (default: its folder's copy)");
    app.add_flag("--json", json, "print a JSON array, one object per file");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;

    auto usage = [](const std::string& message) {
        std::fprintf(stderr, "camtune convert: %s\n", message.c_str());
        return 2;
    };
    if (options.dng && options.plane) return usage("--plane writes PNG; it does not go with --dng");
    if (!size.empty() && !parseSize(size, &options.overrides.width, &options.overrides.height)) {
        return usage("--size: '" + size + "' is not WxH");
    }
    if (!format.empty()) {
        options.overrides.format = image::findDecodable(format);
        if (options.overrides.format == nullptr) {
            return usage("--format: cannot decode '" + format + "' (one of " +
                         image::decodableNames() + ")");
        }
    }
    if (configOption->count() > 0) {
        parse::NameDecoder probe;
        std::string error;
        std::vector<std::string> warnings;
        if (!probe.loadNddConfig(config, &error, &warnings)) return usage(error);
    }
    std::error_code made;
    stdfs::create_directories(options.folder, made);
    if (made || !stdfs::is_directory(options.folder)) {
        return usage("cannot use " + options.folder + " as the output folder: " +
                     (made ? made.message() : std::string("not a folder")));
    }

    image::DumpNames names(config, configOption->count() > 0);
    Converter converter(options, names);
    int status = 0;
    nlohmann::ordered_json results = nlohmann::ordered_json::array();
    for (const std::string& input : inputs) {
        nlohmann::ordered_json entry = {{"input", input}};
        std::string error;
        if (!converter.convert(input, &entry, &error)) {
            std::fprintf(stderr, "camtune convert: %s: %s\n", input.c_str(), error.c_str());
            entry["error"] = error;
            status = 1;
        } else if (!json) {
            std::printf("%s -> %s (%s)\n", input.c_str(),
                        entry["output"].get<std::string>().c_str(), converter.summary().c_str());
        }
        results.push_back(std::move(entry));
    }
    if (json) std::printf("%s\n", jsonText(results, 2).c_str());
    return status;
}

}  // namespace

CAMTUNE_COMMAND("convert", "turn dumped images into PNG pictures or DNG raw files", runConvert);

}  // namespace cli
}  // namespace camtune
