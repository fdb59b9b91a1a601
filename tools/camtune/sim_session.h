// camtune sim: a simulated camera pipeline that drives the library through its public API as a
// HAL would, and the account of what it left on disk.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace camtune {
namespace sim {

struct SimOptions {
    int frames = 90;
    std::vector<int> sensors{0};
    double fps = 30;        // 0: as fast as possible
    int captureEvery = 30;  // every Nth request is a capture; 0: none
    int width = 1920;       // images
    int height = 1080;
    std::string format = "nv21";
    int rawWidth = 4000;  // capture raw buffers, packed 10-bit Bayer
    int rawHeight = 2400;
    int producers = 2;
    int writers = 2;
    int64_t byteLimit = 0;
    bool directWrite = false;
    std::string config;  // NDD configuration on this machine
    std::string root;    // output root, absolute
    std::vector<std::pair<std::string, std::string>> properties;
    std::string odtConfig;  // replay configuration on this machine; "" for none
    unsigned int uniqueKey = 1;
};

struct SimResult {
    int frames = 0;
    int64_t submitted = 0;  // items handed to NDD
    int64_t admitted = 0;
    int64_t written = 0;  // admitted items found on disk with their size
    int64_t refused = 0;
    int64_t failed = 0;  // admitted items missing or short on disk
    int64_t bytes = 0;   // bytes of admitted items
    double seconds = 0;  // from the first frame until every file was written
    int64_t queueHighWater = 0;
    std::string dumpFolder;             // device path
    std::vector<std::string> logFiles;  // device paths of the recorder's logs
    std::vector<std::string> missing;   // device paths of admitted items not found whole
    std::vector<std::string> dumpinFiles;
    uint64_t recordsDropped = 0;  // by the recorder at its memory bound
    uint64_t linesLost = 0;       // by the recorder's failed writes
    double megabytesPerSecond() const { return seconds > 0 ? bytes / seconds / 1e6 : 0; }
};

struct SimProgress {
    int frame;
    int frames;
    int64_t items;
    int64_t bytes;
    double seconds;
};

// Runs the session; `progress` is called after every frame. Returns false with `error` set when
// the session cannot start (unreadable configuration, ...).
bool runSession(const SimOptions& options, const std::function<void(const SimProgress&)>& progress,
                SimResult* result, std::string* error);

}  // namespace sim
}  // namespace camtune
