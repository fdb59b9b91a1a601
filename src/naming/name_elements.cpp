#include "naming/name_elements.h"

#include <iterator>

namespace camtune {
namespace naming {
namespace {

struct SensorRow {
    int32_t sensorDev;
    const char* name;
};

constexpr SensorRow kSensorNames[] = {
        {1, "main"},   {2, "sub"},   {4, "main2"},  {8, "sub2"},
        {16, "main3"}, {32, "sub3"}, {64, "main4"},
};
constexpr const char kOtherSensor[] = "sensor";

constexpr const char kUndefinedPort[] = "-undef";

// Indexed by port value from 0.
constexpr const char* kRawPortPieces[] = {"-imgo", "-rrzo"};
constexpr const char* kYuvPortPieces[] = {
        "-img2o", "-img3o", "-wroto",  "-wdmao", "-timgo", "-dp0",   "-dp1",   "-crzor1",
        "-vnro",  "-imgi",  "-recsdi", "-yuvo",  "-yuv2o", "-yuv3o", "-yuv4o",
};

constexpr const char* kColourOrders[] = {"0", "1", "2", "3"};
constexpr const char kOtherColourOrder[] = "senfmt";

// Indexed by selector - kFirstExposureSelector.
constexpr int32_t kFirstExposureSelector = 3;
constexpr const char* kExposureLabels[] = {"ShtExp", "NorExp", "LongExp"};

template <typename T, size_t N>
const char* pick(const T (&table)[N], int32_t index, const char* other) {
    return index >= 0 && static_cast<size_t>(index) < N ? table[index] : other;
}

}  // namespace

const char* sensorName(int32_t sensorDev) {
    for (const SensorRow& row : kSensorNames) {
        if (row.sensorDev == sensorDev) return row.name;
    }
    return kOtherSensor;
}

const char* rawPortPiece(int32_t port) {
    return pick(kRawPortPieces, port, kUndefinedPort);
}

const char* yuvPortPiece(int32_t port) {
    return pick(kYuvPortPieces, port, kUndefinedPort);
}

const char* colourOrderName(int32_t sensorFormatOrder) {
    return pick(kColourOrders, sensorFormatOrder, kOtherColourOrder);
}

const char* exposureLabel(int32_t selector) {
    if (selector < kFirstExposureSelector) return nullptr;
    return pick(kExposureLabels, selector - kFirstExposureSelector, nullptr);
}

}  // namespace naming
}  // namespace camtune
