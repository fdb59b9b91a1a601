// The configuration check behind `camtune lint ndd`.
#include "lint/ndd_lint.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace NSCam {
namespace TuningUtils {
namespace {

std::string findings(const std::string& text) {
    std::istringstream in(text);
    std::string out;
    for (const LintFinding& f : lintNddConfig(in)) {
        out += std::to_string(f.line) + ": " + f.message + "\n";
    }
    return out;
}

TEST(NddLintTest, ReportsWhatTheLibraryWouldStopAtMisreadOrNeverMatch) {
    const std::pair<const char*, const char*> cases[] = {
            {"Preview,Default,[Prefix],Streaming,AAO,1,0\n", ""},
            {"Preview,,[Prefix],Streaming,AAO,1,0\n",
             ""},  // an empty stage matches stage-less items
            {"Preveiw,Default,[Prefix],Streaming,AAO,1,0\n",
             "1: unknown feature \"Preveiw\": the item is never dumped; did you mean "
             "\"Preview\"?\n"},
            {"Preview,Defualt,[Prefix],Stream,LSC,1,0\n",
             "1: unknown stage \"Defualt\": the item is never dumped; did you mean \"Default\"?\n"
             "1: unknown category \"Stream\": the item is never dumped\n"},
            {"Preview,Default,[Prefix][Colour],Capture,AAO,1,0\n",
             "1: unknown field [Colour] in the pattern: it adds nothing\n"},
            {"Preview,Default,[Prefix][Size,Capture,LSC,1,0\n",
             "1: unclosed \"[\" in the pattern: the rest of it is dropped\n"},
            {"Preview,Default,[Prefix].[Format],Capture,LTMSO,1,0\n",
             "1: [Format] in the pattern of LTMSO, which is dumped from raw buffers: it adds "
             "nothing and logs an error\n"},
            {"Preview,Default,[Prefix].[Format],Capture,IMGO,1,0\n", ""},
            // Trailing text that happens to read like a finding does not end the check.
            {"Preview,Default,[Prefix],Capture,AAO,1 stops reading,0\nshort line\n",
             "1: enable \"1 stops reading\" has trailing text: it reads as 1\n"
             "2: 1 fields instead of 7: the library stops reading the file here\n"},
            {"Preview,Default,,Capture,IMGO,1,0\n",
             "1: empty file-name pattern: the item is refused\n"},
            {"Preview,Default,a/[Prefix],Capture,IMGO,1,0\n",
             "1: \"/\" in the pattern: the item is refused\n"},
            {"Preview,Default,[Prefix],Capture,IMGO,1x, 0\n",
             "1: enable \"1x\" has trailing text: it reads as 1\n"
             "1: dump-in \" 0\" reads as 0\n"},
            {"Preview,Default,[Prefix],Capture,IMGO,on,0\nPreview,Default,[Prefix],Capture,bad,1,"
             "0\n",
             "1: enable \"on\" is not a number: the library stops reading the file at this line\n"},
            {"Preview,Default,[Prefix],Capture,IMGO,1,99999999999\n",
             "1: dump-in \"99999999999\" is out of range: the library stops reading the file at "
             "this line\n"},
            {"Preview,Default,[Prefix],Capture,IMGO,1,0\n\nPreview,Default,[Prefix],Capture,bad,1,"
             "0\n",
             "2: blank line: the library stops reading the file here\n"},
            {"Preview,Default,[Prefix],Capture,IMGO,1\n",
             "1: 6 fields instead of 7: the library stops reading the file here\n"},
            {"Preview,Default,a,Capture,IMGO,1,0\nPreview,Default,b,Capture,IMGO,0,0\n",
             "2: same feature, stage, category and module as line 1: this line replaces it\n"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(findings(text), expected) << text;
}

TEST(NddLintTest, TheExampleConfigurationIsClean) {
    std::ifstream in(CAMTUNE_NDD_EXAMPLE);
    ASSERT_TRUE(in.is_open());
    EXPECT_TRUE(lintNddConfig(in).empty());
}

}  // namespace
}  // namespace TuningUtils
}  // namespace NSCam
