// camtune sim, run as a user runs it.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;

class SimTest : public CliTest {
protected:
    // A small session: 6 frames, a capture every 3rd request, 512x32 images.
    CliRun smallSession(std::vector<std::string> extra = {}) {
        std::vector<std::string> args = {"sim",    "-o",    mRoot + "/out",    "--frames", "6",
                                         "--fps",  "0",     "--capture-every", "3",        "--size",
                                         "512x32", "--raw", "64x16",           "--json"};
        args.insert(args.end(), extra.begin(), extra.end());
        return runCli(args);
    }

    std::string hostPath(const std::string& devicePath) const {
        return mRoot + "/out" + devicePath;
    }
};

TEST_F(SimTest, ASessionLeavesEveryFileItReports) {
    CliRun run = smallSession();
    ASSERT_EQ(run.status, 0) << run.err;
    nlohmann::json summary = nlohmann::json::parse(run.out);
    const auto& items = summary["items"];
    EXPECT_EQ(summary["frames"], 6);
    EXPECT_GT(items["admitted"].get<int>(), 0);
    EXPECT_EQ(items["written"], items["admitted"]);
    EXPECT_EQ(items["failed"], 0);
    // The disabled JPG line refuses one item a capture; captures refuse their streaming items.
    EXPECT_GT(items["refused"].get<int>(), 0);
    EXPECT_EQ(items["submitted"].get<int>(),
              items["admitted"].get<int>() + items["refused"].get<int>());

    const std::string folder = hostPath(summary["dump_folder"].get<std::string>());
    size_t dumps = 0;
    for (const auto& entry : stdfs::directory_iterator(folder)) {
        if (entry.path().extension() != ".cfg") ++dumps;
    }
    EXPECT_EQ(dumps, items["written"].get<size_t>());
    ASSERT_EQ(summary["log_files"].size(), 3u);  // the preview log and two captures'
    for (const auto& log : summary["log_files"]) {
        EXPECT_FALSE(readFile(hostPath(log.get<std::string>())).empty()) << log;
    }
    ASSERT_EQ(summary["dumpin_files"].size(), 1u);
    EXPECT_TRUE(
            has(readFile(hostPath(summary["dumpin_files"][0].get<std::string>())), "AAO,4,main"));
}

TEST_F(SimTest, ADumpedImageDecodesBackToTheTestPattern) {
    CliRun run = smallSession();
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string folder =
            hostPath(nlohmann::json::parse(run.out)["dump_folder"].get<std::string>());
    // Frame 4, a preview frame: NV21, luma plane first.
    const std::string image = readFile(
            folder +
            "/000000001-0004-0004-main-P2_Single-Preview-YUVO_R1__512x32-PW512-PH32-BW512.nv21");
    ASSERT_EQ(image.size(), 512u * 32u * 3u / 2u);
    auto luma = [&](int x, int y) { return static_cast<uint8_t>(image[y * 512 + x]); };
    // Eight bars below the stamp, white to black.
    const uint8_t bars[8] = {235, 210, 170, 145, 106, 81, 41, 16};
    for (int bar = 0; bar < 8; ++bar) EXPECT_EQ(luma(bar * 64 + 32, 24), bars[bar]) << bar;
    // The stamp: one 16-pixel block a bit, bit 0 first, white for 1.
    uint32_t frame = 0;
    for (int bit = 0; bit < 32; ++bit) {
        if (luma(bit * 16 + 8, 8) == 235) frame |= 1u << bit;
    }
    EXPECT_EQ(frame, 4u);
    // Chroma: the first bar is neutral (V, U = 128, 128), the second yellow (V 146, U 16).
    const size_t chroma = 512 * 32;
    EXPECT_EQ(static_cast<uint8_t>(image[chroma + 32]), 128);
    EXPECT_EQ(static_cast<uint8_t>(image[chroma + 64 + 32]), 146);
    EXPECT_EQ(static_cast<uint8_t>(image[chroma + 64 + 33]), 16);
}

TEST_F(SimTest, AnAdmittedItemMissingOnDiskFailsTheRun) {
    // The dump root does not exist, so no folder can be made and no file written.
    CliRun run = smallSession({"--prop", "vendor.debug.ndd.rootpath=/no/such/root/"});
    EXPECT_EQ(run.status, 1) << run.err;
    nlohmann::json summary = nlohmann::json::parse(run.out);
    EXPECT_GT(summary["items"]["failed"].get<int>(), 0);
    EXPECT_EQ(summary["items"]["written"], 0);
    EXPECT_FALSE(summary["missing"].empty());
    EXPECT_TRUE(has(run.err, "Fail to create directory /no/such/root/UKey000000001"));
}

}  // namespace
}  // namespace test
}  // namespace camtune
