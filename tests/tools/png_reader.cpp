#include "png_reader.h"

#include <png.h>

#include <cstdio>
#include <memory>

namespace camtune {
namespace test {
namespace {

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};

struct ReadState {
    png_structp png = nullptr;
    png_infop info = nullptr;
    ~ReadState() { png_destroy_read_struct(&png, info != nullptr ? &info : nullptr, nullptr); }
};

// Nothing with a destructor is made after setjmp, so a libpng error skips none.
bool decode(ReadState& state, FILE* file, PngImage* image, std::vector<uint8_t>* bytes) {
    if (setjmp(png_jmpbuf(state.png))) return false;
    png_init_io(state.png, file);
    png_read_info(state.png, state.info);
    image->width = static_cast<int>(png_get_image_width(state.png, state.info));
    image->height = static_cast<int>(png_get_image_height(state.png, state.info));
    image->depth = png_get_bit_depth(state.png, state.info);
    const int type = png_get_color_type(state.png, state.info);
    if (type != PNG_COLOR_TYPE_GRAY && type != PNG_COLOR_TYPE_RGB) return false;
    image->channels = type == PNG_COLOR_TYPE_RGB ? 3 : 1;
    png_color_8p significant = nullptr;
    image->significantBits = image->depth;
    if (png_get_sBIT(state.png, state.info, &significant) != 0) {
        image->significantBits = image->channels == 1 ? significant->gray : significant->red;
    }
    const size_t rowBytes = png_get_rowbytes(state.png, state.info);
    bytes->resize(rowBytes * image->height);
    for (int y = 0; y < image->height; ++y) {
        png_read_row(state.png, bytes->data() + y * rowBytes, nullptr);
    }
    return true;
}

}  // namespace

bool readPng(const std::string& path, PngImage* image, std::string* error) {
    std::unique_ptr<FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        *error = "cannot open " + path;
        return false;
    }
    ReadState state;
    state.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (state.png != nullptr) state.info = png_create_info_struct(state.png);
    std::vector<uint8_t> bytes;
    if (state.info == nullptr || !decode(state, file.get(), image, &bytes)) {
        *error = path + " is not a grey or RGB PNG";
        return false;
    }
    const size_t count = static_cast<size_t>(image->width) * image->height * image->channels;
    image->samples.resize(count);
    for (size_t i = 0; i < count; ++i) {
        image->samples[i] = image->depth == 16
                                    ? static_cast<uint16_t>(bytes[i * 2] << 8 | bytes[i * 2 + 1])
                                    : bytes[i];
    }
    return true;
}

}  // namespace test
}  // namespace camtune
