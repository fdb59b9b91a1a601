// Reads the JSON output of the benchmark programs (--benchmark_format=json, one file per program,
// named after it) and prints one table: each figure, its baseline measured in the same process,
// their ratio, the target and whether it holds. With --json it prints the same as JSON.
//
// Usage: bench_table [--json] DIR   (DIR holds <program>.json for each program that ran)
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace {

using nlohmann::json;

// Where a number comes from: one benchmark of one program, and a field of its result. "time" is
// the benchmark's reported time per iteration in ns (CPU time, or real time where the benchmark
// measures real or manual time); any other field is read as it is (a counter, items_per_second).
struct Source {
    const char* program;
    const char* benchmark;
    const char* field;
};

enum class Check {
    None,          // reported for scale, no target
    ValueAtMost,   // value <= limit
    RatioAtMost,   // value / baseline <= limit
    RatioAtLeast,  // value / baseline >= limit
};

struct Figure {
    const char* name;
    const char* unit;
    Source value;
    const char* baselineName;
    Source baseline;
    Check check;
    double limit;
};

constexpr char kTime[] = "time";

// clang-format off
const Figure kFigures[] = {
    {"property_get_int32, set key", "ns",
     {"platform_bench", "BM_PropertyGetInt32Set/threads:1", kTime},
     "empty loop", {"platform_bench", "BM_Baseline/threads:1", kTime}, Check::ValueAtMost, 20},
    {"property_get_int32, unset key", "ns",
     {"platform_bench", "BM_PropertyGetInt32Unset/threads:1", kTime},
     "empty loop", {"platform_bench", "BM_Baseline/threads:1", kTime}, Check::ValueAtMost, 15},
    {"property_get_int32, set key, 2 threads (per read)", "ns",
     {"platform_bench", "BM_PropertyGetInt32Set/threads:2", kTime},
     "1 thread", {"platform_bench", "BM_PropertyGetInt32Set/threads:1", kTime},
     Check::RatioAtMost, 1.1},
    {"property_get_int32, unset key, 2 threads (per read)", "ns",
     {"platform_bench", "BM_PropertyGetInt32Unset/threads:2", kTime},
     "1 thread", {"platform_bench", "BM_PropertyGetInt32Unset/threads:1", kTime},
     Check::RatioAtMost, 1.1},
    {"NDD off: submit_request", "ns",
     {"ndd_bench", "BM_RefusedDisabled", kTime},
     "property read", {"ndd_bench", "BM_PropertyReadBaseline", kTime}, Check::RatioAtMost, 1.0},
    {"recorder off: submitDecisionRecord", "ns",
     {"recorder_bench", "BM_DecisionRecordOff", kTime},
     "property read", {"recorder_bench", "BM_PropertyReadBaseline", kTime},
     Check::RatioAtMost, 1.0},
    {"genFileName_RAW", "ns",
     {"naming_bench", "BM_genFileName_RAW/aeb:0", kTime},
     "snprintf per element", {"naming_bench", "BM_Baseline_snprintf", kTime},
     Check::RatioAtMost, 1.0},
    {"genFileName_RAW, bracketing on", "ns",
     {"naming_bench", "BM_genFileName_RAW/aeb:1", kTime},
     "snprintf per element", {"naming_bench", "BM_Baseline_snprintf", kTime}, Check::None, 0},
    {"recorder caller, 1 producer", "ns/line",
     {"recorder_vs_spdlog", "BM_ScenarioRecorder/producers:1", "caller_ns"},
     "spdlog sync", {"recorder_vs_spdlog", "BM_SpdlogSync/producers:1", "caller_ns"},
     Check::RatioAtMost, 0.5},
    {"recorder caller, 1 producer", "ns/line",
     {"recorder_vs_spdlog", "BM_ScenarioRecorder/producers:1", "caller_ns"},
     "spdlog async", {"recorder_vs_spdlog", "BM_SpdlogAsync/producers:1", "caller_ns"},
     Check::RatioAtMost, 0.5},
    {"recorder caller, 2 producers", "ns/line",
     {"recorder_vs_spdlog", "BM_ScenarioRecorder/producers:2", "caller_ns"},
     "spdlog sync", {"recorder_vs_spdlog", "BM_SpdlogSync/producers:2", "caller_ns"},
     Check::RatioAtMost, 0.5},
    {"recorder caller, 2 producers", "ns/line",
     {"recorder_vs_spdlog", "BM_ScenarioRecorder/producers:2", "caller_ns"},
     "spdlog async", {"recorder_vs_spdlog", "BM_SpdlogAsync/producers:2", "caller_ns"},
     Check::RatioAtMost, 0.5},
    {"recorder end to end, 1 producer", "lines/s",
     {"recorder_vs_spdlog", "BM_ScenarioRecorder/producers:1", "lines_per_s"},
     "spdlog async", {"recorder_vs_spdlog", "BM_SpdlogAsync/producers:1", "lines_per_s"},
     Check::None, 0},
    {"recorder end to end, 2 producers", "lines/s",
     {"recorder_vs_spdlog", "BM_ScenarioRecorder/producers:2", "lines_per_s"},
     "spdlog async", {"recorder_vs_spdlog", "BM_SpdlogAsync/producers:2", "lines_per_s"},
     Check::None, 0},
    {"recorder producers, 2 threads", "records/s",
     {"recorder_bench", "BM_ProducerRecord/producers:2", "items_per_second"},
     "1 thread", {"recorder_bench", "BM_ProducerRecord/producers:1", "items_per_second"},
     Check::RatioAtLeast, 1.5},
    {"recorder producer CPU per record, 2 threads", "ns",
     {"recorder_bench", "BM_ProducerRecord/producers:2", "cpu_ns_per_record"},
     "1 thread", {"recorder_bench", "BM_ProducerRecord/producers:1", "cpu_ns_per_record"},
     Check::None, 0},
    {"recorder service thread", "MB/s",
     {"recorder_bench", "BM_ServiceWrite/160", "service_MBps"},
     "plain write", {"recorder_bench", "BM_ServiceWrite/160", "plain_MBps"},
     Check::RatioAtLeast, 0.95},
    {"NDD submit_request, 1 MB", "us",
     {"ndd_bench", "BM_SubmitQueued/1", kTime},
     "warm memcpy", {"ndd_bench", "BM_SubmitQueued/1", "memcpy_us"}, Check::RatioAtMost, 1.1},
    {"NDD submit_request, 1 MB", "us",
     {"ndd_bench", "BM_SubmitQueued/1", kTime},
     "handed-over memcpy", {"ndd_bench", "BM_SubmitQueued/1", "handed_over_memcpy_us"},
     Check::None, 0},
    {"NDD submit_request, 12 MB", "us",
     {"ndd_bench", "BM_SubmitQueued/12", kTime},
     "warm memcpy", {"ndd_bench", "BM_SubmitQueued/12", "memcpy_us"}, Check::RatioAtMost, 1.1},
    {"NDD submit_request, 12 MB", "us",
     {"ndd_bench", "BM_SubmitQueued/12", kTime},
     "handed-over memcpy", {"ndd_bench", "BM_SubmitQueued/12", "handed_over_memcpy_us"},
     Check::None, 0},
    {"NDD writers", "MB/s",
     {"ndd_bench", "BM_WritersEndToEnd", "ndd_MBps"},
     "plain write", {"ndd_bench", "BM_WritersEndToEnd", "plain_MBps"},
     Check::RatioAtLeast, 0.95},
};
// clang-format on

double nsPerUnit(const std::string& unit) {
    if (unit == "us") return 1e3;
    if (unit == "ms") return 1e6;
    if (unit == "s") return 1e9;
    return 1;
}

// A benchmark's result: its median when it ran with repetitions, else its one run.
class Results {
public:
    explicit Results(const std::string& dir) : mDir(dir) {}

    std::optional<double> get(const Source& source, const char* unit) {
        const json* program = load(source.program);
        if (program == nullptr) return std::nullopt;
        const json* found = nullptr;
        for (const json& run : (*program)["benchmarks"]) {
            const std::string name = run.value("run_name", run.value("name", ""));
            if (!matches(name, source.benchmark)) continue;
            if (run.value("error_occurred", false)) return std::nullopt;
            if (run.value("run_type", "") == "aggregate") {
                if (run.value("aggregate_name", "") == "median") found = &run;
            } else if (found == nullptr) {
                found = &run;
            }
        }
        if (found == nullptr) return std::nullopt;
        if (std::string(source.field) != kTime) {
            if (!found->contains(source.field) || !(*found)[source.field].is_number()) {
                return std::nullopt;
            }
            return (*found)[source.field].get<double>();
        }
        // Reported time per iteration, in the figure's unit.
        const bool real = name(*found).find("real_time") != std::string::npos ||
                          name(*found).find("manual_time") != std::string::npos;
        const double ns = (*found)[real ? "real_time" : "cpu_time"].get<double>() *
                          nsPerUnit(found->value("time_unit", "ns"));
        return ns / nsPerUnit(unit);
    }

private:
    static std::string name(const json& run) { return run.value("name", ""); }

    // The wanted name's parts, in order, among the run's: "X/threads:2" matches
    // "X/min_time:0.500/real_time/threads:2"; "X/1" does not match "X/12".
    static bool matches(const std::string& name, const std::string& wanted) {
        const std::vector<std::string> have = parts(name);
        const std::vector<std::string> want = parts(wanted);
        if (have.empty() || want.empty() || have[0] != want[0]) return false;
        size_t at = 1;
        for (size_t w = 1; w < want.size(); ++w) {
            while (at < have.size() && have[at] != want[w]) ++at;
            if (at == have.size()) return false;
            ++at;
        }
        return true;
    }

    static std::vector<std::string> parts(const std::string& name) {
        std::vector<std::string> out;
        size_t start = 0;
        for (size_t slash; (slash = name.find('/', start)) != std::string::npos;) {
            out.push_back(name.substr(start, slash - start));
            start = slash + 1;
        }
        out.push_back(name.substr(start));
        return out;
    }

    const json* load(const std::string& program) {
        auto it = mPrograms.find(program);
        if (it == mPrograms.end()) {
            std::ifstream in(mDir + "/" + program + ".json");
            const std::string text((std::istreambuf_iterator<char>(in)),
                                   std::istreambuf_iterator<char>());
            // Aggregates of a counter that stays 0 (its spread relative to a mean of 0) come out
            // as NaN, which JSON has no word for.
            static const std::regex kNotANumber(R"((:\s*)-?(nan|inf|infinity)\b)",
                                                std::regex::icase);
            json parsed =
                    json::parse(std::regex_replace(text, kNotANumber, "$1null"), nullptr, false);
            if (parsed.is_discarded() || !parsed.contains("benchmarks")) parsed = nullptr;
            it = mPrograms.emplace(program, std::move(parsed)).first;
        }
        return it->second.is_null() ? nullptr : &it->second;
    }

    std::string mDir;
    std::map<std::string, json> mPrograms;
};

// Three significant digits, with a k or M for thousands and millions.
std::string number(double value) {
    char text[32];
    const double magnitude = std::fabs(value);
    if (magnitude >= 1e6) {
        std::snprintf(text, sizeof(text), "%.3g M", value / 1e6);
    } else if (magnitude >= 1e4) {
        std::snprintf(text, sizeof(text), "%.3g k", value / 1e3);
    } else if (magnitude >= 100) {
        std::snprintf(text, sizeof(text), "%.0f", value);
    } else {
        std::snprintf(text, sizeof(text), "%.3g", value);
    }
    return text;
}

std::string targetText(const Figure& figure) {
    char text[48];
    switch (figure.check) {
        case Check::None:
            return "-";
        case Check::ValueAtMost:
            std::snprintf(text, sizeof(text), "<= %g %s", figure.limit, figure.unit);
            break;
        case Check::RatioAtMost:
            std::snprintf(text, sizeof(text), "ratio <= %g", figure.limit);
            break;
        case Check::RatioAtLeast:
            std::snprintf(text, sizeof(text), "ratio >= %g", figure.limit);
            break;
    }
    return text;
}

struct Row {
    const Figure* figure;
    std::optional<double> value;
    std::optional<double> baseline;
    std::optional<double> ratio;
    std::optional<bool> holds;
};

Row evaluate(const Figure& figure, Results& results) {
    Row row{&figure, results.get(figure.value, figure.unit),
            results.get(figure.baseline, figure.unit), std::nullopt, std::nullopt};
    if (row.value && row.baseline && *row.baseline != 0) row.ratio = *row.value / *row.baseline;
    switch (figure.check) {
        case Check::None:
            break;
        case Check::ValueAtMost:
            if (row.value) row.holds = *row.value <= figure.limit;
            break;
        case Check::RatioAtMost:
            if (row.ratio) row.holds = *row.ratio <= figure.limit;
            break;
        case Check::RatioAtLeast:
            if (row.ratio) row.holds = *row.ratio >= figure.limit;
            break;
    }
    return row;
}

std::string holdsText(const Row& row) {
    if (row.figure->check == Check::None) return "-";
    if (!row.holds) return "not measured";
    return *row.holds ? "yes" : "NO";
}

void printTable(const std::vector<Row>& rows) {
    const std::vector<std::string> header = {"figure", "value",  "baseline (same run)",
                                             "ratio",  "target", "holds"};
    std::vector<std::vector<std::string>> cells;
    for (const Row& row : rows) {
        const Figure& f = *row.figure;
        const std::string value = row.value ? number(*row.value) + " " + f.unit : "-";
        const std::string baseline = std::string(f.baselineName) + " " +
                                     (row.baseline ? number(*row.baseline) + " " + f.unit : "-");
        cells.push_back({f.name, value, baseline, row.ratio ? number(*row.ratio) : "-",
                         targetText(f), holdsText(row)});
    }
    std::vector<size_t> widths(header.size());
    for (size_t c = 0; c < header.size(); ++c) widths[c] = header[c].size();
    for (const auto& line : cells) {
        for (size_t c = 0; c < line.size(); ++c) widths[c] = std::max(widths[c], line[c].size());
    }
    auto print = [&](const std::vector<std::string>& line) {
        std::string out = "|";
        for (size_t c = 0; c < line.size(); ++c) {
            out += " " + line[c] + std::string(widths[c] - line[c].size(), ' ') + " |";
        }
        std::cout << out << "\n";
    };
    print(header);
    std::string rule = "|";
    for (size_t width : widths) rule += std::string(width + 2, '-') + "|";
    std::cout << rule << "\n";
    for (const auto& line : cells) print(line);
}

json toJson(const std::vector<Row>& rows) {
    json figures = json::array();
    for (const Row& row : rows) {
        const Figure& f = *row.figure;
        json entry = {{"figure", f.name},
                      {"unit", f.unit},
                      {"value", row.value ? json(*row.value) : json(nullptr)},
                      {"baseline", f.baselineName},
                      {"baseline_value", row.baseline ? json(*row.baseline) : json(nullptr)},
                      {"ratio", row.ratio ? json(*row.ratio) : json(nullptr)},
                      {"target", f.check == Check::None ? json(nullptr) : json(targetText(f))},
                      {"holds", row.holds ? json(*row.holds) : json(nullptr)},
                      {"program", f.value.program}};
        figures.push_back(std::move(entry));
    }
    return {{"figures", figures}};
}

}  // namespace

int main(int argc, char** argv) {
    bool asJson = false;
    std::string dir;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--json") {
            asJson = true;
        } else if (dir.empty() && arg[0] != '-') {
            dir = arg;
        } else {
            std::cerr << "usage: bench_table [--json] DIR\n";
            return 2;
        }
    }
    if (dir.empty()) {
        std::cerr << "usage: bench_table [--json] DIR\n";
        return 2;
    }
    Results results(dir);
    std::vector<Row> rows;
    for (const Figure& figure : kFigures) rows.push_back(evaluate(figure, results));
    if (asJson) {
        std::cout << toJson(rows).dump(2) << "\n";
    } else {
        printTable(rows);
    }
    return 0;
}
