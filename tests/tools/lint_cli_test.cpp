// camtune lint, --version and name, run as a user runs them.
#include <sys/wait.h>

#include <filesystem>
#include <fstream>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;

using LintCliTest = CliTest;

// Files that cannot be read exit 2; whole-file problems are findings (exit 1), for every kind.
TEST_F(LintCliTest, FilesThatCannotBeCheckedAndWholeFileProblems) {
    const std::string empty = write("empty", "");
    const std::string cr = write("cr", "uniqueKey;12\rrequestNo;3\r");
    struct Case {
        std::string path;
        int status;
        std::string text;  // on stderr for status 2, else on stdout
    } cases[] = {
            {mRoot, 2, "cannot read " + mRoot + ": Is a directory"},
            {mRoot + "/none.list", 2,
             "cannot read " + mRoot + "/none.list: No such file or directory"},
            {"/dev/zero", 2,
             "cannot check /dev/zero: larger than 16 MiB, not a configuration file"},
            {empty, 1, empty + ":1: the file is empty: the library reads nothing from it"},
            {cr, 1, cr + ":1: bare CR line end: the library reads lines up to a newline"},
    };
    for (const char* kind : {"dumpin", "reprocess", "odt"}) {
        for (const Case& c : cases) {
            CliRun run = runCli({"lint", kind, c.path});
            EXPECT_EQ(run.status, c.status) << kind << " " << c.path;
            EXPECT_TRUE(has(c.status == 2 ? run.err : run.out, c.text)) << kind;
        }
    }
    // CR LF line ends are read as the library reads them: no finding of their own.
    CliRun crlf = runCli({"lint", "dumpin", write("crlf", "uniqueKey;12\r\n")});
    EXPECT_EQ(crlf.out.find("bare CR"), std::string::npos) << crlf.out;
}

TEST_F(LintCliTest, DashReadsStandardInput) {
    const std::string path = write("stdin", "uniqueKey;12\n");
    // The runner gives camtune no standard input, so this one goes through a shell.
    std::string command =
            std::string(CAMTUNE_CLI) + " lint dumpin - < " + path + " > " + mRoot + "/out.txt 2>&1";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(readFile(mRoot + "/out.txt"), "");
}

TEST_F(LintCliTest, NamedFilesAreLookedForUnderTheRoot) {
    const std::string named = "/data/vendor/camera_dump/000001234-0041-0120-main-AAO.bin";
    const std::string path = write("replay.cfg", "AAO,120,main,1,0;" + named + "\n");
    const std::vector<std::string> env = {"CAMTUNE_ROOT=" + mRoot};
    CliRun missing = runCli({"lint", "odt", path}, mRoot, env);
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(has(missing.out, ":1: file \"" + named + "\" does not exist"));
    write(named.substr(1), "stats");
    CliRun present = runCli({"lint", "odt", path}, mRoot, env);
    EXPECT_EQ(present.status, 0) << present.out;
}

TEST_F(LintCliTest, JsonListsTheFindings) {
    const std::string path = write("bad.cfg", "Preveiw,Default,[Prefix],Capture,AAO,1,0\n");
    CliRun run = runCli({"lint", "ndd", path, "--json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.out, "\"line\": 1"));
    EXPECT_TRUE(has(run.out, "unknown feature \\\"Preveiw\\\""));
    CliRun clean =
            runCli({"lint", "ndd", write("good.cfg", "Preview,Default,[Prefix],Capture,AAO,1,0\n"),
                    "--json"});
    EXPECT_EQ(clean.status, 0);
    EXPECT_EQ(clean.out, "[]\n");
}

TEST_F(LintCliTest, NameTouchesNoDisk) {
    CliRun name = runCli({"name", "raw"}, mRoot, {"CAMTUNE_ROOT=" + mRoot + "/root"});
    EXPECT_EQ(name.status, 0) << name.err;
    EXPECT_TRUE(has(name.out, "/data/vendor/camera_dump/"));
    EXPECT_FALSE(stdfs::exists(mRoot + "/root"));
}

}  // namespace
}  // namespace test
}  // namespace camtune
