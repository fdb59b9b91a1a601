// The lint of replay configurations: every line the replay would refuse or misread.
#include "lint/odt_lint.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "odt/odt_config_reader.h"
#include "odt/odt_line_format.h"
#include "support/temp_root.h"

namespace NSCam {
namespace TuningUtils {
namespace odt {
namespace {

bool anyFileExists(const std::string&) {
    return true;
}

std::vector<LintFinding> lint(const std::string& text) {
    std::istringstream in(text);
    return lintReplayConfig(in, anyFileExists);
}

TEST(OdtLintTest, ReportsEachFaultyLine) {
    struct Case {
        const char* text;
        const char* finding;  // part of the only finding; null when the text is clean
    };
    const Case cases[] = {
            {"AAO,1,main,1,0;/d/000000001-0001-0001-main-AAO\n", nullptr},
            {"order: 1 2 4294967295\n", nullptr},
            {"order:\n", nullptr},
            {"   \n", nullptr},
            {"AAO,1,main,1;000000001-0001-0001\n", "expected 5 fields"},
            {" order: 1\n", "expected 5 fields"},
            {"AAO,1,main,1,0 000000001-0001-0001\n", "no \";\" ends the fifth field"},
            {"AAO,1,main,1,0,7;000000001-0001-0001\n", "feature \"0,7\" is not"},
            {"AAO,1,ma;in,1,0;000000001-0001-0001\n", "unknown sensor \"ma;in\""},
            {"AAX,1,main,1,0;000000001-0001-0001\n", "unknown module \"AAX\""},
            {"AAO,+1,main,1,0;000000001-0001-0001\n", "frame number \"+1\" is not"},
            {"AAO,4294967296,main,1,0;000000001-0001-0001\n", "frame number \"4294967296\""},
            {"AAO,1,main,1x,0;000000001-0001-0001\n", "stage \"1x\" is not a decimal number"},
            {"AAO,1,main,191,0;000000001-0001-0001\n", "stage 191 has no name"},
            {"AAO,1,main,1,53;000000001-0001-0001\n", "keyed under \"Default\""},
            {"AAO,1,main,1,0;\n", "no file after \";\""},
            {"AAO,1,main,1,0;/d/readme.txt\n", "file name \"readme.txt\" does not begin"},
            {"AAO,1,main,1,0;000000001-0x01-0001\n", "does not begin with a dump key"},
            {"order: 1 x\n", "order id \"x\""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::vector<LintFinding> findings = lint(c.text);
        if (c.finding == nullptr) {
            EXPECT_TRUE(findings.empty()) << findings.front().message;
            continue;
        }
        ASSERT_EQ(1u, findings.size());
        EXPECT_EQ(1, findings[0].line);
        EXPECT_NE(std::string::npos, findings[0].message.find(c.finding)) << findings[0].message;
    }
}

TEST(OdtLintTest, ReportsReplacedItemsWithBothLines) {
    std::vector<LintFinding> findings =
            lint("AAO,1,main,1,0;/d/000000001-0001-0001-a\n"
                 "AAO,1,sub,1,0;/d/000000001-0001-0001-b\n"
                 "AAO,1,main,-1,0;/d/000000001-0001-0001-c\n"
                 "\n"
                 "AAO,1,main,1,0;/d/000000001-0001-0001-d\n");
    ASSERT_EQ(3u, findings.size());
    EXPECT_EQ(3, findings[0].line);  // stage -1 has no name
    EXPECT_EQ(3, findings[1].line);
    EXPECT_EQ("replaces the item of line 1 (same frame, module, stage and feature)",
              findings[1].message);
    EXPECT_EQ(5, findings[2].line);
    EXPECT_EQ("replaces the item of line 3 (same frame, module, stage and feature)",
              findings[2].message);
}

// Whatever the replay would refuse, the lint reports.
TEST(OdtLintTest, EveryRejectedLineIsReported) {
    for (const char* line : {"AAO", ",,,,;", "AAO,1,main,1,0;-0001-0001", "AAO,1,main,0,0;1-2",
                             "order: 1 2 x", "AAO,1,main,1,0;000000001-0001-99999999999"}) {
        std::istringstream in(line);
        EXPECT_ANY_THROW(readReplayConfig(in, 0)) << line;
        EXPECT_FALSE(lint(line).empty()) << line;
    }
}

// The documented example, where the build says where it is (the host build does).
#ifdef CAMTUNE_ODT_EXAMPLE
// Clean once the files it names are there; each missing one is reported on its own line.
TEST(OdtLintTest, ExampleConfigurationIsCleanWithItsFilesInPlace) {
    camtune::test::TempRoot root;
    std::ifstream in(CAMTUNE_ODT_EXAMPLE);
    ASSERT_TRUE(in.good()) << CAMTUNE_ODT_EXAMPLE;
    std::vector<std::string> files;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && !isOrderLine(line)) files.push_back(parseDataLine(line).file);
    }
    ASSERT_EQ(6u, files.size());
    for (const std::string& file : files) root.writeFile(file, "data");
    std::ifstream again(CAMTUNE_ODT_EXAMPLE);
    for (const LintFinding& f : lintReplayConfig(again)) {
        ADD_FAILURE() << f.line << ": " << f.message;
    }
    std::remove(root.hostPath(files[3]).c_str());
    std::ifstream missing(CAMTUNE_ODT_EXAMPLE);
    const std::vector<LintFinding> findings = lintReplayConfig(missing);
    ASSERT_EQ(1u, findings.size());
    EXPECT_EQ(4, findings[0].line);
    EXPECT_EQ("file \"" + files[3] + "\" does not exist: nothing to replay", findings[0].message);
    std::ifstream frames(CAMTUNE_ODT_EXAMPLE);
    EXPECT_EQ(3u, readReplayConfig(frames, 0).frames.size());
}
#endif

}  // namespace
}  // namespace odt
}  // namespace TuningUtils
}  // namespace NSCam
