// The reprocess configuration's line grammar, shared by initReprocInfo and the linter.
//
//   uniqueKey,42            file-wide values, outside frame blocks
//   raw_stride,4000
//   {                       a frame block
//   // comment
//   raw,0007,EIspProfile_Capture;/data/x.raw
//   nr3d_weight,0007,EIspProfile_Capture;12
//   <END_OF_FRAME>          appends the frame built so far
//   }
#pragma once

#include <string>
#include <vector>

#include "camtune/file_read_rule.h"

namespace camtune {
namespace dumpin {

enum class ReprocLineKind {
    BlockOpen,   // contains "{"
    BlockClose,  // contains "}"
    Skipped,     // inside a block: a comment or a line too short to be an entry
    EndOfFrame,  // inside a block: "<END_OF_FRAME>"
    Entry,       // inside a block: "format,reqNum,ispProfile;path"
    Value,       // outside blocks: "uniqueKey,..." or "raw_stride,..."
    Ignored,     // outside blocks: anything else
};

// What a line is, without applying it.
ReprocLineKind classifyReprocLine(const std::string& line, bool inBlock);

// Builds frames from configuration lines, appending each ended frame to `frames`.
class ReprocParser {
public:
    explicit ReprocParser(std::vector<NSCam::TuningUtils::TUNING_REPROCESS_CFG_T>& frames)
        : mFrames(frames) {}

    // Applies one line and returns its kind. A request number or "nr3d" value that is not a
    // number throws std::invalid_argument (std::out_of_range when too large), leaving the frames
    // ended so far in place. A raw stride is read as atoi reads it.
    ReprocLineKind feed(const std::string& line);

    bool inBlock() const { return mInBlock; }
    // True when entries were read since the last ended frame.
    bool hasPendingEntries() const { return mPendingEntries > 0; }
    const std::string& uniqueKey() const { return mUniqueKey; }
    int rawStride() const { return mRawStride; }

private:
    std::vector<NSCam::TuningUtils::TUNING_REPROCESS_CFG_T>& mFrames;
    NSCam::TuningUtils::TUNING_REPROCESS_CFG_T mPending;
    int mPendingEntries = 0;
    bool mInBlock = false;
    std::string mUniqueKey;
    int mRawStride = 0;
};

// Splits a value line "format,value" (value cut at the line end).
void splitValueLine(const std::string& line, std::string& format, std::string& value);

}  // namespace dumpin
}  // namespace camtune
