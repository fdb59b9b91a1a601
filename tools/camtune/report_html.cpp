#include "report_html.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "json_text.h"
#include "report_assets.h"

namespace camtune {
namespace cli {
namespace report {
namespace {

// Request numbers in dump names keep their last four digits.
constexpr int64_t kNameRequestModulus = 10000;
// Record lists longer than this start folded.
constexpr size_t kOpenRecordLimit = 24;
constexpr const char* kSeries[] = {"capture", "preview", "unlogged"};

std::string escape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&#39;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

std::string grouped(uint64_t number) {
    std::string digits = std::to_string(number);
    for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3) digits.insert(at, ",");
    return digits;
}

std::string requestId(int64_t uniqueKey, int64_t request) {
    return std::to_string(uniqueKey) + ":" + std::to_string(request);
}

std::string fieldText(const parse::Fields& value) {
    if (value.is_null()) return "none";
    if (value.is_string()) return value.get<std::string>();
    if (value.is_array()) {
        std::string joined;
        for (const auto& item : value) joined += (joined.empty() ? "" : ",") + fieldText(item);
        return joined;
    }
    return jsonText(value);
}

// The fields a row shows beside its own columns.
std::string fieldsCell(const DumpEntry& dump) {
    static const std::set<std::string> kShownElsewhere = {"unique_key", "request", "frame",
                                                          "sensor", "sensor_id"};
    std::string cell;
    for (auto it = dump.fields.begin(); it != dump.fields.end(); ++it) {
        if (kShownElsewhere.count(it.key()) != 0) continue;
        cell += (cell.empty() ? "" : " ") + it.key() + "=" + fieldText(*it);
    }
    return escape(cell);
}

class Page {
public:
    Page(const Scan& scan, const std::string& folder)
        : mScan(scan), mFolder(folder), mRequests(buildRequests(scan)) {}

    std::string render() {
        mOut += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
        mOut += "<title>camtune report: " + escape(mFolder) + "</title>\n";
        mOut += "<style>" + std::string(kReportStyle) + "</style>\n</head>\n<body>\n";
        mOut += "<header>\n<h1>camtune report</h1>\n<div class=\"muted\">" + escape(mFolder) +
                "</div>\n";
        summary();
        mOut += "</header>\n";
        filters();
        mOut += "<main>\n";
        timeline();
        for (const char* series : kSeries) seriesSection(series);
        others();
        mOut += "</main>\n<script>" + std::string(kReportScript) + "</script>\n</body>\n</html>\n";
        return std::move(mOut);
    }

private:
    void card(const std::string& label, const std::string& value) {
        mOut += "<div class=\"card\"><b>" + value + "</b>" + label + "</div>";
    }

    void countTable(const char* title,
                    const std::map<std::string, std::pair<int, uint64_t>>& counts) {
        mOut += "<table class=\"count\"><tr><th>" + std::string(title) +
                "</th><th>dumps</th><th>bytes</th></tr>\n";
        for (const auto& [name, count] : counts) {
            mOut += "<tr><td>" + escape(name.empty() ? "(none)" : name) +
                    "</td><td class=\"num\">" + std::to_string(count.first) +
                    "</td><td class=\"num\">" + grouped(count.second) + "</td></tr>\n";
        }
        mOut += "</table>\n";
    }

    void summary() {
        std::map<std::string, std::pair<int, uint64_t>> modules, sensors, kinds;
        size_t images = 0, thumbnails = 0;
        for (const DumpEntry& dump : mScan.dumps) {
            for (auto* counts : {&modules, &sensors, &kinds}) {
                const std::string& key = counts == &modules   ? dump.module
                                         : counts == &sensors ? dump.sensor
                                                              : dump.kind;
                ++(*counts)[key].first;
                (*counts)[key].second += dump.size;
            }
            if (!dump.image.empty()) ++images;
            if (!dump.thumbnail.empty()) ++thumbnails;
        }
        int captures = 0, previews = 0;
        for (const RequestView& view : mRequests) {
            captures += view.series == "capture";
            previews += view.series == "preview";
        }
        mOut += "<section id=\"summary\"><div class=\"cards\">";
        card("files", grouped(mScan.dumps.size() + mScan.others.size()));
        card("bytes", grouped(mScan.bytes));
        card("dumps", grouped(mScan.dumps.size()));
        card("images", grouped(images));
        card("thumbnails", grouped(thumbnails));
        card("requests", grouped(mRequests.size()));
        card("capture requests", grouped(captures));
        card("preview requests", grouped(previews));
        card("other files", grouped(mScan.others.size()));
        mOut += "</div>\n<div class=\"counts\">\n";
        countTable("module", modules);
        countTable("sensor", sensors);
        countTable("kind", kinds);
        mOut += "</div>\n";
        for (const std::string& problem : mScan.problems) {
            mOut += "<p class=\"problem\">" + escape(problem) + "</p>\n";
        }
        mOut += "</section>\n";
    }

    void select(const char* key, const std::set<std::string>& values) {
        mOut += "<label>" + std::string(key) + " <select id=\"f-" + key +
                "\"><option value=\"\">all</option>";
        for (const std::string& value : values) {
            mOut += "<option>" + escape(value) + "</option>";
        }
        mOut += "</select></label>\n";
    }

    void filters() {
        std::set<std::string> modules, sensors;
        for (const DumpEntry& dump : mScan.dumps) {
            modules.insert(dump.module);
            sensors.insert(dump.sensor);
        }
        mOut += "<nav id=\"filters\">\n<label>request <select id=\"f-request\">"
                "<option value=\"\">all</option>";
        for (const RequestView& view : mRequests) {
            mOut += "<option value=\"" + escape(view.id) + "\">" + escape(view.id) + " " +
                    view.series + "</option>";
        }
        mOut += "</select></label>\n";
        select("module", modules);
        select("sensor", sensors);
        mOut += "<button id=\"f-clear\" type=\"button\">show all</button>\n"
                "<span id=\"shown\" class=\"muted\"></span>\n</nav>\n";
    }

    void timeline() {
        mOut += "<h2>Timeline</h2>\n<ol class=\"strip\">";
        for (const RequestView& view : mRequests) {
            mOut += "<li><a class=\"" + view.series + "\" href=\"#r-" + escape(view.id) +
                    "\" title=\"" + escape(view.id) + " " + view.series + ", " +
                    std::to_string(view.dumps.size()) + " dumps\">" + std::to_string(view.request) +
                    "</a></li>";
        }
        mOut += "</ol>\n<div class=\"muted\">request numbers in order; <span class=\"badge "
                "capture\">capture</span><span class=\"badge preview\">preview</span><span "
                "class=\"badge unlogged\">no log lines</span></div>\n";
    }

    void seriesSection(const std::string& series) {
        static const std::map<std::string, std::string> kTitles = {
                {"capture", "Capture requests"},
                {"preview", "Preview requests"},
                {"unlogged", "Requests only dumps name"}};
        size_t count = 0;
        for (const RequestView& view : mRequests) count += view.series == series;
        if (count == 0) return;
        mOut += "<section class=\"series\" id=\"" + series + "\">\n<h2>" + kTitles.at(series) +
                " (" + std::to_string(count) + ")</h2>\n";
        for (const RequestView& view : mRequests) {
            if (view.series == series) request(view);
        }
        mOut += "</section>\n";
    }

    void request(const RequestView& view) {
        mOut += "<article class=\"request " + view.series + "\" id=\"r-" + escape(view.id) +
                "\" data-request=\"" + escape(view.id) + "\">\n";
        std::string headline = "[UKey: " + std::to_string(view.uniqueKey) +
                               "][ReqNum: " + std::to_string(view.request) + "]";
        std::string files;
        size_t records = 0;
        for (const LoggedRequest* logged : view.logged) {
            if (logged == view.logged.front()) headline = logged->headline;
            if (files.find(logged->logFile) == std::string::npos) {
                files += (files.empty() ? "" : ", ") + logged->logFile;
            }
            records += logged->records.size();
        }
        mOut += "<h3><span class=\"badge\">" + view.series + "</span>" + escape(headline) +
                "</h3>\n<div class=\"muted\">" + std::to_string(records) + " records, " +
                std::to_string(view.dumps.size()) + " dumps" +
                (files.empty() ? "" : " &middot; " + escape(files)) + "</div>\n";
        if (records > 0) recordTable(view, records);
        if (!view.dumps.empty()) dumpTable(view);
        mOut += "</article>\n";
    }

    void recordTable(const RequestView& view, size_t records) {
        mOut += std::string("<details") + (records <= kOpenRecordLimit ? " open" : "") +
                "><summary>decisions and executions</summary>\n<table "
                "class=\"records\"><tr><th>record</th>"
                "<th>frame</th><th>sensor</th><th>module</th><th>stage</th><th>decision or "
                "result</th><th>text</th></tr>\n";
        for (const LoggedRequest* logged : view.logged) {
            for (const RecordLine& record : logged->records) {
                const char* type = record.type == RecordLine::Type::Decision    ? "decision"
                                   : record.type == RecordLine::Type::Execution ? "execution"
                                                                                : "other";
                mOut += "<tr class=\"" + std::string(type) + "\"><td class=\"type\">" + type +
                        "</td><td>" + (record.frame >= 0 ? std::to_string(record.frame) : "") +
                        "</td><td>" + escape(record.sensor) + "</td><td>" + escape(record.module) +
                        "</td><td>" + escape(record.stage) + "</td><td>" + escape(record.outcome) +
                        "</td><td class=\"text\">" + escape(record.text) + "</td></tr>\n";
            }
        }
        mOut += "</table>\n</details>\n";
    }

    void dumpTable(const RequestView& view) {
        mOut += "<table class=\"dumps\"><tr><th>picture</th><th>file and fields</th>"
                "<th>module</th><th>sensor</th><th>frame</th><th>bytes</th></tr>\n";
        for (const DumpEntry* dump : view.dumps) {
            mOut += "<tr class=\"dump\" data-request=\"" + escape(view.id) + "\" data-module=\"" +
                    escape(dump->module) + "\" data-sensor=\"" + escape(dump->sensor) +
                    "\"><td class=\"thumb\">";
            if (!dump->thumbnail.empty()) {
                mOut += "<img alt=\"\" src=\"" + dump->thumbnail + "\">";
            }
            mOut += "</td><td class=\"name\">" + escape(dump->path) + "<div class=\"fields\">" +
                    escape(dump->kind) + " " + fieldsCell(*dump);
            if (!dump->image.empty()) mOut += "<br>" + escape(dump->image);
            if (!dump->problem.empty()) {
                mOut += "<br><span class=\"problem\">" + escape(dump->problem) + "</span>";
            }
            mOut += "</div></td><td>" + escape(dump->module) + "</td><td>" + escape(dump->sensor) +
                    "</td><td class=\"num\">" +
                    (dump->frame >= 0 ? std::to_string(dump->frame) : "") +
                    "</td><td class=\"num\">" + grouped(dump->size) + "</td></tr>\n";
        }
        mOut += "</table>\n";
    }

    void others() {
        if (mScan.others.empty()) return;
        mOut += "<h2>Other files (" + std::to_string(mScan.others.size()) +
                ")</h2>\n<table class=\"others\"><tr><th>file</th><th>bytes</th><th>what it "
                "is</th></tr>\n";
        for (const OtherFile& other : mScan.others) {
            mOut += "<tr><td class=\"text\">" + escape(other.path) + "</td><td class=\"num\">" +
                    grouped(other.size) + "</td><td>" + escape(other.what) + "</td></tr>\n";
        }
        mOut += "</table>\n";
    }

    const Scan& mScan;
    std::string mFolder;
    std::vector<RequestView> mRequests;
    std::string mOut;
};

}  // namespace

std::vector<RequestView> buildRequests(const Scan& scan) {
    std::vector<RequestView> views;
    std::map<std::string, size_t> byId;
    auto viewFor = [&](int64_t uniqueKey, int64_t request, const std::string& series) {
        const std::string id = requestId(uniqueKey, request % kNameRequestModulus);
        auto [it, added] = byId.emplace(id, views.size());
        if (added) views.push_back(RequestView{id, uniqueKey, request, series, {}, {}});
        return &views[it->second];
    };
    for (const LoggedRequest& logged : scan.requests) {
        viewFor(logged.uniqueKey, logged.request, logged.capture ? "capture" : "preview")
                ->logged.push_back(&logged);
    }
    for (const DumpEntry& dump : scan.dumps) {
        viewFor(dump.uniqueKey, dump.request, "unlogged")->dumps.push_back(&dump);
    }
    std::stable_sort(views.begin(), views.end(), [](const RequestView& a, const RequestView& b) {
        return std::tie(a.uniqueKey, a.request) < std::tie(b.uniqueKey, b.request);
    });
    return views;
}

std::string renderReport(const Scan& scan, const std::string& folder) {
    return Page(scan, folder).render();
}

}  // namespace report
}  // namespace cli
}  // namespace camtune
