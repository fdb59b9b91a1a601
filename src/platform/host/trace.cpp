// Host trace: Chrome trace-event JSON ("B"/"E" events) into the file CAMTUNE_TRACE names.
// The file is a JSON array left open at the end, which the trace viewers accept.
#include "camtune/platform/trace.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace camtune {
namespace trace {
namespace {

class TraceFile {
public:
    TraceFile() {
        const char* path = std::getenv("CAMTUNE_TRACE");
        if (path == nullptr || path[0] == '\0') return;
        mFile = std::fopen(path, "w");
        if (mFile == nullptr) {
            std::fprintf(stderr, "W/camtune: cannot write CAMTUNE_TRACE file %s\n", path);
            return;
        }
        std::fputs("[\n", mFile);
        mStart = std::chrono::steady_clock::now();
    }

    bool isOpen() const { return mFile != nullptr; }

    void event(char phase, const char* name) {
        auto micros = std::chrono::duration_cast<std::chrono::microseconds>(
                              std::chrono::steady_clock::now() - mStart)
                              .count();
        long tid = ::syscall(SYS_gettid);
        std::lock_guard<std::mutex> guard(mLock);
        if (phase == 'B') {
            std::fprintf(mFile,
                         "{\"name\":\"%s\",\"cat\":\"camtune\",\"ph\":\"B\",\"pid\":%d,"
                         "\"tid\":%ld,\"ts\":%lld},\n",
                         name, static_cast<int>(::getpid()), tid, static_cast<long long>(micros));
        } else {
            std::fprintf(mFile, "{\"ph\":\"E\",\"pid\":%d,\"tid\":%ld,\"ts\":%lld},\n",
                         static_cast<int>(::getpid()), tid, static_cast<long long>(micros));
        }
        std::fflush(mFile);
    }

private:
    std::FILE* mFile = nullptr;
    std::chrono::steady_clock::time_point mStart;
    std::mutex mLock;
};

// Never destroyed, so sections closed during process exit still have a file.
TraceFile& traceFile() {
    static TraceFile* sFile = new TraceFile();
    return *sFile;
}

const bool& enabledFlag() {
    static const bool sEnabled = traceFile().isOpen();
    return sEnabled;
}

}  // namespace

bool isEnabled() {
    return enabledFlag();
}

void begin(const char* name) {
    if (isEnabled()) traceFile().event('B', name);
}

void end() {
    if (isEnabled()) traceFile().event('E', nullptr);
}

}  // namespace trace
}  // namespace camtune
