#include "report_scan.h"

#include <algorithm>
#include <filesystem>

#include "image_file.h"
#include "image_geometry.h"
#include "image_names.h"
#include "image_thumbnail.h"

namespace camtune {
namespace cli {
namespace report {
namespace {

namespace stdfs = std::filesystem;

int64_t numberOf(const parse::Fields& fields, const char* name) {
    auto it = fields.find(name);
    return it != fields.end() && it->is_number_integer() ? it->get<int64_t>() : -1;
}

// A name that tells an image's size or format is taken for an image.
bool namesAnImage(const parse::Fields& fields) {
    return fields.contains("formats") || (fields.contains("width") && fields.contains("height"));
}

void describeImage(const std::string& path, const parse::Decoded& decoded,
                   const ScanOptions& options, DumpEntry* dump) {
    image::ImageGeometry geometry;
    if (!image::resolveGeometry(&decoded, {}, dump->size, &geometry, &dump->problem)) {
        // The advice on options is for camtune convert.
        dump->problem = dump->problem.substr(0, dump->problem.find("; give"));
        return;
    }
    dump->image = geometry.describe();
    if (options.thumbnailWidth <= 0) return;
    std::vector<uint8_t> bytes;
    if (!image::readInputFile(path, dump->size, &bytes, &dump->problem) ||
        !image::thumbnailUri(bytes, geometry, options.thumbnailWidth, &dump->thumbnail,
                             &dump->problem)) {
        dump->thumbnail.clear();
    }
}

class Scanner {
public:
    Scanner(const std::string& folder, const ScanOptions& options)
        : mFolder(folder), mOptions(options), mNames(options.config, options.forcedConfig) {}

    Scan run() {
        std::vector<std::string> paths;
        std::error_code error;
        stdfs::recursive_directory_iterator it(
                mFolder, stdfs::directory_options::skip_permission_denied, error);
        for (stdfs::recursive_directory_iterator end; !error && it != end; it.increment(error)) {
            // A link is not followed: what it points at may lie outside the folder.
            std::error_code ignored;
            if (stdfs::is_regular_file(it->symlink_status(ignored)) && !isSkipped(it->path())) {
                paths.push_back(it->path().string());
            }
        }
        if (error) mScan.problems.push_back(mFolder + ": " + error.message());
        // Sorted, a recorder series' files come one after another, in order.
        std::sort(paths.begin(), paths.end());
        for (const std::string& path : paths) add(path);
        return std::move(mScan);
    }

private:
    bool isSkipped(const stdfs::path& path) const {
        std::error_code ignored;
        return !mOptions.skip.empty() && stdfs::equivalent(path, mOptions.skip, ignored);
    }

    void add(const std::string& path) {
        const std::string relative = stdfs::path(path).lexically_relative(mFolder).string();
        uint64_t size = 0;
        std::string error;
        if (!image::inputFileSize(path, &size, &error)) {
            mScan.others.push_back({relative, 0, error});
            return;
        }
        mScan.bytes += size;
        parse::Decoded decoded;
        std::string reason;
        if (!mNames.decode(path, &decoded, &reason)) {
            mScan.others.push_back({relative, size, reason});
        } else if (decoded.kind == parse::kRecorderLogKind) {
            addLog(path, relative, size, decoded);
        } else if (decoded.kind == parse::kDumpinListKind ||
                   decoded.kind == parse::kDumpinLogKind) {
            mScan.others.push_back({relative, size, decoded.kind});
        } else {
            addDump(path, relative, size, decoded);
        }
    }

    void addLog(const std::string& path, const std::string& relative, uint64_t size,
                const parse::Decoded& decoded) {
        std::vector<uint8_t> bytes;
        std::string error;
        if (!image::readInputFile(path, size, &bytes, &error)) {
            mScan.problems.push_back(relative + ": " + error);
            return;
        }
        const size_t before = mScan.requests.size();
        const bool capture = decoded.fields.value("series", "") == "capture";
        readRecorderLog(std::string(bytes.begin(), bytes.end()),
                        stdfs::path(relative).filename().string(), capture, &mScan.requests);
        mScan.others.push_back(
                {relative, size,
                 "recorder log, " + std::to_string(mScan.requests.size() - before) + " requests"});
    }

    void addDump(const std::string& path, const std::string& relative, uint64_t size,
                 const parse::Decoded& decoded) {
        DumpEntry dump;
        dump.path = relative;
        dump.size = size;
        dump.kind = decoded.kind;
        dump.fields = decoded.fields;
        dump.module = image::moduleOf(decoded);
        dump.sensor = image::sensorOf(decoded);
        dump.uniqueKey = numberOf(decoded.fields, "unique_key");
        dump.request = numberOf(decoded.fields, "request");
        dump.frame = numberOf(decoded.fields, "frame");
        if (namesAnImage(decoded.fields)) describeImage(path, decoded, mOptions, &dump);
        mScan.dumps.push_back(std::move(dump));
    }

    std::string mFolder;
    const ScanOptions& mOptions;
    image::DumpNames mNames;
    Scan mScan;
};

}  // namespace

Scan scanFolder(const std::string& folder, const ScanOptions& options) {
    return Scanner(folder, options).run();
}

}  // namespace report
}  // namespace cli
}  // namespace camtune
