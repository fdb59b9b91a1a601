// The list and configuration checks behind `camtune lint dumpin` and `camtune lint reprocess`.
#include "dumpin/lint.h"

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "dumpin_fixture.h"

namespace camtune {
namespace test {
namespace {

using dumpin::LintFinding;

struct Expected {
    int line;
    const char* message;  // exact
};

struct LintCase {
    const char* name;
    const char* text;
    std::vector<Expected> findings;
};

class LintTest : public DumpinTest {
protected:
    void SetUp() override {
        makeFile("/data/t/a.bin");
        makeFile("/data/t/b.bin");
    }
    void expectFindings(const LintCase& c, const std::vector<LintFinding>& found) {
        ASSERT_EQ(found.size(), c.findings.size()) << c.name << describe(found);
        for (size_t i = 0; i < found.size(); ++i) {
            EXPECT_EQ(found[i].line, c.findings[i].line) << c.name << describe(found);
            EXPECT_EQ(found[i].message, c.findings[i].message) << c.name;
        }
    }
    static std::string describe(const std::vector<LintFinding>& found) {
        std::string text;
        for (const LintFinding& f : found)
            text += "\n  " + std::to_string(f.line) + ": " + f.message;
        return text;
    }
};

TEST_F(LintTest, DumpinListFindings) {
    const LintCase cases[] = {
            {"clean",
             "lsc,0001,EIspProfile_Capture;/data/t/a.bin\n"
             "lsc,0002,EIspProfile_MFNR;/data/t/a.bin\n"
             "lsc,0003,EIspProfile_MFNR;/data/t/b.bin\r\n"
             "\n"
             "raw,0001,EIspProfile_Capture;/data/t/a.bin\n"
             "packed_word,0001,warp,P;/data/t/b.bin\n"
             "img3o,0001,P;/data/t/new.yuv\n"
             "frameNo,0001,P;37\n"
             "uniqueKey;42\nrequestNo;7\nraw_stride;4000\n"
             "lpcnr,0001,P;/data/t/a.bin\n"
             "face_info,12345,P;/data/t/a.bin\n",
             {}},
            {"unknown keyword and missing comma",
             "lcs,0001,P;/data/t/a.bin\n# a note\n",
             {{1, "unknown keyword \"lcs\"; the line is never used"},
              {2, "missing ',' after the format"}}},
            {"separators of a tuning entry",
             "lsc,0001;/data/t/a.bin\nlsc,0001,P/data/t/a.bin\n",
             {{1, "missing ',' after the request number"}, {2, "missing ';' before the path"}}},
            {"request numbers",
             "lsc,12,P;/data/t/a.bin\nraw,01234,P;/data/t/a.bin\nmss,00x1,P;/data/t/a.bin\n",
             {{1, "request number \"12\" is not four digits (\"%04d\")"},
              {2, "request number \"01234\" is not four digits (\"%04d\")"},
              {3, "request number \"00x1\" is not four digits (\"%04d\")"}}},
            {"paths",
             "lsc,0001,P;/data/t/missing.bin\nltm,0001,P;/data/default/a.bin\nmfb,0001,P;\n"
             "rrzo,0001,P;/data/t/gone.raw\nimg3o,0001,P;\n",
             {{1, "file \"/data/t/missing.bin\" does not exist"},
              {2, "path \"/data/default/a.bin\" contains \"default\" and is read as not found"},
              {3, "empty path"},
              {4, "file \"/data/t/gone.raw\" does not exist"},
              {5, "empty path"}}},
            {"value lines",
             "uniqueKey\nrequestNo;x7\nraw_stride;4\nraw_stride;5\n",
             {{1, "\"uniqueKey\" line without ';'; its value reads as 0"},
              {2, "\"requestNo\" value \"x7\" is not a number; it reads as 0"},
              {4, "second \"raw_stride\" line; line 3 is used"}}},
            {"entry holding a value word",
             "lsc,0001,P;/data/t/uniqueKey.bin\n",
             {{1, "entry contains \"uniqueKey\" and is also read as that value line"},
              {1, "file \"/data/t/uniqueKey.bin\" does not exist"}}},
            {"shadowed entries",
             "lsc,0001,EIspProfile_Capture;/data/t/a.bin\n"
             "lsc,0002,EIspProfile_Capture;/data/t/b.bin\n"
             "lsc,0002,EIspProfile_Preview;/data/t/a.bin\n"
             "lsc,0003,EIspProfile_Preview;/data/t/b.bin\n"
             "lpcnr,0002,EIspProfile_Preview;/data/t/a.bin\n"
             "lpcnr,0003,EIspProfile_Preview;/data/t/b.bin\n",
             {{2, "never used: line 1 matches the same requests first"},
              {6, "never used: line 5 matches the same requests first"}}},
            {"frame numbers and warping raws",
             "frameNo,0001,P;abc\npacked_word,0001,warp;/data/t/a.bin\n",
             {{1, "frame number \"abc\" is not a number"}, {2, "missing ',' after the usage"}}},
    };
    for (const LintCase& c : cases) {
        std::istringstream in(c.text);
        expectFindings(c, dumpin::lintDumpinList(in));
    }
}

TEST_F(LintTest, ReprocessConfigFindings) {
    const LintCase cases[] = {
            {"clean",
             "uniqueKey,42\nraw_stride,4000\n{\n// frame\n\n"
             "raw,0007,EIspProfile_Capture;/data/t/a.bin\n"
             "nr3d_weight,0007,EIspProfile_Capture;12\n"
             "frameNo,0007,EIspProfile_Capture;37\n"
             "<END_OF_FRAME>\n}\n",
             {}},
            {"block without end of frame",
             "{\nraw,0001,P;/data/t/a.bin\n}\n{\nlsc,0002,P;/data/t/b.bin\n<END_OF_FRAME>\n}\n",
             {{3, "frame block ends without <END_OF_FRAME>; its entries join the next frame"}}},
            {"entries never ended",
             "{\nraw,0001,P;/data/t/a.bin\nlsc,0001,P;/data/t/b.bin\n",
             {{2, "entries from here on are never ended by <END_OF_FRAME> and are dropped"}}},
            {"numbers",
             "raw_stride,wide\n{\nraw,abc,P;/data/t/a.bin\nnr3d_x,0001,P;twelve\n"
             "<END_OF_FRAME>\n}\n",
             {{1, "raw_stride \"wide\" is not a number; initReprocInfo throws"},
              {3, "request number \"abc\" is not a number; initReprocInfo throws"},
              {4, "nr3d value \"twelve\" is not a number; initReprocInfo throws"},
              {5, "<END_OF_FRAME> without entries adds an empty frame"}}},
            {"skipped lines",
             "raw,0001,P;/data/t/a.bin\nuniqueKey,\n{ raw\nab\nraw,0001,P;/data/t/gone.bin\n"
             "raw,0001,P;/data/t/a.bin\n<END_OF_FRAME>\n}\n",
             {{1, "ignored: outside a frame block"},
              {2, "empty uniqueKey value"},
              {3, "read as \"{\"; the rest of the line is ignored"},
              {4, "ignored: too short to be an entry"},
              {5, "file \"/data/t/gone.bin\" does not exist"},
              {6, "second \"raw\" in this frame; the first is kept"}}},
            {"missing separators",
             "{\nraw,0001;/data/t/a.bin\n<END_OF_FRAME>\n}\n",
             {{2, "missing ',' after the request number"}}},
    };
    for (const LintCase& c : cases) {
        std::istringstream in(c.text);
        expectFindings(c, dumpin::lintReprocessConfig(in));
    }
}

TEST_F(LintTest, LintFilePrintsFindingsAndSetsTheStatus) {
    std::string dir = mRoot.path();
    std::string bad = dir + "/bad.list";
    std::string good = dir + "/good.list";
    {
        std::FILE* f = std::fopen(bad.c_str(), "w");
        std::fputs("lsc,0001,P;/data/t/a.bin\nbogus,1\n", f);
        std::fclose(f);
        f = std::fopen(good.c_str(), "w");
        std::fputs("lsc,0001,P;/data/t/a.bin\n", f);
        std::fclose(f);
    }
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    ASSERT_NE(out, nullptr);
    ASSERT_NE(err, nullptr);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::DumpinList, bad.c_str(), out, err), 1);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::DumpinList, good.c_str(), out, err), 0);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::ReprocessConfig, good.c_str(), out, err), 1);
    EXPECT_EQ(dumpin::lintFile(dumpin::LintTarget::DumpinList, (dir + "/none").c_str(), out, err),
              2);
    auto text = [](std::FILE* f) {
        std::rewind(f);
        std::string all;
        char buf[256];
        while (std::fgets(buf, sizeof(buf), f)) all += buf;
        std::fclose(f);
        return all;
    };
    EXPECT_EQ(text(out), bad + ":2: unknown keyword \"bogus\"; the line is never used\n" + good +
                                 ":1: ignored: outside a frame block\n");
    EXPECT_EQ(text(err), "camtune: cannot read " + dir + "/none\n");
}

}  // namespace
}  // namespace test
}  // namespace camtune
