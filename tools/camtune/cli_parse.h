// Option parsing with CLI11 for one subcommand.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>

#include "command.h"

namespace camtune {
namespace cli {

// Parses `args` into `app`, whose name is the command line's start ("camtune sim"). Returns -1
// when the command should run, otherwise the exit status:
// 0 after printing help, 2 after printing what is wrong with the arguments.
inline int parseArgs(CLI::App& app, const Args& args) {
    std::vector<std::string> reversed(args.rbegin(), args.rend());
    try {
        app.parse(reversed);
    } catch (const CLI::CallForHelp&) {
        std::fputs(app.help().c_str(), stdout);
        return 0;
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "%s: %s\nRun '%s --help' for the options.\n", app.get_name().c_str(),
                     error.what(), app.get_name().c_str());
        return 2;
    }
    return -1;
}

}  // namespace cli
}  // namespace camtune
