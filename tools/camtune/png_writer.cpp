#include "png_writer.h"

#include <png.h>

#include <csetjmp>

namespace camtune {
namespace cli {
namespace image {
namespace {

// libpng's write state, destroyed with the writer. Errors jump back to the setjmp in
// encodePng with their message kept here.
class PngWriter {
public:
    PngWriter() {
        mPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, onError, onWarning);
        if (mPng != nullptr) mInfo = png_create_info_struct(mPng);
    }
    ~PngWriter() { png_destroy_write_struct(&mPng, mInfo != nullptr ? &mInfo : nullptr); }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    bool ready() const { return mPng != nullptr && mInfo != nullptr; }
    png_structp png() const { return mPng; }
    png_infop info() const { return mInfo; }
    const std::string& message() const { return mMessage; }

private:
    static void onError(png_structp png, png_const_charp message) {
        static_cast<PngWriter*>(png_get_error_ptr(png))->mMessage = message;
        png_longjmp(png, 1);
    }
    static void onWarning(png_structp, png_const_charp) {}

    png_structp mPng = nullptr;
    png_infop mInfo = nullptr;
    std::string mMessage;
};

void appendBytes(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

void flushNothing(png_structp) {}

// The picture's rows as PNG stores them: 16-bit samples big-endian.
std::vector<uint8_t> storedBytes(const Picture& picture) {
    const size_t count = picture.samples.size();
    std::vector<uint8_t> bytes(picture.depth == 16 ? count * 2 : count);
    for (size_t i = 0; i < count; ++i) {
        const uint16_t sample = picture.samples[i];
        if (picture.depth == 16) {
            bytes[i * 2] = static_cast<uint8_t>(sample >> 8);
            bytes[i * 2 + 1] = static_cast<uint8_t>(sample & 0xFF);
        } else {
            bytes[i] = static_cast<uint8_t>(sample);
        }
    }
    return bytes;
}

// Only objects made before setjmp live here, so a jump back skips no destructor.
bool writeRows(PngWriter& writer, const Picture& picture, png_bytepp rows,
               std::vector<uint8_t>* out) {
    png_structp png = writer.png();
    png_infop info = writer.info();
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_write_fn(png, out, appendBytes, flushNothing);
    png_set_IHDR(png, info, picture.width, picture.height, picture.depth,
                 picture.channels == 3 ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (picture.significantBits < picture.depth) {
        png_color_8 significant{};
        const png_byte bits = static_cast<png_byte>(picture.significantBits);
        significant.red = significant.green = significant.blue = significant.gray = bits;
        png_set_sBIT(png, info, &significant);
    }
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, info);
    return true;
}

}  // namespace

bool encodePng(const Picture& picture, std::vector<uint8_t>* out, std::string* error) {
    std::vector<uint8_t> bytes = storedBytes(picture);
    const size_t rowBytes = bytes.size() / static_cast<size_t>(picture.height);
    std::vector<png_bytep> rows(picture.height);
    for (int y = 0; y < picture.height; ++y) rows[y] = bytes.data() + y * rowBytes;
    PngWriter writer;
    if (!writer.ready()) {
        *error = "libpng could not start";
        return false;
    }
    out->clear();
    if (!writeRows(writer, picture, rows.data(), out)) {
        *error = "libpng: " + writer.message();
        return false;
    }
    return true;
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
