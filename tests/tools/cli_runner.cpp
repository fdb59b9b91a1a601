#include "cli_runner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace camtune {
namespace test {

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> out;
    for (std::string word; in >> word;) {
        for (char& c : word) c = c == '~' ? ' ' : c;
        out.push_back(word);
    }
    return out;
}

std::vector<std::string> split(const std::string& text, char at) {
    std::istringstream in(text);
    std::vector<std::string> out;
    for (std::string part; std::getline(in, part, at);) out.push_back(part);
    return out;
}

::testing::AssertionResult has(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "'" << part << "' not in:\n" << text;
}

CliTest::CliTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "camtune-cli-XXXXXX").string();
    mRoot = ::mkdtemp(pattern.data()) != nullptr ? pattern : "";
}

CliTest::~CliTest() {
    std::error_code ignored;
    std::filesystem::remove_all(mRoot, ignored);
}

std::string CliTest::write(const std::string& name, const std::string& content) const {
    const std::string path = mRoot + "/" + name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

CliRun runCli(const std::vector<std::string>& args, const std::string& cwd,
              const std::vector<std::string>& env) {
    char outPath[] = "/tmp/camtune-cli-out-XXXXXX";
    char errPath[] = "/tmp/camtune-cli-err-XXXXXX";
    const int outFd = ::mkstemp(outPath);
    const int errFd = ::mkstemp(errPath);
    CliRun run;
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(outFd, STDOUT_FILENO);
        ::dup2(errFd, STDERR_FILENO);
        if (::chdir(cwd.c_str()) != 0) ::_exit(126);
        for (const std::string& variable : env) {
            if (!variable.empty()) ::putenv(const_cast<char*>(variable.c_str()));
        }
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(CAMTUNE_CLI));
        for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
        argv.push_back(nullptr);
        ::execv(CAMTUNE_CLI, argv.data());
        ::_exit(127);
    }
    int status = 0;
    if (pid > 0 && ::waitpid(pid, &status, 0) == pid && WIFEXITED(status)) {
        run.status = WEXITSTATUS(status);
    }
    ::close(outFd);
    ::close(errFd);
    run.out = readFile(outPath);
    run.err = readFile(errPath);
    ::unlink(outPath);
    ::unlink(errPath);
    return run;
}

}  // namespace test
}  // namespace camtune
