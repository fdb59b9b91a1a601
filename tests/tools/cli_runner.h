// Runs the camtune tool as a subprocess and collects what it printed.
#pragma once

#include <string>
#include <vector>

namespace camtune {
namespace test {

struct CliRun {
    int status = -1;  // exit status; -1 when the tool did not exit normally
    std::string out;
    std::string err;
};

// Runs `camtune` with `args` (each passed as one argument) in the working folder `cwd`, with
// the environment variables `env` ("NAME=value") added.
CliRun runCli(const std::vector<std::string>& args, const std::string& cwd = ".",
              const std::vector<std::string>& env = {});

}  // namespace test
}  // namespace camtune
