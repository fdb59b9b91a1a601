// Dump-file naming: a hint built from the input (every number, both 32-byte strings filled to the
// brim or not), a caller's string and a port, named into buffers from no room at all to plenty,
// by each genFileName_* function and MakePrefix, and by composeName for the same kind. Every call
// must leave a terminated name within the buffer and nothing past it; composeName must write
// exactly what the function of its kind writes; an unknown kind and a call without a hint must
// behave as documented.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>

#include "camtune/naming.h"
#include "fuzz_records.h"
#include "fuzz_support.h"
#include "naming/name_catalog.h"
#include "naming/name_elements.h"
#include "platform/property_registry.h"

namespace {

using namespace NSCam::TuningUtils;
using camtune::fuzz::check;
using camtune::fuzz::GuardedBuffer;

using Compose = std::function<int(char*, int, const FILE_DUMP_NAMING_HINT*, int, const char*)>;

struct NamingFunction {
    const char* kind;  // as composeName knows it
    Compose compose;
};

template <int (*Name)(char*, int, const FILE_DUMP_NAMING_HINT*, const char*)>
NamingFunction dataKind(const char* kind) {
    return {kind, [](char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, int,
                     const char* user) { return Name(buf, size, hint, user); }};
}

const NamingFunction kFunctions[] = {
        {"raw",
         [](char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, int port, const char* user) {
             return genFileName_RAW(buf, size, hint, static_cast<RAW_PORT>(port), user);
         }},
        {"yuv",
         [](char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, int port, const char* user) {
             return genFileName_YUV(buf, size, hint, static_cast<YUV_PORT>(port), user);
         }},
        {"jpg", [](char* buf, int size, const FILE_DUMP_NAMING_HINT* hint, int,
                   const char* user) { return genFileName_JPG(buf, size, hint, user); }},
        dataKind<genFileName_HW_AAO>("hw_aao"),
        dataKind<genFileName_HW_AAHO>("hw_aaho"),
        dataKind<genFileName_LCSO>("lcso"),
        dataKind<genFileName_TSF>("tsf"),
        dataKind<genFileName_Reg>("reg"),
        dataKind<genFileName_TUNING>("tuning"),
        dataKind<genFileName_VSDOF_BUFFER>("vsdof_buffer"),
        dataKind<genFileName_YNR_FD_TBL>("ynr_fd_tbl"),
        dataKind<genFileName_DCESO>("dceso"),
        dataKind<genFileName_LTM_CURVE>("ltm_curve"),
        dataKind<genFileName_BPC_TBL>("bpc_tbl"),
        dataKind<genFileName_face_info>("face_info"),
        dataKind<genFileName_FD_data>("fd_data"),
        dataKind<genFileName_LCESHO>("lcesho"),
        dataKind<genFileName_MSS_REG>("mss_reg"),
        dataKind<genFileName_MFB_REG>("mfb_reg"),
        dataKind<genFileName_P2_REG>("p2_reg"),
        dataKind<genFileName_AISA>("aisa"),
        dataKind<genFileName_AIGA>("aiga"),
};

// Room that fits every name, however long the caller's string.
constexpr int kPlenty = 4096;
constexpr size_t kMaxUserString = 512;

int sizeFrom(FuzzedDataProvider& input) {
    switch (input.ConsumeIntegralInRange(0, 5)) {
        case 0:
            return input.ConsumeIntegralInRange(-2, 2);
        case 1:
            return input.ConsumeIntegralInRange(3, 40);
        case 2:
            return input.ConsumeIntegralInRange(41, 160);
        default:
            return kPlenty;
    }
}

// A buffer of `size` bytes (none for a negative size) and what one naming call left in it.
struct Named {
    explicit Named(int size) : buffer(size > 0 ? static_cast<size_t>(size) : 0) {}
    GuardedBuffer buffer;
    int result = 0;
};

void checkName(const Named& named, int size, const char* what) {
    check(named.buffer.guardIntact(), what);
    check(size <= 0 || named.buffer.terminated(), what);
}

void setBracketing(bool on) {
    static int sLast = -1;
    if (sLast == static_cast<int>(on)) return;
    sLast = on;
    check(camtune::props::set(camtune::props::kNormalAeb, on ? 1 : 0) == 0, "properties");
}

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    camtune::fuzz::setUpRoot();
    // Every kind composeName knows has a function here, and the other way round.
    check(camtune::naming::nameKindList().size() == std::size(kFunctions), "kind list");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t length) {
    FuzzedDataProvider input(bytes, length);
    setBracketing(input.ConsumeBool());
    const FILE_DUMP_NAMING_HINT hint = camtune::fuzz::namingHintFrom(input);
    const int port = input.ConsumeIntegral<int32_t>();
    const int size = sizeFrom(input);
    const NamingFunction& function =
            kFunctions[input.ConsumeIntegralInRange<size_t>(0, std::size(kFunctions) - 1)];
    const bool withUser = input.ConsumeBool();
    const std::string otherKind = input.ConsumeRandomLengthString(16);
    const std::string user = input.ConsumeRandomLengthString(kMaxUserString);
    const char* userString = withUser ? user.c_str() : nullptr;

    Named direct(size);
    direct.result = function.compose(direct.buffer.data(), size, &hint, port, userString);
    checkName(direct, size, "a naming function wrote past its buffer or left it unterminated");
    if (size >= kPlenty) {
        check(std::strncmp(direct.buffer.data(), camtune::naming::kDumpRoot,
                           std::strlen(camtune::naming::kDumpRoot)) == 0,
              "a name does not start with the dump root");
    }

    // The catalog names a kind whatever its case, exactly as the kind's own function does.
    Named catalog(size);
    check(camtune::naming::composeName(upperCase(function.kind), hint, port, userString,
                                       catalog.buffer.data(), size),
          "composeName does not know a kind");
    check(std::memcmp(catalog.buffer.data(), direct.buffer.data(),
                      direct.buffer.size() + GuardedBuffer::kGuardSize) == 0,
          "composeName and the kind's function wrote different names");

    Named unknown(size);
    const bool known = camtune::naming::composeName(otherKind, hint, port, userString,
                                                    unknown.buffer.data(), size);
    check(known ? unknown.buffer.guardIntact() : unknown.buffer.untouched(),
          "composeName wrote for an unknown kind, or past the buffer");

    Named noHint(size);
    noHint.result = function.compose(noHint.buffer.data(), size, nullptr, port, userString);
    check(noHint.result == -1, "a call without a hint did not return -1");
    checkName(noHint, size, "a call without a hint wrote past its buffer");
    check(size <= 0 || noHint.buffer.data()[0] == '\0', "a call without a hint left a name");

    Named prefix(size);
    prefix.result = MakePrefix(prefix.buffer.data(), size, hint.UniqueKey, hint.FrameNo,
                               hint.RequestNo, hint.EvValue);
    checkName(prefix, size, "MakePrefix wrote past its buffer or left it unterminated");
    // The length counts whole elements; a last element cut short stays behind it.
    check(prefix.result >= 0 && (size <= 0 || prefix.result <= static_cast<int>(std::strlen(
                                                                       prefix.buffer.data()))),
          "MakePrefix returned a length it did not write");
    return 0;
}
