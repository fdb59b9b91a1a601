// camtune report, run as a user runs it on a simulated session, and its page opened in headless
// Chromium to see what a person sees: the requests, the pictures and the filters.
#include <stdlib.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;

constexpr char kChromium[] = "/usr/bin/chromium";
constexpr char kDumpFolder[] = "/data/vendor/camera_dump/UKey000000001";

std::set<std::string> listing(const std::string& folder) {
    std::set<std::string> paths;
    for (const auto& entry : stdfs::recursive_directory_iterator(folder)) {
        paths.insert(entry.path().string());
    }
    return paths;
}

int countOf(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    return static_cast<int>(std::distance(
            std::sregex_iterator(text.begin(), text.end(), expression), std::sregex_iterator()));
}

// The body's data attribute `name` in a dumped DOM, or -1.
int bodyNumber(const std::string& dom, const std::string& name) {
    std::smatch match;
    const std::regex pattern("<body[^>]*\\s" + name + "=\"(\\d+)\"");
    return std::regex_search(dom, match, pattern) ? std::stoi(match[1]) : -1;
}

class ReportTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        std::string pattern = (stdfs::temp_directory_path() / "camtune-report-XXXXXX").string();
        sRoot = ::mkdtemp(pattern.data()) != nullptr ? pattern : "";
        // Six requests; the 3rd and 6th are captures (request numbers 2 and 5).
        sSim = runCli({"sim", "-o", sRoot + "/sim", "--frames", "6", "--fps", "0",
                       "--capture-every", "3", "--size", "96x48", "--raw", "64x32"});
    }
    static void TearDownTestSuite() {
        std::error_code ignored;
        stdfs::remove_all(sRoot, ignored);
    }
    void SetUp() override { ASSERT_EQ(sSim.status, 0) << sSim.err; }

    // Dumps of the session whose names hold `piece`, counted on disk.
    static int dumpsNaming(const std::string& piece) {
        int count = 0;
        for (const auto& entry : stdfs::directory_iterator(sRoot + "/sim" + kDumpFolder)) {
            const std::string name = entry.path().filename().string();
            count += name.find(piece) != std::string::npos && name != "ndd.cfg";
        }
        return count;
    }

    // The page's DOM after its script ran, with `hash` in its address.
    static std::string renderedDom(const std::string& page, const std::string& hash) {
        char profile[] = "/tmp/camtune-chromium-XXXXXX";
        if (::mkdtemp(profile) == nullptr) return "";
        const std::string dom = sRoot + "/dom.html";
        const std::string command =
                std::string("timeout 120 ") + kChromium +
                " --headless --no-sandbox --disable-gpu --disable-quic --no-first-run"
                " --disable-background-networking --disable-component-update --disable-sync"
                " --virtual-time-budget=5000 --user-data-dir=" +
                profile + " --dump-dom 'file://" + page + "#" + hash + "' > " + dom +
                " 2>/dev/null";
        const int status = std::system(command.c_str());
        std::error_code ignored;
        stdfs::remove_all(profile, ignored);
        return status == 0 ? readFile(dom) : "";
    }

    static std::string sRoot;
    static CliRun sSim;
};

std::string ReportTest::sRoot;
CliRun ReportTest::sSim;

TEST_F(ReportTest, PageListsEveryRequestAndDumpAndLoadsNothing) {
    const std::string page = sRoot + "/page.html";
    const CliRun run = runCli({"report", sRoot + "/sim", "-o", page, "--json"});
    ASSERT_EQ(run.status, 0) << run.err;
    const nlohmann::json summary = nlohmann::json::parse(run.out);
    const int dumps = dumpsNaming("000000001-");
    EXPECT_EQ(summary["dumps"], dumps);
    EXPECT_EQ(summary["requests"], 6);
    // Every image has a picture: the YUV ones and the capture's raw frames.
    const int images = dumpsNaming(".nv21") + dumpsNaming(".packed_word");
    EXPECT_EQ(summary["thumbnails"], images);

    const std::string html = readFile(page);
    EXPECT_EQ(countOf(html, "<article class=\"request capture\""), 2);
    EXPECT_EQ(countOf(html, "<article class=\"request preview\""), 4);
    EXPECT_EQ(countOf(html, "<tr class=\"dump\""), dumps);
    EXPECT_EQ(countOf(html, "<img "), images);
    EXPECT_TRUE(has(html, "[UKey: 1][ReqNum: 2], capture done"));
    EXPECT_TRUE(has(html, "<td class=\"type\">decision</td>"));
    for (const char* fetch : {"src=\"http", "href=\"http", "url(", "<link", "src=\"//"}) {
        EXPECT_EQ(html.find(fetch), std::string::npos) << fetch;
    }
}

TEST_F(ReportTest, OnlyThePageIsWrittenAndBadFoldersAreRefused) {
    const std::string sim = sRoot + "/sim";
    const std::set<std::string> before = listing(sim);
    const std::string elsewhere = sRoot + "/pages/one.html";
    stdfs::create_directories(sRoot + "/pages");
    ASSERT_EQ(runCli({"report", sim, "-o", elsewhere}).status, 0);
    EXPECT_EQ(listing(sim), before);
    EXPECT_EQ(listing(sRoot + "/pages"), std::set<std::string>{elsewhere});

    // The default page lands in the folder, and is not listed in the next report of it.
    ASSERT_EQ(runCli({"report", sim}).status, 0);
    EXPECT_TRUE(stdfs::exists(sim + "/report.html"));
    ASSERT_EQ(runCli({"report", sim}).status, 0);
    EXPECT_EQ(readFile(sim + "/report.html").find("report.html</td>"), std::string::npos);
    stdfs::remove(sim + "/report.html");

    const CliRun missing = runCli({"report", sRoot + "/absent"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_TRUE(has(missing.err, "no such folder"));
    EXPECT_FALSE(stdfs::exists(sRoot + "/absent"));
    const CliRun file = runCli({"report", sim + kDumpFolder + "/ndd.cfg"});
    EXPECT_EQ(file.status, 2);
    EXPECT_TRUE(has(file.err, "not a folder"));
}

TEST_F(ReportTest, DamagedLogsAndDumpsAreShownNotFatal) {
    const std::string folder = sRoot + "/damaged";
    stdfs::create_directories(folder + "/sub");
    auto write = [&](const std::string& name, const std::string& bytes) {
        std::ofstream(folder + "/" + name, std::ios::binary) << bytes;
    };
    const std::string series = "000000001_0000_0000_preview__2026_1122_235527_TuningLog_";
    write(series + "01.txt",
          "[UKey: 99999999999999999999][ReqNum: 1]\n[UKey: 1][ReqNum: 2], done\n[Sensor\n" +
                  std::string("\0\0\0", 3) + "\n");
    write(series + "02.txt",
          "-- CONTINUED --\n[FrameNum: 3][ModuleName: M][P1][Result: R] later\n");
    write("000000001_0003_0000_capture__2026_1122_235527_TuningLog_01.txt", "\x01\xff[[]\n");
    write("sub/000000001-0002-0002-main-img2o-PW4-PH4-BW4__4x4_8_s0.nv21", std::string(100, 'x'));
    write("sub/000000001-0002-0002-main-img2o-PW4-PH4-BW4__4x4_8_s0.yuy2", "");
    ASSERT_EQ(::symlink("/etc/passwd", (folder + "/sub/outside").c_str()), 0);

    const CliRun run = runCli({"report", folder});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string html = readFile(folder + "/report.html");
    // The continued line belongs to request 2; the capture log's stray line does not.
    const size_t request = html.find("id=\"r-1:2\"");
    ASSERT_NE(request, std::string::npos);
    const std::string article = html.substr(request, html.find("</article>", request) - request);
    EXPECT_TRUE(has(article, "later"));
    EXPECT_EQ(article.find("[[]"), std::string::npos);
    EXPECT_TRUE(has(html, "(lines before the first headline)"));
    EXPECT_TRUE(has(html, "the file is 100 bytes but 4x4 NV21, stride 4 needs 24 bytes"));
    EXPECT_TRUE(has(html, "is empty"));
    EXPECT_EQ(html.find("outside"), std::string::npos);
}

TEST_F(ReportTest, BrowserShowsThePicturesAndFilters) {
    if (::access(kChromium, X_OK) != 0) {
        GTEST_SKIP() << kChromium << " is not installed: the page is not opened in a browser";
    }
    const std::string page = sRoot + "/browsed.html";
    ASSERT_EQ(runCli({"report", sRoot + "/sim", "-o", page}).status, 0);
    const struct {
        std::string hash;
        int rows;
        int requests;
    } kCases[] = {
            {"", dumpsNaming("000000001-"), 6},
            {"request=1:2", dumpsNaming("000000001-0002-"), 1},
            {"module=AAO", dumpsNaming("-AAO.bin"), 4},
            {"request=1:5&sensor=main", dumpsNaming("000000001-0005-"), 1},
            {"sensor=sub", 0, 0},
    };
    for (const auto& c : kCases) {
        const std::string dom = renderedDom(page, c.hash);
        ASSERT_FALSE(dom.empty()) << "chromium rendered nothing for #" << c.hash;
        EXPECT_EQ(bodyNumber(dom, "data-visible-rows"), c.rows) << c.hash;
        EXPECT_EQ(bodyNumber(dom, "data-visible-requests"), c.requests) << c.hash;
        EXPECT_EQ(bodyNumber(dom, "data-images-loaded"),
                  dumpsNaming(".nv21") + dumpsNaming(".packed_word"))
                << c.hash;
        EXPECT_EQ(countOf(dom, "<tr class=\"dump\"[^>]*>") -
                          countOf(dom, "<tr class=\"dump\"[^>]* hidden[^>]*>"),
                  c.rows)
                << c.hash;
    }
}

}  // namespace
}  // namespace test
}  // namespace camtune
