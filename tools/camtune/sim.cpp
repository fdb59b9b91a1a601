// camtune sim: a simulated camera session that drives the library as a HAL would.
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli_parse.h"
#include "command.h"
#include "example_files.h"
#include "json_text.h"
#include "sim_pattern.h"
#include "sim_session.h"

namespace camtune {
namespace cli {
namespace {

constexpr char kDefaultRoot[] = "camtune-out";

bool parseSize(const std::string& text, int* width, int* height) {
    int w = 0, h = 0;
    char x = 0, extra = 0;
    if (std::sscanf(text.c_str(), "%d%c%d%c", &w, &x, &h, &extra) != 3 || x != 'x' || w < 2 ||
        h < 2 || w > 16384 || h > 16384 || w % 2 != 0 || h % 2 != 0) {
        return false;
    }
    *width = w;
    *height = h;
    return true;
}

bool parseSensors(const std::string& text, std::vector<int>* sensors) {
    sensors->clear();
    std::stringstream in(text);
    for (std::string piece; std::getline(in, piece, ',');) {
        char* end = nullptr;
        errno = 0;
        long id = std::strtol(piece.c_str(), &end, 10);
        if (piece.empty() || *end != '\0' || errno != 0 || id < 0 || id > 11) return false;
        sensors->push_back(static_cast<int>(id));
    }
    return !sensors->empty();
}

std::string absolute(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::absolute(path, ignored).lexically_normal().string();
}

void printProgress(const sim::SimProgress& p) {
    const double mbps = p.seconds > 0 ? p.bytes / p.seconds / 1e6 : 0;
    constexpr int kWidth = 30;
    const int filled = p.frames > 0 ? kWidth * p.frame / p.frames : kWidth;
    std::fprintf(stdout, "\r[%.*s%*s] frame %d/%d  items %lld  %.1f MB/s ", filled,
                 "==============================", kWidth - filled, "", p.frame, p.frames,
                 static_cast<long long>(p.items), mbps);
    std::fflush(stdout);
}

nlohmann::json toJson(const sim::SimResult& r, const std::string& root) {
    nlohmann::json out;
    out["frames"] = r.frames;
    out["items"] = {{"submitted", r.submitted},
                    {"admitted", r.admitted},
                    {"written", r.written},
                    {"refused", r.refused},
                    {"failed", r.failed}};
    out["bytes"] = r.bytes;
    out["seconds"] = r.seconds;
    out["megabytes_per_second"] = r.megabytesPerSecond();
    out["queue_high_water_bytes"] = r.queueHighWater;
    out["recorder"] = {{"records_dropped", r.recordsDropped}, {"lines_lost", r.linesLost}};
    out["root"] = root;
    out["dump_folder"] = r.dumpFolder;
    out["log_files"] = r.logFiles;
    out["dumpin_files"] = r.dumpinFiles;
    out["missing"] = r.missing;
    return out;
}

void printSummary(const sim::SimResult& r, const std::string& root) {
    std::printf("frames          %d\n", r.frames);
    std::printf(
            "items           %lld submitted: %lld admitted, %lld written, %lld refused, "
            "%lld failed\n",
            static_cast<long long>(r.submitted), static_cast<long long>(r.admitted),
            static_cast<long long>(r.written), static_cast<long long>(r.refused),
            static_cast<long long>(r.failed));
    std::printf("bytes           %lld in %.2f s, %.1f MB/s\n", static_cast<long long>(r.bytes),
                r.seconds, r.megabytesPerSecond());
    std::printf("queue high mark %lld bytes\n", static_cast<long long>(r.queueHighWater));
    std::printf(
            "recorder        %llu records dropped at the memory bound, %llu lines lost to "
            "failed writes\n",
            static_cast<unsigned long long>(r.recordsDropped),
            static_cast<unsigned long long>(r.linesLost));
    std::printf("output root     %s (device paths below are under it)\n", root.c_str());
    std::printf("dumps           %s\n", r.dumpFolder.c_str());
    for (const std::string& file : r.dumpinFiles) std::printf("dump-in list    %s\n", file.c_str());
    for (const std::string& file : r.logFiles) std::printf("recorder log    %s\n", file.c_str());
    for (const std::string& path : r.missing) std::printf("MISSING         %s\n", path.c_str());
}

int runSim(const Args& args) {
    sim::SimOptions options;
    std::string sensors = "0";
    std::string size = "1920x1080";
    std::string raw = "4000x2400";
    std::string root = kDefaultRoot;
    std::string config = kDefaultNddConfig;
    std::vector<std::string> properties;
    bool json = false;
    bool listFormats = false;

    CLI::App app(
            "Runs a simulated camera session against the library: per frame frame_begin, "
            "statistics, tables and images from producer threads, carried buffers, decision "
            "and execution records, frame_end; then stream_off and uninit. Prints what was "
            "dumped and where.",
            "camtune sim");
    app.option_defaults()->always_capture_default();
    app.add_option("--frames", options.frames, "frames to run")->check(CLI::Range(1, 100000));
    app.add_option("--sensors", sensors, "sensor ids, comma separated (0 to 11)");
    app.add_option("--fps", options.fps, "frame rate; 0 runs as fast as possible")
            ->check(CLI::Range(0.0, 1000.0));
    app.add_option("--capture-every", options.captureEvery,
                   "every Nth request is a capture; 0 for none")
            ->check(CLI::Range(0, 100000));
    app.add_option("--size", size, "image size WxH (even numbers)");
    app.add_option("--format", options.format, "image format (see --list-formats)");
    app.add_flag("--list-formats", listFormats, "list the image formats and exit");
    app.add_option("--raw", raw, "size WxH of the capture's packed 10-bit raw frame");
    app.add_option("--producers", options.producers, "producer threads (pipeline nodes)")
            ->check(CLI::Range(1, 64));
    app.add_option("--writers", options.writers, "NDD writer threads")->check(CLI::Range(1, 16));
    app.add_option("--limit", options.byteLimit,
                   "bytes of queued copies before raw buffers are written at once; 0 no limit")
            ->check(CLI::Range(int64_t{0}, int64_t{INT32_MAX}));
    app.add_flag("--direct-write", options.directWrite, "write raw buffers on the producer thread");
    app.add_option("--config", config, "NDD configuration file")->check(CLI::ExistingFile);
    app.add_option("-o,--output", root, "output root: device paths land under it");
    app.add_option("--prop", properties, "set a property, key=value (repeatable)");
    app.add_option("--odt", options.odtConfig, "replay this configuration through on-device tuning")
            ->check(CLI::ExistingFile);
    app.add_flag("--json", json, "print the summary as JSON");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;

    if (listFormats) {
        for (const sim::ImageFormat& format : sim::imageFormats()) {
            std::printf("%-8s %s\n", format.name, format.description);
        }
        return 0;
    }
    auto fail = [](const std::string& message) {
        std::fprintf(stderr, "camtune sim: %s\n", message.c_str());
        return 2;
    };
    if (!parseSensors(sensors, &options.sensors)) {
        return fail("--sensors: '" + sensors + "' is not a comma-separated list of ids 0 to 11");
    }
    if (!parseSize(size, &options.width, &options.height)) {
        return fail("--size: '" + size + "' is not WxH with even numbers from 2 to 16384");
    }
    if (!parseSize(raw, &options.rawWidth, &options.rawHeight)) {
        return fail("--raw: '" + raw + "' is not WxH with even numbers from 2 to 16384");
    }
    if (sim::findImageFormat(options.format) == nullptr) {
        return fail("--format: unknown format '" + options.format + "' (see --list-formats)");
    }
    for (const std::string& property : properties) {
        const size_t equals = property.find('=');
        if (equals == 0 || equals == std::string::npos) {
            return fail("--prop: '" + property + "' is not key=value");
        }
        options.properties.emplace_back(property.substr(0, equals), property.substr(equals + 1));
    }
    options.config = absolute(config);
    if (!options.odtConfig.empty()) options.odtConfig = absolute(options.odtConfig);
    options.root = absolute(root);
    std::error_code made;
    std::filesystem::create_directories(options.root, made);
    if (made || !std::filesystem::is_directory(options.root)) {
        return fail("cannot use " + options.root + " as the output root: " +
                    (made ? made.message() : std::string("not a directory")));
    }

    const bool terminal = !json && ::isatty(STDOUT_FILENO) != 0;
    sim::SimResult result;
    std::string error;
    std::function<void(const sim::SimProgress&)> progress;
    if (terminal) progress = printProgress;
    if (!sim::runSession(options, progress, &result, &error)) return fail(error);
    if (terminal) std::printf("\n");
    if (json) {
        std::printf("%s\n", jsonText(toJson(result, options.root), 2).c_str());
    } else {
        printSummary(result, options.root);
    }
    return result.failed == 0 ? 0 : 1;
}

}  // namespace

CAMTUNE_COMMAND("sim", "run a simulated camera session and dump it under an output root", runSim);

}  // namespace cli
}  // namespace camtune
