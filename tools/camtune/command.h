// The camtune subcommand table. Each subcommand lives in its own source file and registers
// itself with CAMTUNE_COMMAND; main() dispatches on the first one or two arguments.
#pragma once

#include <string>
#include <vector>

namespace camtune {
namespace cli {

using Args = std::vector<std::string>;

struct Command {
    const char* name;              // "props", or two words such as "lint dumpin"
    const char* summary;           // one line for the command list
    const char* usage;             // full --help text; null when run() parses --help itself
    int (*run)(const Args& args);  // arguments after the command name; returns the exit status
};

// Registers a command at static-initialisation time.
struct Registrar {
    explicit Registrar(const Command& command);
};

const std::vector<Command>& commands();

// True when `args` holds "--help" or "-h" where it is not the value of an option.
bool wantsHelp(const Args& args);

// Value of "--name VALUE" in `args`, or null.
const std::string* option(const Args& args, const char* name);

}  // namespace cli
}  // namespace camtune

#define CAMTUNE_COMMAND_CONCAT2(a, b) a##b
#define CAMTUNE_COMMAND_CONCAT(a, b) CAMTUNE_COMMAND_CONCAT2(a, b)
#define CAMTUNE_COMMAND(...)                                       \
    static const ::camtune::cli::Registrar CAMTUNE_COMMAND_CONCAT( \
            sRegistrar, __LINE__)(::camtune::cli::Command{__VA_ARGS__})
