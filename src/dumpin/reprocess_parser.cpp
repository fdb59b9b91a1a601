#include "dumpin/reprocess_parser.h"

#include "dumpin/dumpin_log.h"
#include "dumpin/list_text.h"
#include "dumpin/list_vocabulary.h"
#include "dumpin/messages.h"

namespace camtune {
namespace dumpin {
namespace {

using NSCam::TuningUtils::TUNING_CFG_T;
using NSCam::TuningUtils::TUNING_REPROCESS_CFG_T;

bool isValueFormat(const std::string& format) {
    return contains(format, kUniqueKeyWord) || contains(format, kRawStrideWord);
}

// Adds one entry line to the pending frame. Named as the messages report it.
void Extract_Reproc_CFG(const std::string& line, TUNING_REPROCESS_CFG_T& frame) {
    std::string rest = line;
    TUNING_CFG_T entry;
    NSCam::TuningUtils::Extract_Tuning_CFG(rest, entry);
    frame.reqNum = std::stoi(entry.str_reqNum);
    frame.ispProfile = entry.str_ispProfile;
    CAM_LOGD(msg::kReprocEntry, __func__, entry.str_format.c_str(), frame.reqNum,
             entry.str_ispProfile.c_str(), entry.str_file.c_str());
    if (contains(entry.str_format, kNr3dWord)) {
        frame.nr3dEntries.emplace(entry.str_format, std::stoi(entry.str_file));
    } else if (!contains(entry.str_format, kFrameNoKeyword)) {
        frame.fileEntries.emplace(entry.str_format, entry.str_file);
    }
}

// Applies one file-wide value line. Named as the messages report it.
void Extract_Reproc_CFG(const std::string& line, std::string& uniqueKey, int& rawStride) {
    std::string format;
    std::string value;
    splitValueLine(line, format, value);
    CAM_LOGD(msg::kReprocValue, __func__, format.c_str(), value.c_str());
    if (contains(format, kUniqueKeyWord)) {
        uniqueKey = value;
    } else {
        // Only request numbers and "nr3d" values may throw; a bad stride reads as atoi would.
        rawStride = leadingInt(value);
    }
}

}  // namespace

void splitValueLine(const std::string& line, std::string& format, std::string& value) {
    size_t at = line.find(kFieldSeparator);
    format = line.substr(0, at);
    value = at == std::string::npos ? std::string() : line.substr(at + 1);
    cutAtAny(value, kLineEnds);
}

ReprocLineKind classifyReprocLine(const std::string& line, bool inBlock) {
    if (contains(line, kBlockOpen)) return ReprocLineKind::BlockOpen;
    if (contains(line, kBlockClose)) return ReprocLineKind::BlockClose;
    if (inBlock) {
        if (contains(line, kCommentMark) || line.size() < kMinEntryLength) {
            return ReprocLineKind::Skipped;
        }
        if (contains(line, kEndOfFrame)) return ReprocLineKind::EndOfFrame;
        return ReprocLineKind::Entry;
    }
    size_t at = line.find(kFieldSeparator);
    if (at != std::string::npos && isValueFormat(line.substr(0, at))) {
        return ReprocLineKind::Value;
    }
    return ReprocLineKind::Ignored;
}

ReprocLineKind ReprocParser::feed(const std::string& line) {
    ReprocLineKind kind = classifyReprocLine(line, mInBlock);
    switch (kind) {
        case ReprocLineKind::BlockOpen:
            mInBlock = true;
            break;
        case ReprocLineKind::BlockClose:
            mInBlock = false;
            break;
        case ReprocLineKind::EndOfFrame:
            mFrames.push_back(std::move(mPending));
            mPending = TUNING_REPROCESS_CFG_T();
            mPendingEntries = 0;
            break;
        case ReprocLineKind::Entry:
            Extract_Reproc_CFG(line, mPending);
            ++mPendingEntries;
            break;
        case ReprocLineKind::Value:
            Extract_Reproc_CFG(line, mUniqueKey, mRawStride);
            break;
        case ReprocLineKind::Skipped:
        case ReprocLineKind::Ignored:
            break;
    }
    return kind;
}

}  // namespace dumpin
}  // namespace camtune
