// camtune lint, --version and name, run as a user runs them.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>

#include "cli_runner.h"

namespace camtune {
namespace test {
namespace {

namespace stdfs = std::filesystem;

class LintCliTest : public ::testing::Test {
protected:
    LintCliTest() {
        std::string pattern = (stdfs::temp_directory_path() / "camtune-lint-XXXXXX").string();
        mDir = ::mkdtemp(pattern.data()) != nullptr ? pattern : "";
    }
    ~LintCliTest() override {
        std::error_code ignored;
        stdfs::remove_all(mDir, ignored);
    }
    std::string file(const std::string& name, const std::string& content) const {
        const std::string path = mDir + "/" + name;
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    std::string mDir;
};

TEST_F(LintCliTest, FilesThatCannotBeCheckedExitTwoWithTheReason) {
    struct Case {
        std::string path;
        std::string message;
    } cases[] = {
            {mDir, "cannot read " + mDir + ": Is a directory"},
            {mDir + "/none.list", "cannot read " + mDir + "/none.list: No such file or directory"},
            {"/dev/zero", "cannot check /dev/zero: larger than 16 MiB, not a configuration file"},
    };
    for (const char* kind : {"dumpin", "reprocess", "odt"}) {
        for (const Case& c : cases) {
            CliRun run = runCli({"lint", kind, c.path});
            EXPECT_EQ(run.status, 2) << kind << " " << c.path;
            EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        }
    }
}

TEST_F(LintCliTest, WholeFileProblemsAreFindings) {
    struct Case {
        std::string content;
        std::string finding;
    } cases[] = {
            {"", ":1: the file is empty: the library reads nothing from it"},
            {"uniqueKey;12\rrequestNo;3\r",
             ":1: bare CR line end: the library reads lines up to a newline"},
    };
    for (const char* kind : {"dumpin", "reprocess", "odt"}) {
        for (const Case& c : cases) {
            const std::string path = file("input", c.content);
            CliRun run = runCli({"lint", kind, path});
            EXPECT_EQ(run.status, 1) << kind;
            EXPECT_NE(run.out.find(path + c.finding), std::string::npos) << run.out;
        }
    }
    // CR LF line ends are read as the library reads them: no finding of their own.
    CliRun crlf = runCli({"lint", "dumpin", file("crlf", "uniqueKey;12\r\n")});
    EXPECT_EQ(crlf.out.find("bare CR"), std::string::npos) << crlf.out;
}

TEST_F(LintCliTest, DashReadsStandardInput) {
    const std::string path = file("stdin", "uniqueKey;12\n");
    // The runner gives camtune no standard input, so this one goes through a shell.
    std::string command =
            std::string(CAMTUNE_CLI) + " lint dumpin - < " + path + " > " + mDir + "/out.txt 2>&1";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
    std::ifstream out(mDir + "/out.txt");
    std::string text((std::istreambuf_iterator<char>(out)), std::istreambuf_iterator<char>());
    EXPECT_EQ(text, "");
}

TEST_F(LintCliTest, ValuesTheLibraryMisreadsAreFindings) {
    struct Case {
        const char* kind;
        std::string content;
        std::string finding;
    } cases[] = {
            {"dumpin", "uniqueKey;12abc\n", ":1: \"uniqueKey\" value \"12abc\" reads as 12"},
            {"dumpin", "raw_stride;99999999999999999999\n",
             ":1: \"raw_stride\" value \"99999999999999999999\" reads as 2147483647"},
            {"reprocess", "uniqueKey,abc\n", ":1: uniqueKey \"abc\" is not a number"},
            {"reprocess", "{\nraw,0001,P;/data/a.raw\nraw,0001,P;/data/b.raw\n<END_OF_FRAME>\n}\n",
             ":3: second \"raw\" in this frame; the first is kept"},
            {"reprocess", "{\nnr3d_x,0001,P;4x\n<END_OF_FRAME>\n}\n",
             ":2: nr3d value \"4x\" reads as 4"},
            {"ndd", "Preview,Default,[Prefix],Capture,AAO,1x,0\n",
             ":1: enable \"1x\" has trailing text: it reads as 1"},
    };
    for (const Case& c : cases) {
        const std::string path = file("input", c.content);
        CliRun run = runCli({"lint", c.kind, path});
        EXPECT_EQ(run.status, 1) << c.kind << " " << c.content;
        EXPECT_NE(run.out.find(path + c.finding), std::string::npos) << run.out;
    }
}

TEST_F(LintCliTest, NamedFilesAreLookedForUnderTheRoot) {
    const std::string named = "/data/vendor/camera_dump/000001234-0041-0120-main-AAO.bin";
    const std::string path = file("replay.cfg", "AAO,120,main,1,0;" + named + "\n");
    const std::vector<std::string> env = {"CAMTUNE_ROOT=" + mDir};
    CliRun missing = runCli({"lint", "odt", path}, mDir, env);
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.out.find(":1: file \"" + named + "\" does not exist"), std::string::npos)
            << missing.out;
    stdfs::create_directories(mDir + "/data/vendor/camera_dump");
    file(named.substr(1), "stats");
    CliRun present = runCli({"lint", "odt", path}, mDir, env);
    EXPECT_EQ(present.status, 0) << present.out;
}

TEST_F(LintCliTest, JsonListsTheFindings) {
    const std::string path = file("bad.cfg", "Preveiw,Default,[Prefix],Capture,AAO,1,0\n");
    CliRun run = runCli({"lint", "ndd", path, "--json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.out.find("\"line\": 1"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("unknown feature \\\"Preveiw\\\""), std::string::npos) << run.out;
    CliRun clean =
            runCli({"lint", "ndd", file("good.cfg", "Preview,Default,[Prefix],Capture,AAO,1,0\n"),
                    "--json"});
    EXPECT_EQ(clean.status, 0);
    EXPECT_EQ(clean.out, "[]\n");
    CliRun missing = runCli({"lint", "ndd"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.err.find("FILE is required"), std::string::npos) << missing.err;
}

TEST_F(LintCliTest, LintAloneListsTheKinds) {
    struct Case {
        std::vector<std::string> args;
        int status;
        bool onStdout;
        const char* extra;
    } cases[] = {
            {{"lint"}, 2, false, ""},
            {{"lint", "--help"}, 0, true, ""},
            {{"lint", "bogus"}, 2, false, "camtune lint: unknown kind 'bogus'"},
    };
    for (const Case& c : cases) {
        CliRun run = runCli(c.args);
        EXPECT_EQ(run.status, c.status) << c.args.back();
        const std::string& text = c.onStdout ? run.out : run.err;
        for (const char* kind : {"dumpin", "reprocess", "odt"}) {
            EXPECT_NE(text.find(std::string("  ") + kind), std::string::npos) << text;
        }
        EXPECT_NE(text.find(c.extra), std::string::npos) << text;
    }
}

TEST_F(LintCliTest, VersionAndNameTouchNoDisk) {
    CliRun version = runCli({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("camtune ", 0), 0u) << version.out;
    CliRun name = runCli({"name", "raw"}, mDir, {"CAMTUNE_ROOT=" + mDir + "/root"});
    EXPECT_EQ(name.status, 0) << name.err;
    EXPECT_NE(name.out.find("/data/vendor/camera_dump/"), std::string::npos) << name.out;
    EXPECT_FALSE(stdfs::exists(mDir + "/root"));
}

}  // namespace
}  // namespace test
}  // namespace camtune
