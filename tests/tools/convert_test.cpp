// camtune convert, run as a user runs it: images written under the names the library composes,
// converted, and the outputs read back with libpng and LibRaw.
#include <libraw/libraw.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "cli_runner.h"
#include "png_reader.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;
using Bytes = std::vector<uint8_t>;

constexpr int kWidth = 32;  // eight bars of four pixels
constexpr int kHeight = 4;
constexpr uint8_t kPadding = 0x5A;

// 100% colour bars in BT.601 limited range, and the RGB each stands for.
struct Bar {
    uint8_t y, u, v;
    uint8_t rgb[3];
};
constexpr Bar kBars[8] = {
        {235, 128, 128, {255, 255, 255}}, {210, 16, 146, {255, 255, 0}},
        {170, 166, 16, {0, 255, 255}},    {145, 54, 34, {0, 255, 0}},
        {106, 202, 222, {255, 0, 255}},   {81, 90, 240, {255, 0, 0}},
        {41, 240, 110, {0, 0, 255}},      {16, 128, 128, {0, 0, 0}},
};

class ConvertTest : public CliTest {
protected:
    std::string inFile(const std::string& name, const Bytes& bytes) const {
        return write("in/" + name, std::string(bytes.begin(), bytes.end()));
    }
    CliRun convert(const std::vector<std::string>& files, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"convert", "-o", out()});
        options.insert(options.end(), files.begin(), files.end());
        return runCli(options);
    }
    std::string out() const { return mRoot + "/out"; }
    // Where convert puts the output of `input`.
    std::string output(const std::string& input, const char* extension = ".png") const {
        return out() + "/" + stdfs::path(input).filename().replace_extension(extension).string();
    }
    std::set<std::string> outputs() const {
        std::set<std::string> names;
        for (const auto& entry : stdfs::directory_iterator(out())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
};

PngImage readBack(const std::string& path) {
    PngImage image;
    std::string error;
    EXPECT_TRUE(readPng(path, &image, &error)) << error;
    return image;
}

// ---- YUV and grey formats ----

enum class Layout { Grey, Planar, PlanarVU, SemiUV, SemiVU, Yuyv };

struct YuvCase {
    const char* format;
    const char* extension;
    int bits;  // as the name holds it
    int sampleBytes;
    Layout layout;
};

// A sample of 8-bit `value`; 16-bit samples carry 10 bits in their top bits, the two below
// `value` set so that a decoder keeping them is seen.
void put(Bytes& bytes, size_t at, int sampleBytes, uint8_t value) {
    if (sampleBytes == 1) {
        bytes[at] = value;
    } else {
        const uint16_t word = static_cast<uint16_t>(value << 8 | 0x40);
        bytes[at] = static_cast<uint8_t>(word);
        bytes[at + 1] = static_cast<uint8_t>(word >> 8);
    }
}

void PrintTo(const YuvCase& c, std::ostream* out) {
    *out << c.format;
}

size_t yuvStride(const YuvCase& c, int padding) {
    return (kWidth * (c.layout == Layout::Yuyv ? 2 : 1) + padding) * c.sampleBytes;
}

// The bars in `c`'s layout, every row padded by `padding` samples, chroma rows by their share.
Bytes yuvBars(const YuvCase& c, int padding) {
    const int sb = c.sampleBytes;
    const bool yuyv = c.layout == Layout::Yuyv;
    const size_t stride = yuvStride(c, padding);
    const bool planar = c.layout == Layout::Planar || c.layout == Layout::PlanarVU;
    const size_t chromaStride = planar ? stride / 2 : stride;
    const size_t lumaBytes = stride * kHeight;
    const size_t chromaPlanes = c.layout == Layout::Grey || yuyv ? 0 : (planar ? 2 : 1);
    Bytes bytes(lumaBytes + chromaPlanes * chromaStride * (kHeight / 2), kPadding);
    const bool vFirst = c.layout == Layout::PlanarVU || c.layout == Layout::SemiVU;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const Bar& bar = kBars[x / 4];
            const uint8_t first = vFirst ? bar.v : bar.u, second = vFirst ? bar.u : bar.v;
            if (yuyv) {
                const size_t pair = y * stride + (x / 2) * 4 * sb;
                put(bytes, pair + (x % 2) * 2 * sb, sb, bar.y);
                put(bytes, pair + sb, sb, bar.u);
                put(bytes, pair + 3 * sb, sb, bar.v);
                continue;
            }
            put(bytes, y * stride + x * sb, sb, bar.y);
            const size_t row = lumaBytes + (y / 2) * chromaStride;
            if (planar) {
                put(bytes, row + (x / 2) * sb, sb, first);
                put(bytes, row + chromaStride * (kHeight / 2) + (x / 2) * sb, sb, second);
            } else if (c.layout != Layout::Grey) {
                put(bytes, row + (x / 2) * 2 * sb, sb, first);
                put(bytes, row + (x / 2) * 2 * sb + sb, sb, second);
            }
        }
    }
    return bytes;
}

// The yuv name of the naming functions (docs/naming.md).
std::string yuvName(const YuvCase& c, int padding) {
    const size_t stride = yuvStride(c, padding);
    const size_t pixels = stride / c.sampleBytes / (c.layout == Layout::Yuyv ? 2 : 1);
    char name[160];
    std::snprintf(name, sizeof(name),
                  "000000001-0007-0003-main-img2o-PW%zu-PH%d-BW%zu__%dx%d_%d_s0.%s", pixels,
                  kHeight, stride, kWidth, kHeight, c.bits, c.extension);
    return name;
}

class ConvertYuv : public ConvertTest, public ::testing::WithParamInterface<YuvCase> {
protected:
    // Converts `input` in colour and as a plane, and checks both against the bars.
    void checkBars(const std::string& input) {
        const YuvCase& c = GetParam();
        CliRun run = convert({input});
        ASSERT_EQ(run.status, 0) << run.err;
        const PngImage picture = readBack(output(input));
        ASSERT_EQ(picture.width, kWidth);
        ASSERT_EQ(picture.height, kHeight);
        ASSERT_EQ(picture.depth, 8);
        ASSERT_EQ(picture.channels, c.layout == Layout::Grey ? 1 : 3);
        for (int i = 0; i < kWidth * kHeight; ++i) {
            const Bar& bar = kBars[i % kWidth / 4];
            if (c.layout == Layout::Grey) {
                ASSERT_EQ(picture.samples[i], bar.y) << "pixel " << i;
                continue;
            }
            for (int channel = 0; channel < 3; ++channel) {
                ASSERT_NEAR(picture.samples[i * 3 + channel], bar.rgb[channel], 2)
                        << "pixel " << i << " channel " << channel;
            }
        }

        run = convert({input}, {"--plane"});
        ASSERT_EQ(run.status, 0) << run.err;
        const PngImage plane = readBack(output(input));
        ASSERT_EQ(plane.channels, 1);
        ASSERT_EQ(plane.depth, c.sampleBytes * 8);
        EXPECT_EQ(plane.significantBits, c.sampleBytes == 2 ? 10 : 8);
        for (int i = 0; i < kWidth * kHeight; ++i) {
            const uint16_t luma = kBars[i % kWidth / 4].y;
            ASSERT_EQ(plane.samples[i], c.sampleBytes == 2 ? (luma << 8 | 0x40) : luma) << i;
        }
    }
};

TEST_P(ConvertYuv, BarsBecomeTheirColoursAndThePlaneStaysExact) {
    const YuvCase& c = GetParam();
    for (int padding : {0, 4}) {
        SCOPED_TRACE("padding " + std::to_string(padding));
        checkBars(inFile(yuvName(c, padding), yuvBars(c, padding)));
    }
}

INSTANTIATE_TEST_SUITE_P(Convert, ConvertYuv,
                         ::testing::Values(YuvCase{"NV21", "nv21", 8, 1, Layout::SemiVU},
                                           YuvCase{"NV12", "nv12", 8, 1, Layout::SemiUV},
                                           YuvCase{"YUY2", "yuy2", 8, 1, Layout::Yuyv},
                                           YuvCase{"I420", "i420", 8, 1, Layout::Planar},
                                           YuvCase{"YV12", "yv12", 8, 1, Layout::PlanarVU},
                                           YuvCase{"Y8", "y", 8, 1, Layout::Grey},
                                           YuvCase{"P010", "p010", 16, 2, Layout::Planar},
                                           YuvCase{"P010_YUV", "p010yuv", 16, 2, Layout::SemiUV},
                                           YuvCase{"P010_YVU", "p010yvu", 16, 2, Layout::SemiVU}),
                         [](const auto& info) { return std::string(info.param.format); });

// ---- Bayer formats ----

struct BayerCase {
    const char* format;
    const char* extension;
    int bits;
    bool packed;  // a bit stream, least significant bit first; else 16-bit words
};

size_t bayerStride(const BayerCase& c, int width) {
    const size_t rowBytes = c.packed ? (static_cast<size_t>(width) * c.bits + 7) / 8 : width * 2u;
    return rowBytes + 3;  // padded
}

Bytes bayerRows(const BayerCase& c, const std::vector<uint16_t>& samples, int width, int height) {
    const size_t stride = bayerStride(c, width);
    Bytes bytes(stride * height, kPadding);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bytes.data() + y * stride;
        std::fill(row, row + stride - 3, 0);
        for (int x = 0; x < width; ++x) {
            const uint16_t value = samples[y * width + x];
            if (!c.packed) {
                row[x * 2] = static_cast<uint8_t>(value);
                row[x * 2 + 1] = static_cast<uint8_t>(value >> 8);
                continue;
            }
            for (int bit = 0; bit < c.bits; ++bit) {
                const size_t at = static_cast<size_t>(x) * c.bits + bit;
                if ((value >> bit) & 1) row[at / 8] |= static_cast<uint8_t>(1 << (at % 8));
            }
        }
    }
    return bytes;
}

// The raw name of the naming functions; order -1 prints "senfmt".
std::string rawName(const BayerCase& c, int width, int height, int order) {
    const size_t stride = bayerStride(c, width);
    char name[160];
    std::snprintf(name, sizeof(name),
                  "000000001-0012-0034-main-imgo-PW%d-PH%d-BW%zu__%dx%d_%d_%s.%s", width, height,
                  stride, width, height, c.bits,
                  order < 0 ? "senfmt" : std::to_string(order).c_str(), c.extension);
    return name;
}

std::vector<uint16_t> noise(int count, int bits, uint32_t seed) {
    std::vector<uint16_t> samples(count);
    for (uint16_t& sample : samples) {
        seed = seed * 1664525u + 1013904223u;
        sample = static_cast<uint16_t>((seed >> 8) & ((1u << bits) - 1));
    }
    return samples;
}

// Where each order puts red in its 2x2 tile: 0 BGGR, 1 GBRG, 2 GRBG, 3 RGGB.
constexpr int kRedAt[4][2] = {{1, 1}, {0, 1}, {1, 0}, {0, 0}};

void PrintTo(const BayerCase& c, std::ostream* out) {
    *out << c.format;
}

class ConvertBayer : public ConvertTest, public ::testing::WithParamInterface<BayerCase> {};

TEST_P(ConvertBayer, PlaneHoldsEverySampleShiftedToSixteenBits) {
    const BayerCase& c = GetParam();
    constexpr int kOddWidth = 22, kRows = 6;  // packed rows that end inside a byte
    const std::vector<uint16_t> samples = noise(kOddWidth * kRows, c.bits, 7);
    const std::string input =
            inFile(rawName(c, kOddWidth, kRows, -1), bayerRows(c, samples, kOddWidth, kRows));

    CliRun run = convert({input}, {"--plane"});
    ASSERT_EQ(run.status, 0) << run.err;
    const PngImage plane = readBack(output(input));
    ASSERT_EQ(plane.width, kOddWidth);
    ASSERT_EQ(plane.depth, 16);
    EXPECT_EQ(plane.significantBits, c.bits);
    for (int i = 0; i < kOddWidth * kRows; ++i) {
        ASSERT_EQ(plane.samples[i], samples[i] << (16 - c.bits)) << "sample " << i;
    }
}

TEST_P(ConvertBayer, RedSitesOfEachOrderDemosaicToRed) {
    const BayerCase& c = GetParam();
    const uint16_t black = static_cast<uint16_t>(1 << (c.bits - 4));
    const uint16_t white = static_cast<uint16_t>((1 << c.bits) - 1);
    for (int order = 0; order < 4; ++order) {
        std::vector<uint16_t> samples(kWidth * kHeight, black);
        for (int y = kRedAt[order][1]; y < kHeight; y += 2) {
            for (int x = kRedAt[order][0]; x < kWidth; x += 2) samples[y * kWidth + x] = white;
        }
        const std::string input =
                inFile(rawName(c, kWidth, kHeight, order), bayerRows(c, samples, kWidth, kHeight));
        CliRun run = convert({input});
        ASSERT_EQ(run.status, 0) << run.err;
        const PngImage picture = readBack(output(input));
        ASSERT_EQ(picture.channels, 3);
        for (int i = 0; i < kWidth * kHeight; ++i) {
            ASSERT_EQ(picture.samples[i * 3], 255) << "order " << order << " pixel " << i;
            ASSERT_EQ(picture.samples[i * 3 + 1], 0) << "order " << order << " pixel " << i;
            ASSERT_EQ(picture.samples[i * 3 + 2], 0) << "order " << order << " pixel " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Convert, ConvertBayer,
                         ::testing::Values(BayerCase{"BAYER10", "packed_word", 10, true},
                                           BayerCase{"BAYER12", "packed_word", 12, true},
                                           BayerCase{"BAYER14", "packed_word", 14, true},
                                           BayerCase{"BAYER10_UNPAK", "raw", 10, false},
                                           BayerCase{"BAYER12_UNPAK", "raw", 12, false},
                                           BayerCase{"BAYER14_UNPAK", "raw", 14, false},
                                           BayerCase{"BAYER15_UNPAK", "raw", 15, false},
                                           BayerCase{"BAYER16_UNPAK", "raw", 16, false}),
                         [](const auto& info) { return std::string(info.param.format); });

TEST_F(ConvertTest, DngOpensInLibRawWithItsPatternLevelsAndSamples) {
    const struct {
        BayerCase format;
        int order;
        const char* cfa;
    } kCases[] = {{{"BAYER12", "packed_word", 12, true}, 2, "GRBG"},
                  {{"BAYER16_UNPAK", "raw", 16, false}, 1, "GBRG"}};
    constexpr int kDngWidth = 32, kDngHeight = 24;  // LibRaw opens nothing under 22 pixels
    for (const auto& c : kCases) {
        const std::vector<uint16_t> samples = noise(kDngWidth * kDngHeight, c.format.bits, 11);
        const std::string input = inFile(rawName(c.format, kDngWidth, kDngHeight, c.order),
                                         bayerRows(c.format, samples, kDngWidth, kDngHeight));

        CliRun run = convert({input}, {"--dng", "--json"});
        ASSERT_EQ(run.status, 0) << run.err;
        const nlohmann::json result = nlohmann::json::parse(run.out).at(0);
        EXPECT_EQ(result["format"], c.format.format);
        EXPECT_EQ(result["cfa"], c.cfa);
        ASSERT_EQ(result["output"], output(input, ".dng"));

        LibRaw raw;
        ASSERT_EQ(raw.open_file(output(input, ".dng").c_str()), LIBRAW_SUCCESS) << c.cfa;
        ASSERT_EQ(raw.unpack(), LIBRAW_SUCCESS);
        ASSERT_EQ(raw.imgdata.sizes.raw_width, kDngWidth);
        ASSERT_EQ(raw.imgdata.sizes.raw_height, kDngHeight);
        std::string pattern;
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 2; ++x) pattern += "RGBG"[raw.COLOR(y, x)];
        }
        EXPECT_EQ(pattern, c.cfa);
        EXPECT_EQ(raw.imgdata.color.maximum, (1u << c.format.bits) - 1);
        EXPECT_EQ(raw.imgdata.color.black, 1u << (c.format.bits - 4));
        const size_t pitch = raw.imgdata.sizes.raw_pitch / 2;
        for (int y = 0; y < kDngHeight; ++y) {
            for (int x = 0; x < kDngWidth; ++x) {
                ASSERT_EQ(raw.imgdata.rawdata.raw_image[y * pitch + x], samples[y * kDngWidth + x])
                        << c.cfa << " at " << x << "," << y;
            }
        }
    }
}

TEST_F(ConvertTest, DngDevelopsToTheColoursOfItsMosaic) {
    // Colour bars seen through an RGGB filter, developed by LibRaw as a raw developer would.
    const BayerCase format{"BAYER16_UNPAK", "raw", 16, false};
    constexpr int kBarWidth = 32, kRows = 32;
    constexpr uint32_t kBlack = 1 << 12, kWhite = 0xFFFF;
    std::vector<uint16_t> samples(8 * kBarWidth * kRows);
    for (int y = 0; y < kRows; ++y) {
        for (int x = 0; x < 8 * kBarWidth; ++x) {
            const int colour = y % 2 == 0 ? (x % 2 == 0 ? 0 : 1) : (x % 2 == 0 ? 1 : 2);
            const uint32_t level = kBars[x / kBarWidth].rgb[colour];
            samples[y * 8 * kBarWidth + x] =
                    static_cast<uint16_t>(kBlack + (kWhite - kBlack) * level / 255);
        }
    }
    const std::string input = inFile(rawName(format, 8 * kBarWidth, kRows, 3),
                                     bayerRows(format, samples, 8 * kBarWidth, kRows));
    CliRun run = convert({input}, {"--dng"});
    ASSERT_EQ(run.status, 0) << run.err;

    LibRaw raw;
    // The file's own colour matrix and white balance, not LibRaw's defaults for a camera.
    raw.imgdata.params.use_camera_matrix = 3;
    raw.imgdata.params.use_camera_wb = 1;
    ASSERT_EQ(raw.open_file(output(input, ".dng").c_str()), LIBRAW_SUCCESS);
    ASSERT_EQ(raw.unpack(), LIBRAW_SUCCESS);
    ASSERT_EQ(raw.dcraw_process(), LIBRAW_SUCCESS);
    int error = 0;
    libraw_processed_image_t* developed = raw.dcraw_make_mem_image(&error);
    ASSERT_NE(developed, nullptr) << error;
    ASSERT_EQ(developed->colors, 3);
    for (int bar = 0; bar < 8; ++bar) {
        const size_t pixel = (kRows / 2) * developed->width + bar * kBarWidth + kBarWidth / 2;
        for (int channel = 0; channel < 3; ++channel) {
            EXPECT_NEAR(developed->data[pixel * 3 + channel], kBars[bar].rgb[channel], 8)
                    << "bar " << bar << " channel " << channel;
        }
    }
    LibRaw::dcraw_clear_mem(developed);
}

// ---- What the library's own sessions dump ----

TEST_F(ConvertTest, SimDumpsShowTheirBars) {
    const std::string sim = mRoot + "/sim";
    CliRun run = runCli({"sim", "-o", sim, "--frames", "3", "--fps", "0", "--capture-every", "2",
                         "--size", "64x32", "--raw", "64x32"});
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<std::string> images, raws;
    for (const auto& entry :
         stdfs::directory_iterator(sim + "/data/vendor/camera_dump/UKey000000001")) {
        const std::string path = entry.path().string();
        if (entry.path().extension() == ".nv21") images.push_back(path);
        if (entry.path().extension() == ".packed_word") raws.push_back(path);
    }
    ASSERT_EQ(images.size(), 3u);
    ASSERT_EQ(raws.size(), 1u);
    run = convert(images);
    ASSERT_EQ(run.status, 0) << run.err;
    for (const std::string& image : images) {
        // Below the frame-number stamp (rows 0 to 15), eight bars of eight pixels.
        const PngImage picture = readBack(output(image));
        for (int bar = 0; bar < 8; ++bar) {
            for (int channel = 0; channel < 3; ++channel) {
                EXPECT_NEAR(picture.at(bar * 8 + 4, 24, channel), kBars[bar].rgb[channel], 2)
                        << image << " bar " << bar;
            }
        }
    }
    // The capture's raw frame is named with its geometry; its mosaic is the bars' luma.
    run = convert(raws, {"--plane"});
    ASSERT_EQ(run.status, 0) << run.err;
    const PngImage mosaic = readBack(output(raws[0]));
    for (int bar = 0; bar < 8; ++bar) {
        EXPECT_EQ(mosaic.at(bar * 8 + 4, 24), kBars[bar].y << 8) << "bar " << bar;
    }
}

// ---- Files that cannot be converted ----

TEST_F(ConvertTest, BadFilesAreReportedAndTheOthersStillConvert) {
    const YuvCase nv21{"NV21", "nv21", 8, 1, Layout::SemiVU};
    const std::string goodInput = inFile(yuvName(nv21, 4), yuvBars(nv21, 4));
    stdfs::create_directories(mRoot + "/in/folder.nv21");
    const struct {
        std::string input;
        std::vector<std::string> options;
        std::vector<std::string> says;
    } kCases[] = {
            {inFile("000000001-0008-0003-main-img2o-PW36-PH4-BW36__32x4_8_s0.nv21", Bytes(100)),
             {},
             {"the file is 100 bytes", "32x4 NV21, stride 36 needs 216 bytes"}},
            {inFile("capture.bin", Bytes(100)), {}, {"no image size", "none the library composes"}},
            {inFile("000000001-0002-0002-main-P1-Capture_default-IMGO.raw", Bytes(100)),
             {},
             {"no image size; give --size"}},
            {mRoot + "/in/absent.nv21", {}, {"no such file"}},
            {mRoot + "/in/folder.nv21", {}, {"is a folder"}},
            {inFile("000000001-0007-0004-main-img2o-PW32-PH4-BW32__32x4_8_s0.nv21", {}),
             {},
             {"is empty"}},
            {inFile(rawName({"BAYER10", "packed_word", 10, true}, 32, 4, -1), Bytes(172)),
             {},
             {"no Bayer order; give --order"}},
            {goodInput, {"--dng"}, {"a DNG holds Bayer data; NV21 is not"}},
    };
    for (const auto& c : kCases) {
        const std::string label = c.input;
        std::vector<std::string> inputs = {c.input};
        if (c.input != goodInput) inputs.insert(inputs.begin(), goodInput);
        CliRun run = convert(inputs, c.options);
        EXPECT_EQ(run.status, 1) << label;
        EXPECT_TRUE(has(run.err, c.input + ": "));
        for (const std::string& text : c.says) {
            EXPECT_TRUE(has(run.err, text));
        }
        std::set<std::string> expected;
        if (c.input != goodInput)
            expected.insert(stdfs::path(output(goodInput)).filename().string());
        EXPECT_EQ(outputs(), expected) << label;
        stdfs::remove_all(out());
    }
}

TEST_F(ConvertTest, AnOutputNeverReplacesItsInput) {
    const Bytes grey(kWidth * kHeight, 77);
    const std::string input = inFile("frame.png", grey);
    CliRun run =
            runCli({"convert", "-o", mRoot + "/in", "--size", "32x4", "--format", "Y8", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.err, "would replace the input"));
    EXPECT_EQ(readFile(input), std::string(grey.begin(), grey.end()));
}

}  // namespace
}  // namespace test
}  // namespace camtune
