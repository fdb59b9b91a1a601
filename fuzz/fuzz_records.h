// Records the targets build from their input: a naming hint and the numbers of an NDD item.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>

#include "camtune/naming.h"
#include "camtune/ndd.h"

namespace camtune {
namespace fuzz {

// Every number of the hint, and both free texts up to their whole 32 bytes, so either may
// have no terminator.
inline NSCam::TuningUtils::FILE_DUMP_NAMING_HINT namingHintFrom(FuzzedDataProvider& input) {
    using Hint = NSCam::TuningUtils::FILE_DUMP_NAMING_HINT;
    constexpr int32_t Hint::*kNumbers[] = {
            &Hint::UniqueKey,    &Hint::FrameNo,           &Hint::RequestNo,
            &Hint::ImgWidth,     &Hint::ImgHeight,         &Hint::BufWidth,
            &Hint::BufHeight,    &Hint::BufStride,         &Hint::ImgFormat,
            &Hint::IspProfile,   &Hint::SensorFormatOrder, &Hint::AuxValue,
            &Hint::SensorOpenId, &Hint::SensorDev,         &Hint::EvValue};
    Hint hint;
    for (int32_t Hint::*field : kNumbers) hint.*field = input.ConsumeIntegral<int32_t>();
    input.ConsumeData(hint.UserString, input.ConsumeIntegralInRange<size_t>(0, 32));
    input.ConsumeData(hint.ExpString, input.ConsumeIntegralInRange<size_t>(0, 32));
    return hint;
}

// Every number of an NDD item, any value; the user string is left empty.
inline NSCam::TuningUtils::NddData nddNumbersFrom(FuzzedDataProvider& input) {
    using NSCam::TuningUtils::NddData;
    constexpr int32_t NddData::*kNumbers[] = {
            &NddData::version,     &NddData::uniqueKey,    &NddData::requestNo,
            &NddData::frameNo,     &NddData::sensorId,     &NddData::stage,
            &NddData::feature,     &NddData::action,       &NddData::sensorFeatureMode,
            &NddData::paddedWidth, &NddData::paddedHeight, &NddData::bufferWidth,
            &NddData::width,       &NddData::height,       &NddData::bitDepth,
            &NddData::bayerOrder,  &NddData::sign,         &NddData::cell,
            &NddData::delay,       &NddData::layer,        &NddData::sensorExp,
            &NddData::expOdr,      &NddData::dualCamId,    &NddData::ruleVersion};
    NddData data;
    for (int32_t NddData::*field : kNumbers) data.*field = input.ConsumeIntegral<int32_t>();
    return data;
}

}  // namespace fuzz
}  // namespace camtune
