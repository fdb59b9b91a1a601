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
    int (*run)(const Args& args);  // arguments after the command name, --help included;
                                   // returns the exit status
};

// Registers a command at static-initialisation time.
struct Registrar {
    explicit Registrar(const Command& command);
};

const std::vector<Command>& commands();

}  // namespace cli
}  // namespace camtune

#define CAMTUNE_COMMAND_CONCAT2(a, b) a##b
#define CAMTUNE_COMMAND_CONCAT(a, b) CAMTUNE_COMMAND_CONCAT2(a, b)
#define CAMTUNE_COMMAND(...)                                       \
    static const ::camtune::cli::Registrar CAMTUNE_COMMAND_CONCAT( \
            sRegistrar, __LINE__)(::camtune::cli::Command{__VA_ARGS__})
