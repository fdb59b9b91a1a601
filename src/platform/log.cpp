// Shared half of the log port: threshold, formatting, the test sink and the error suffix. The
// backend only writes finished lines.
#include "camtune/platform/log.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "platform/backend.h"

namespace camtune {
namespace log {
namespace {

constexpr size_t kLineMax = 1024;
constexpr size_t kSuffixMax = 256;

std::atomic<int>& thresholdValue() {
    static std::atomic<int> sValue{static_cast<int>(backend::initialLogThreshold())};
    return sValue;
}

struct SinkSlot {
    std::mutex lock;
    Sink sink;
    std::atomic<bool> installed{false};
};

// Never destroyed: the library logs from static destructors while it is unloaded.
SinkSlot& sinkSlot() {
    static SinkSlot* sSlot = new SinkSlot();
    return *sSlot;
}

const char* baseName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

}  // namespace

Level threshold() {
    return static_cast<Level>(thresholdValue().load(std::memory_order_relaxed));
}

void setThreshold(Level level) {
    thresholdValue().store(static_cast<int>(level), std::memory_order_relaxed);
}

bool isEnabled(Level level) {
    return static_cast<int>(level) >= thresholdValue().load(std::memory_order_relaxed) &&
           level != Level::Silent;
}

void write(Level level, const char* tag, const char* file, int line, const char* function,
           const char* fmt, ...) {
    char message[kLineMax];
    va_list args;
    va_start(args, fmt);
    std::vsnprintf(message, sizeof(message), fmt, args);
    va_end(args);

    char suffix[kSuffixMax] = "";
    if (level == Level::Error) {
        std::snprintf(suffix, sizeof(suffix), " (%s){#%d:%s}", baseName(file), line, function);
    }

    SinkSlot& slot = sinkSlot();
    if (slot.installed.load(std::memory_order_acquire)) {
        std::lock_guard<std::mutex> guard(slot.lock);
        if (slot.sink) {
            slot.sink(level, tag, message, suffix);
            return;
        }
    }
    backend::writeLogLine(level, tag, message, suffix);
}

void setSink(Sink sink) {
    SinkSlot& slot = sinkSlot();
    std::lock_guard<std::mutex> guard(slot.lock);
    slot.sink = std::move(sink);
    slot.installed.store(static_cast<bool>(slot.sink), std::memory_order_release);
}

const char* levelLetter(Level level) {
    static constexpr const char* kLetters[] = {"V", "D", "I", "W", "E", "S"};
    return kLetters[static_cast<int>(level)];
}

}  // namespace log
}  // namespace camtune
