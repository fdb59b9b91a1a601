// What every `camtune lint <kind>` command shares: FILE or "-", --json, the report and the exit
// status (0 clean, 1 findings, 2 unreadable input or bad usage).
#pragma once

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli_parse.h"
#include "command.h"
#include "lint/lint_report.h"

namespace camtune {
namespace cli {

template <typename Check>
int runLint(const char* command, const char* description, const Args& args, Check check) {
    std::string file;
    bool json = false;
    CLI::App app(std::string(description) +
                         "\n\nExit status: 0 clean, 1 something was reported, 2 FILE cannot be "
                         "read or is larger than 16 MiB.",
                 command);
    app.add_option("FILE", file, "the file to check; - reads standard input")->required();
    app.add_flag("--json", json, "print the findings as a JSON array of {line, message}");
    const int parsed = parseArgs(app, args);
    if (parsed >= 0) return parsed;
    if (!json) return reportLintFile(file.c_str(), check, stdout, stderr);
    std::vector<LintFinding> findings;
    if (int status = collectLintFindings(file.c_str(), check, &findings, stderr); status != 0) {
        return status;
    }
    nlohmann::json out = nlohmann::json::array();
    for (const LintFinding& finding : findings) {
        out.push_back({{"file", file}, {"line", finding.line}, {"message", finding.message}});
    }
    std::printf("%s\n", out.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
    return findings.empty() ? 0 : 1;
}

}  // namespace cli
}  // namespace camtune
