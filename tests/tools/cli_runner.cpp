#include "cli_runner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace camtune {
namespace test {
namespace {

std::string slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

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
        for (const std::string& variable : env) ::putenv(const_cast<char*>(variable.c_str()));
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
    run.out = slurp(outPath);
    run.err = slurp(errPath);
    ::unlink(outPath);
    ::unlink(errPath);
    return run;
}

}  // namespace test
}  // namespace camtune
