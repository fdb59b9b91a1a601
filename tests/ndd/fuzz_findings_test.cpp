// Names that cannot be a file of the dump folder, found by the NDD file-name fuzzer: each is
// refused with its reason, counted as a failed dump, and neither named nor written.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ndd_fixture.h"

namespace NSCam {
namespace TuningUtils {
namespace testing_ndd {
namespace {

using NddUnusableNameTest = NddTest;

TEST_F(NddUnusableNameTest, IsRefusedByTheQueryAndTheSubmission) {
    struct Case {
        std::string pattern;
        std::string error;
    } cases[] = {
            // The file opened would be "AAO", under a name the logs and dump-in list never show.
            {std::string("AAO\0.bin", 8),
             "file name (AAO) holds a NUL byte and would be cut there; item not dumped"},
            {".", "file name (.) names the dump folder or its parent, not a file; item not dumped"},
            {"..",
             "file name (..) names the dump folder or its parent, not a file; item not dumped"},
    };
    mProps.set(props::kNddDirectWrite, 1);
    mRoot.writeFile(kConfigPath, "");
    mNdd->init();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.error);
        mRoot.writeFile(kConfigPath, "Preview,Default," + c.pattern + ",Capture,AAO,1,0\n");
        mNdd->stream_on({0}, 1234);
        const int64_t failedBefore = mNdd->failedDumps();
        LogCapture log;

        NddData data = item();
        char path[kNddPathMax] = "untouched";
        EXPECT_FALSE(mNdd->query_file_path(eCategory_Capture, eModule_AAO, data, path, __FILE__,
                                           __LINE__));
        EXPECT_STREQ(path, "untouched");

        data = item();
        const char bytes[] = "payload";
        mNdd->submit_request(eCategory_Capture, eModule_AAO, data, bytes, sizeof(bytes), __FILE__,
                             __LINE__);
        EXPECT_EQ(log.count(Level::Error, c.error), 2);
        EXPECT_EQ(mNdd->failedDumps(), failedBefore + 2);
        EXPECT_EQ(folderFiles(), std::vector<std::string>{"ndd.cfg"});
        mNdd->stream_off({0});
    }
}

}  // namespace
}  // namespace testing_ndd
}  // namespace TuningUtils
}  // namespace NSCam
