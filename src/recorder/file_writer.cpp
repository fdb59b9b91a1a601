#define LOG_TAG "ScenarioRecorder"

#include "recorder/file_writer.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <mutex>
#include <set>
#include <string>

#include "camtune/platform/clock.h"
#include "camtune/platform/fs.h"
#include "camtune/platform/log.h"

namespace NSCam {
namespace TuningUtils {
namespace scenariorecorder {

namespace fs = camtune::fs;

namespace {

// Paths the writers of this process hold open, so pruning never picks one.
struct OpenFiles {
    std::mutex lock;
    std::set<std::string> paths;
};

OpenFiles& openFiles() {
    static OpenFiles* sOpen = new OpenFiles();  // never destroyed: writers may outlive statics
    return *sOpen;
}

}  // namespace

bool FileWriter::isOpenByAWriter(const std::string& path) {
    OpenFiles& open = openFiles();
    std::lock_guard<std::mutex> guard(open.lock);
    return open.paths.count(path) != 0;
}

FileWriter::FileWriter(int a, int b, int c)
    : mCursor(mBuffer), mPid(camtune::clock::processId()), mKey(makeKey(a, b)), mSeriesId{a, b, c} {
    mCreationTime = camtune::clock::realtime();
}

FileWriter::~FileWriter() {
    if (mFd >= 0) close();
}

void FileWriter::formatPath(char* path) const {
    std::snprintf(path, kPathBufferSize, "%s/%s_%s_TuningLog_%02d.txt", mFolder.c_str(),
                  mNamePrefix, mTimeStamp, mFileIndex);
}

bool FileWriter::openPath(const char* path) {
    mFd = fs::open(path, O_WRONLY | O_CREAT, kFileMode);
    if (mFd < 0) return false;
    OpenFiles& open = openFiles();
    std::lock_guard<std::mutex> guard(open.lock);
    open.paths.insert(path);
    return true;
}

void FileWriter::noteLoss(const char* what, int error, uint32_t lines) {
    if (mLossWhat == nullptr) {
        mLossWhat = what;
        mLossError = error;
    }
    mLinesLost += lines;
}

bool FileWriter::open(bool newSeries, const char* prefix, bool quiet) {
    if (newSeries) {
        std::tm calendar{};
        camtune::clock::localTime(camtune::clock::realtime().tv_sec, &calendar);
        std::strftime(mTimeStamp, sizeof(mTimeStamp), kTimeStampFormat, &calendar);
        mFileIndex = 1;
        if (prefix != nullptr) {
            std::strncpy(mNamePrefix, prefix, kNamePrefixSize);
            mNamePrefix[kNamePrefixSize - 1] = '\0';
        }
        mQuiet = quiet;
        mOpenFailureLogged = false;
    }
    reserveSpace(mQuiet);

    // A series whose open failed is retried at its next request; it says so once.
    const bool log = !mQuiet && !mOpenFailureLogged;
    char path[kPathBufferSize];
    formatPath(path);
    if (!openPath(path)) {
        const int error = errno;
        if (log) {
            CAM_LOGE("[%s] File writer: file open failed %s: %s", __func__, path,
                     std::strerror(error));
        }
        std::string folder = kLastResortFolder;
        mFolder.swap(folder);
        formatPath(path);
        if (!openPath(path)) {
            if (log) CAM_LOGE(CAMTUNE_RECORDER_NO_FILE_MSG, __func__);
            mOpenFailureLogged = true;
            mFolder.swap(folder);  // the retry starts from the series' own folder again
            return false;
        }
    }
    mOpenFailureLogged = false;
    mFilePath = path;
    if (!mQuiet) CAM_LOGI("[%s] Write log to %s", __func__, path);
    mCursor = mBuffer;
    mBufferedBytes = 0;
    mBufferedLines = 0;
    mFileBytes = 0;
    mLinesLost = 0;
    mLossWhat = nullptr;
    ++mFileIndex;
    return true;
}

void FileWriter::flush(bool sync) {
    if (mBufferedBytes > 0 && mFd >= 0) {
        // A short write goes on with the rest; a failed one is not retried: the log is best
        // effort and must not stall. The lines it completed are kept.
        size_t written = 0;
        int error = 0;
        while (written < mBufferedBytes) {
            const ssize_t n = fs::write(mFd, mBuffer + written, mBufferedBytes - written);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                error = n < 0 ? errno : ENOSPC;
                break;
            }
            written += static_cast<size_t>(n);
        }
        if (written < mBufferedBytes) {
            uint32_t kept = 0;
            for (size_t i = 0; i < written; ++i) kept += mBuffer[i] == '\n';
            noteLoss("write", error, mBufferedLines - kept);
        }
    }
    if (sync && mFd >= 0 && fs::fsync(mFd) != 0) noteLoss("fsync", errno, 0);
    mCursor = mBuffer;
    mBufferedBytes = 0;
    mBufferedLines = 0;
}

void FileWriter::close() {
    if (mFd < 0) return;
    flush(false);
    fs::close(mFd);
    mFd = -1;
    {
        OpenFiles& open = openFiles();
        std::lock_guard<std::mutex> guard(open.lock);
        open.paths.erase(mFilePath);
    }
    if (mLossWhat != nullptr) {
        if (mLossCounter != nullptr) mLossCounter->fetch_add(mLinesLost, std::memory_order_relaxed);
        CAM_LOGE("[%s] %s: %s failed (%s); %u lines lost", __func__, mFilePath.c_str(), mLossWhat,
                 std::strerror(mLossError), mLinesLost);
        mLossWhat = nullptr;
    }
}

void FileWriter::onWriteLog(const char* line) {
    if (line != nullptr) onWriteLog(line, std::strlen(line));
}

void FileWriter::onWriteLog(const char* line, size_t textLength) {
    if (line == nullptr) return;
    // The buffer is flushed whenever fewer than kFlushMargin bytes remain, so there is always
    // room here; the guard keeps the cursor inside the buffer whatever happened before.
    if (mBufferedBytes + 1 >= kStagingBufferSize) flush(false);
    size_t room = kStagingBufferSize - mBufferedBytes;
    // Equivalent to snprintf("%s\n") into the room left, without the formatter's cost: the
    // service thread spends most of its time here.
    // A line longer than the room left is cut, keeping its end so the next line starts on its
    // own.
    size_t stored = textLength + 1 < room ? textLength + 1 : room - 1;
    std::memcpy(mCursor, line, stored - 1);
    mCursor[stored - 1] = '\n';
    mCursor += stored;
    mBufferedBytes += static_cast<uint32_t>(stored);
    ++mBufferedLines;
    if (mBufferedBytes + kFlushMargin > kStagingBufferSize - 1) flush(false);

    // The size limit counts whole lines as the caller gave them, cut or not.
    mFileBytes += static_cast<uint32_t>(textLength + 1);
    if (mFileBytes > kFileSizeLimit && mFd >= 0) {
        close();
        if (open(false, "", false)) {
            (void)fs::write(mFd, kContinuedMarker, sizeof(kContinuedMarker) - 1);
        }
    }
}

}  // namespace scenariorecorder
}  // namespace TuningUtils
}  // namespace NSCam
