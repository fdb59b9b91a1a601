// What a dump folder holds, for camtune report: the dumps with their decoded names and
// thumbnails, the recorder's requests, and every other file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "parse_grammar.h"
#include "report_log.h"

namespace camtune {
namespace cli {
namespace report {

struct DumpEntry {
    std::string path;  // below the scanned folder
    uint64_t size = 0;
    std::string kind;  // "ndd", "raw", "tuning", ...
    parse::Fields fields;
    std::string module;
    std::string sensor;
    int64_t uniqueKey = -1;
    int64_t request = -1;  // last four digits, as the name holds them
    int64_t frame = -1;
    std::string image;      // "64x48 NV21, stride 64" when the dump is an image
    std::string problem;    // why an image has no picture
    std::string thumbnail;  // data URI, or ""
};

struct OtherFile {
    std::string path;
    uint64_t size = 0;
    std::string what;  // "recorder log", "dump-in list", or why the name did not decode
};

struct Scan {
    std::vector<LoggedRequest> requests;  // in the order the logs hold them
    std::vector<DumpEntry> dumps;         // by path
    std::vector<OtherFile> others;        // by path
    uint64_t bytes = 0;
    std::vector<std::string> problems;  // folders or files that could not be read
};

struct ScanOptions {
    int thumbnailWidth = 160;   // 0: no thumbnails
    std::string config;         // NDD configuration
    bool forcedConfig = false;  // over the dump folders' own copies
    std::string skip;           // a file not to list (the report itself)
};

// Scans every file below `folder`, following no symbolic link.
Scan scanFolder(const std::string& folder, const ScanOptions& options);

}  // namespace report
}  // namespace cli
}  // namespace camtune
