// FileWriter: one series of rolling plain-text log files behind a staging buffer.
//
// Not thread-safe by design: the recorder's service thread is the only user of a writer once it
// has been published.
#pragma once

#include <time.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "recorder/recorder_constants.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

class FileWriter {
public:
    // Series id (a, b, c); key ((int64)a << 16) | b.
    FileWriter(int a, int b, int c);
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    // Opens the next file of the series; `newSeries` starts a series with a new time stamp,
    // index 1, `prefix` (cut to 29 characters) and `quiet`. Returns true when a file is open.
    // A failure is logged once per series, with the errno text.
    bool open(bool newSeries, const char* prefix, bool quiet);
    // True once a series was started, opened or not: a failed open is worth retrying.
    bool hasSeries() const { return mTimeStamp[0] != '\0'; }
    // Deletes the folder's oldest regular files while free space is at or below the floor.
    // Files the recorder holds open are never deleted: that would free nothing.
    void reserveSpace(bool quiet);
    // True while some writer of this process has `path` open.
    static bool isOpenByAWriter(const std::string& path);
    // Writes the staged bytes out (dropping them when no file is open); `sync` also fsyncs.
    // Lines a failed write or fsync loses are counted and logged once, when the file closes.
    void flush(bool sync);
    // Lines lost by failed writes to the current file.
    uint32_t linesLost() const { return mLinesLost; }
    // Where the lines a file lost are added up when it closes (null: nowhere).
    void setLossCounter(std::atomic<uint64_t>* counter) { mLossCounter = counter; }
    void close();
    // Appends `line` and a newline; rolls over to the next file past the size limit.
    void onWriteLog(const char* line);
    // The same for a line of `length` characters, no terminator among them.
    void onWriteLog(const char* line, size_t length);

    void setFolder(const std::string& folder) { mFolder = folder; }
    const std::string& folder() const { return mFolder; }
    const std::string& filePath() const { return mFilePath; }
    int fd() const { return mFd; }
    int64_t key() const { return mKey; }
    const int* seriesId() const { return mSeriesId; }
    int fileIndex() const { return mFileIndex; }
    uint32_t fileBytes() const { return mFileBytes; }
    uint32_t bufferedBytes() const { return mBufferedBytes; }
    const char* namePrefix() const { return mNamePrefix; }
    const char* timeStamp() const { return mTimeStamp; }
    int pid() const { return mPid; }
    const timespec& creationTime() const { return mCreationTime; }

private:
    // Formats the path of the next file into `path` (kPathBufferSize bytes; longer paths are cut).
    void formatPath(char* path) const;
    bool openPath(const char* path);
    void noteLoss(const char* what, int error, uint32_t lines);

    char* mCursor;
    uint32_t mBufferedBytes = 0;
    uint32_t mFileBytes = 0;
    int mPid;
    int mFd = -1;
    char mBuffer[kStagingBufferSize];
    std::string mFolder;
    std::string mFilePath;
    char mTimeStamp[kTimeStampSize] = {};
    char mNamePrefix[kNamePrefixSize] = {};
    bool mQuiet = false;
    int mFileIndex = 1;
    int64_t mKey;
    timespec mCreationTime{};
    bool mOpenFailureLogged = false;  // for this series
    uint32_t mBufferedLines = 0;
    uint32_t mLinesLost = 0;  // of the current file
    int mLossError = 0;       // errno of its first failed write or fsync
    const char* mLossWhat = nullptr;
    std::atomic<uint64_t>* mLossCounter = nullptr;
    int mSeriesId[3];
};

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
