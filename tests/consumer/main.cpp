// Uses the installed headers and library the way a pipeline module would: a property switch
// and a log line under its own tag. Exits non-zero when either does not behave.
#define LOG_TAG "CamtuneConsumer"

#include <camtune/platform/log.h>
#include <camtune/platform/properties.h>

#include <cstdio>
#include <string>

namespace {

constexpr const char* kSwitch = "vendor.debug.consumer.level";

int check(bool ok, const char* what) {
    if (!ok) std::fprintf(stderr, "camtune_consumer: %s\n", what);
    return ok ? 0 : 1;
}

}  // namespace

int main() {
    using namespace NSCam::Utils::Properties;
    int failures = 0;
    failures += check(property_get_int32(kSwitch, 7) == 7, "unset property ignores its default");
    failures += check(property_set(kSwitch, "0x10") == 0, "property_set failed");
    failures += check(property_get_int32(kSwitch, 7) == 16, "hex property misread");

    std::string tag;
    std::string message;
    camtune::log::setSink(
            [&](camtune::log::Level, const char* lineTag, const char* text, const char*) {
                tag = lineTag;
                message = text;
            });
    CAM_LOGW("[%s] level(%d)", __func__, property_get_int32(kSwitch, 0));
    camtune::log::setSink(nullptr);
    failures += check(tag == LOG_TAG, "log line lost its tag");
    failures += check(message == "[main] level(16)", "log line misformatted");

    if (failures == 0) std::printf("camtune_consumer: ok\n");
    return failures == 0 ? 0 : 1;
}
