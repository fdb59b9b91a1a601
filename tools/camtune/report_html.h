// The camtune report page: one self-contained HTML file for a scanned dump folder.
#pragma once

#include <string>
#include <vector>

#include "report_scan.h"

namespace camtune {
namespace cli {
namespace report {

// The requests of the page, as its timeline lists them: logged requests (those logged more
// than once merged) with the dumps their key names, then requests only dumps name.
struct RequestView {
    std::string id;  // "unique key:request", the request's last four digits as dumps hold them
    int64_t uniqueKey = -1;
    int64_t request = -1;
    std::string series;  // "capture", "preview" or "unlogged"
    std::vector<const LoggedRequest*> logged;
    std::vector<const DumpEntry*> dumps;
};

std::vector<RequestView> buildRequests(const Scan& scan);

// The page for `scan` of `folder`.
std::string renderReport(const Scan& scan, const std::string& folder);

}  // namespace report
}  // namespace cli
}  // namespace camtune
