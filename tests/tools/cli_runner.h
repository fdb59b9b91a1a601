// Runs the camtune tool as a subprocess and collects what it printed; a temporary folder per test.
#pragma once

#include <gtest/gtest.h>

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

// `text` split at blanks; "~" stands for a blank inside an argument.
std::vector<std::string> words(const std::string& text);
// `text` split at every `at`.
std::vector<std::string> split(const std::string& text, char at);

std::string readFile(const std::string& path);

// Whether `text` holds `part`; the failure message shows the whole text.
::testing::AssertionResult has(const std::string& text, const std::string& part);

// A fresh temporary folder, removed afterwards.
class CliTest : public ::testing::Test {
protected:
    CliTest();
    ~CliTest() override;
    // Writes `content` to `name` under the folder and returns its path.
    std::string write(const std::string& name, const std::string& content) const;

    std::string mRoot;
};

}  // namespace test
}  // namespace camtune
