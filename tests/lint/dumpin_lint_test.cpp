// The list and configuration checks behind `camtune lint dumpin` and `camtune lint reprocess`.
#include "lint/dumpin_lint.h"

#include <cstdio>
#include <sstream>
#include <string>

#include "dumpin/dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

// Findings of `check` on `text`, one "line: message" per line.
template <typename Check>
std::string findings(Check check, const std::string& text) {
    std::istringstream in(text);
    std::string out;
    for (const dumpin::LintFinding& f : check(in)) {
        out += std::to_string(f.line) + ": " + f.message + "\n";
    }
    return out;
}

class LintTest : public DumpinTest {
protected:
    void SetUp() override {
        makeFile("/data/t/a.bin");
        makeFile("/data/t/b.bin");
    }
};

TEST_F(LintTest, DumpinListFindings) {
    const std::pair<const char*, const char*> cases[] = {
            {"lsc,0001,EIspProfile_Capture;/data/t/a.bin\nlsc,0002,EIspProfile_MFNR;/data/t/a.bin\n"
             "lsc,0003,EIspProfile_MFNR;/data/t/b.bin\r\n\nraw,0001,P;/data/t/a.bin\n"
             "packed_word,0001,warp,P;/data/t/b.bin\nimg3o,0001,P;/data/t/new.yuv\n"
             "frameNo,0001,P;37\nuniqueKey;42\nrequestNo;7\nraw_stride;4000\n"
             "lpcnr,0001,P;/data/t/a.bin\nface_info,12345,P;/data/t/a.bin\n",
             ""},
            {"uniqueKey;12abc\nrequestNo;7\nraw_stride;99999999999999999999\n",
             "1: \"uniqueKey\" value \"12abc\" reads as 12\n"
             "3: \"raw_stride\" value \"99999999999999999999\" reads as 2147483647\n"},
            {"lcs,0001,P;/data/t/a.bin\n# a note\nlsc,0001;/data/t/a.bin\nlsc,0001,P/data/t/a.bin\n"
             "lsc,12,P;/data/t/a.bin\nraw,01234,P;/data/t/a.bin\n"
             "frameNo,0001,P;abc\npacked_word,0001,warp;/data/t/a.bin\n",
             "1: unknown keyword \"lcs\"; the line is never used\n"
             "2: missing ',' after the format\n"
             "3: missing ',' after the request number\n"
             "4: missing ';' before the path\n"
             "5: request number \"12\" is not four digits (\"%04d\")\n"
             "6: request number \"01234\" is not four digits (\"%04d\")\n"
             "7: frame number \"abc\" is not a number\n"
             "8: missing ',' after the usage\n"},
            {"lsc,0001,P;/data/t/missing.bin\nltm,0001,P;/data/default/a.bin\nmfb,0001,P;\n"
             "rrzo,0001,P;/data/t/gone.raw\nimg3o,0001,P;\n",
             "1: file \"/data/t/missing.bin\" does not exist\n"
             "2: path \"/data/default/a.bin\" contains \"default\" and is read as not found\n"
             "3: empty path\n"
             "4: file \"/data/t/gone.raw\" does not exist\n"
             "5: empty path\n"},
            {"uniqueKey\nrequestNo;x7\nraw_stride;4\nraw_stride;5\nlsc,0001,P;/data/t/"
             "uniqueKey.bin\n",
             "1: \"uniqueKey\" line without ';'; its value reads as 0\n"
             "2: \"requestNo\" value \"x7\" is not a number; it reads as 0\n"
             "4: second \"raw_stride\" line; line 3 is used\n"
             "5: second \"uniqueKey\" line; line 1 is used\n"
             "5: file \"/data/t/uniqueKey.bin\" does not exist\n"},
            {"lsc,0001,P;/data/t/requestNo.bin\n",
             "1: entry contains \"requestNo\" and is also read as that value line\n"
             "1: file \"/data/t/requestNo.bin\" does not exist\n"},
            {"lsc,0001,X;/data/t/a.bin\nlsc,0002,X;/data/t/b.bin\n"
             "lsc,0002,Preview;/data/t/a.bin\nlsc,0003,Preview;/data/t/b.bin\n"
             "lpcnr,0002,Preview;/data/t/a.bin\nlpcnr,0003,Preview;/data/t/b.bin\n",
             "2: never used: line 1 matches the same requests first\n"
             "6: never used: line 5 matches the same requests first\n"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(findings(dumpin::lintDumpinList, text), expected) << text;
    }
}

TEST_F(LintTest, ReprocessConfigFindings) {
    const std::pair<const char*, const char*> cases[] = {
            {"uniqueKey,42\nraw_stride,4000\n{\n// frame\n\n"
             "raw,0007,EIspProfile_Capture;/data/t/a.bin\n"
             "nr3d_weight,0007,EIspProfile_Capture;12\n"
             "frameNo,0007,EIspProfile_Capture;37\n"
             "<END_OF_FRAME>\n}\n",
             ""},
            {"uniqueKey,abc\nraw_stride,+4000\n",
             "1: uniqueKey \"abc\" is not a number; names made "
             "from it carry it as it stands\n"
             "2: raw_stride \"+4000\" reads as 4000\n"},
            {"{\nraw,0001,P;/data/t/a.bin\n}\n{\nlsc,0002,P;/data/t/b.bin\n<END_OF_FRAME>\n}\n",
             "3: frame block ends without <END_OF_FRAME>; its entries join the next frame\n"},
            {"{\nraw,0001,P;/data/t/a.bin\nlsc,0001,P;/data/t/b.bin\n",
             "2: entries from here on are never ended by <END_OF_FRAME> and are dropped\n"},
            {"raw_stride,wide\n{\nraw,abc,P;/data/t/"
             "a.bin\nnr3d_x,0001,P;twelve\n<END_OF_FRAME>\n}\n",
             "1: raw_stride \"wide\" is not a number; the stride reads as 0\n"
             "3: request number \"abc\" is not a number; initReprocInfo throws\n"
             "4: nr3d value \"twelve\" is not a number; initReprocInfo throws\n"
             "5: <END_OF_FRAME> without entries adds an empty frame\n"},
            {"raw,0001,P;/data/t/a.bin\nuniqueKey,\n{ raw\nab\nraw,0001;/data/t/gone.bin\n"
             "raw,0001,P;/data/t/a.bin\n<END_OF_FRAME>\n}\n",
             "1: ignored: outside a frame block\n"
             "2: empty uniqueKey value\n"
             "3: read as \"{\"; the rest of the line is ignored\n"
             "4: ignored: too short to be an entry\n"
             "5: missing ',' after the request number\n"
             "5: request number \"0001;/data/t/gone.bin\" reads as 1\n"
             "5: file \"/data/t/gone.bin\" does not exist\n"
             "6: second \"raw\" in this frame; the first is kept\n"},
            {"uniqueKey,1\nraw_stride,2\nuniqueKey,3\n{\n raw,0001x,P;/data/t/a.bin\n"
             "nr3d_x,0001,P;4x\n<END_OF_FRAME>\n}\n",
             "3: second \"uniqueKey\" line; it replaces line 1\n"
             "5: request number \"0001x\" reads as 1\n"
             "5: format \" raw\" has blanks around it; a lookup of \"raw\" never finds it\n"
             "6: nr3d value \"4x\" reads as 4\n"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(findings(dumpin::lintReprocessConfig, text), expected) << text;
    }
}

TEST_F(LintTest, LintFilePrintsFindingsAndSetsTheStatus) {
    mRoot.writeFile("/bad.list", "lsc,0001,P;/data/t/a.bin\nbogus,1\n");
    mRoot.writeFile("/good.list", "lsc,0001,P;/data/t/a.bin\n");
    const std::string bad = mRoot.hostPath("/bad.list");
    const std::string good = mRoot.hostPath("/good.list");
    const std::string none = mRoot.hostPath("/none");
    std::FILE* out = std::fopen(mRoot.hostPath("/out").c_str(), "w");
    std::FILE* err = std::fopen(mRoot.hostPath("/err").c_str(), "w");
    ASSERT_TRUE(out && err);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::DumpinList, bad.c_str(), out, err), 1);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::DumpinList, good.c_str(), out, err), 0);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::ReprocessConfig, good.c_str(), out, err), 1);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::DumpinList, none.c_str(), out, err), 2);
    std::fclose(out);
    std::fclose(err);
    EXPECT_EQ(mRoot.readFile("/out"),
              bad + ":2: unknown keyword \"bogus\"; the line is never used\n" + good +
                      ":1: ignored: outside a frame block\n");
    EXPECT_EQ(mRoot.readFile("/err"),
              "camtune: cannot read " + none + ": No such file or directory\n");
}

}  // namespace
}  // namespace test
}  // namespace camtune
