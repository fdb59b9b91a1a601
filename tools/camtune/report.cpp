// camtune report: one self-contained HTML page for a dump folder.
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_parse.h"
#include "command.h"
#include "example_files.h"
#include "image_file.h"
#include "json_text.h"
#include "parse_kinds.h"
#include "report_html.h"
#include "report_scan.h"

namespace camtune {
namespace cli {
namespace {

namespace stdfs = std::filesystem;

constexpr char kDefaultPage[] = "report.html";

std::string description() {
    return "Writes one HTML page about a dump folder or a 'camtune sim' output root:\n"
           "- a timeline of the requests the scenario recorder logged, capture and preview\n"
           "  apart, each with its headline and its decision and execution records;\n"
           "- each request's dumps with their decoded name fields and size, and a thumbnail of\n"
           "  every image whose name gives its geometry;\n"
           "- a summary: files, bytes, dumps per module, sensor and kind; and every file that\n"
           "  is neither a log nor a dump.\n"
           "The page filters its dumps by request, module and sensor, and keeps the choice in\n"
           "its address (report.html#request=1:5&module=AAO).\n"
           "\n"
           "The page holds its style, script and pictures inline and loads nothing. It is the\n"
           "only file written: FOLDER/report.html unless -o names another, and it is not\n"
           "listed in itself. NDD names are decoded with --config, else the copy NDD left in\n"
           "their folder, else the example configuration.\n"
           "\n"
           "Exit status: 0 the page was written, 1 it could not be written, 2 bad usage or a\n"
           "folder that cannot be read.";
}

nlohmann::ordered_json summaryJson(const report::Scan& scan, const std::string& page) {
    size_t thumbnails = 0;
    for (const report::DumpEntry& dump : scan.dumps) thumbnails += !dump.thumbnail.empty();
    return {{"page", page},
            {"files", scan.dumps.size() + scan.others.size()},
            {"bytes", scan.bytes},
            {"dumps", scan.dumps.size()},
            {"thumbnails", thumbnails},
            {"requests", report::buildRequests(scan).size()},
            {"logged_requests", scan.requests.size()},
            {"problems", scan.problems}};
}

int runReport(const Args& args) {
    std::string folder, page;
    report::ScanOptions options;
    options.config = kDefaultNddConfig;
    bool json = false;

    CLI::App app(description(), "camtune report");
    app.add_option("folder", folder, "dump folder or sim output root")->required();
    app.add_option("-o,--output", page, "page to write (default FOLDER/report.html)");
    app.add_option("--thumbnail-width", options.thumbnailWidth,
                   "widest thumbnail in pixels; 0 for none")
            ->check(CLI::Range(0, 1024))
            ->capture_default_str();
    auto* configOption =
            app.add_option("--config", options.config,
                           "NDD configuration of every dump (default: its folder's copy)");
    app.add_flag("--json", json, "print a JSON summary");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;

    auto fail = [](int status, const std::string& message) {
        std::fprintf(stderr, "camtune report: %s\n", message.c_str());
        return status;
    };
    std::error_code error;
    if (!stdfs::is_directory(folder, error)) {
        return fail(2, folder + ": " +
                               (stdfs::exists(folder, error) ? "not a folder" : "no such folder"));
    }
    if (configOption->count() > 0) {
        parse::NameDecoder probe;
        std::string message;
        std::vector<std::string> warnings;
        if (!probe.loadNddConfig(options.config, &message, &warnings)) return fail(2, message);
        options.forcedConfig = true;
    }
    if (page.empty()) page = (stdfs::path(folder) / kDefaultPage).string();
    if (stdfs::is_directory(page, error)) return fail(2, page + ": is a folder, not a page");
    options.skip = page;

    const report::Scan scan = report::scanFolder(folder, options);
    const std::string html = report::renderReport(scan, folder);
    image::OutputFile file(page);
    std::string message;
    if (!file.create(&message) || !file.writeAll(html.data(), html.size(), &message) ||
        !file.commit(&message)) {
        return fail(1, message);
    }
    if (json) {
        std::printf("%s\n", jsonText(summaryJson(scan, page), 2).c_str());
    } else {
        size_t thumbnails = 0;
        for (const report::DumpEntry& dump : scan.dumps) thumbnails += !dump.thumbnail.empty();
        std::printf("%s: %zu files, %zu dumps (%zu thumbnails), %zu requests, %zu bytes of page\n",
                    page.c_str(), scan.dumps.size() + scan.others.size(), scan.dumps.size(),
                    thumbnails, report::buildRequests(scan).size(), html.size());
    }
    return 0;
}

}  // namespace

CAMTUNE_COMMAND("report", "write one HTML page with the requests, dumps and pictures of a folder",
                runReport);

}  // namespace cli
}  // namespace camtune
