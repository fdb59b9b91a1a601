// The name decoder of `camtune parse`: the input is a file name (the part after its last '/',
// as the command takes it), decoded as any kind and as each kind by name, with the example NDD
// configuration loaded and without one. A name decoded as some kind must decode as that kind
// when asked by name, with the same fields; a kind tried by default that decodes a name by name
// means the name decodes without a kind too; a refusal always says why; the decoded fields must
// serialise to JSON. And the other way round: a name the naming functions compose from a hint
// made of the same bytes must decode as its kind, with the hint's numbers.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "camtune/naming.h"
#include "fuzz_records.h"
#include "fuzz_support.h"
#include "naming/name_catalog.h"
#include "naming/name_elements.h"
#include "parse_kinds.h"
#include "platform/property_registry.h"

namespace {

using camtune::cli::parse::Decoded;
using camtune::cli::parse::Fields;
using camtune::cli::parse::NameDecoder;
using camtune::fuzz::check;

constexpr char kExampleConfig[] = CAMTUNE_EXAMPLES_DIR "/ndd/ndd.cfg";

NameDecoder* gWithConfig = nullptr;
NameDecoder* gWithoutConfig = nullptr;
std::vector<std::string>* gKinds = nullptr;

void serialise(const Decoded& decoded) {
    // As `camtune parse --json` has to print them: names are bytes, and a strict dump throws on
    // any that are not UTF-8.
    decoded.fields.dump(2, ' ', false, Fields::error_handler_t::replace);
    decoded.config.dump(2, ' ', false, Fields::error_handler_t::replace);
}

// Decodes `name` as `kind` ("" for any); checks what a refusal says.
bool decode(const NameDecoder& decoder, const std::string& name, const std::string& kind,
            Decoded* out) {
    std::string reason;
    const bool decoded = decoder.decode(name, kind, out, &reason);
    check(decoded || !reason.empty(), "a refusal without a reason");
    if (decoded) {
        check(kind.empty() ? NameDecoder::isKind(out->kind) : out->kind == kind,
              "decoded as another kind than asked for");
        check(out->fields.is_object(), "decoded fields are not an object");
        serialise(*out);
    }
    return decoded;
}

void decodeEveryWay(const NameDecoder& decoder, const std::string& name) {
    Decoded any;
    const bool decodedAny = decode(decoder, name, "", &any);
    for (const std::string& kind : *gKinds) {
        Decoded byName;
        if (!decode(decoder, name, kind, &byName)) {
            check(!decodedAny || any.kind != kind, "a name of a kind does not decode as that kind");
            continue;
        }
        check(decodedAny || kind == camtune::cli::parse::kVsdofKind,
              "a name decodes by kind but not without one");
        if (decodedAny && any.kind == kind) {
            check(any.fields == byName.fields && any.config == byName.config,
                  "a name decodes to other fields when its kind is named");
        }
    }
}

// A hint as extract() and `camtune name` fill it: any numbers, any free text, and an exposure
// label that is one of the sensor's or none.
NSCam::TuningUtils::FILE_DUMP_NAMING_HINT hintFrom(FuzzedDataProvider& input) {
    constexpr const char* kExposureLabels[] = {"", "ShtExp", "NorExp", "LongExp"};
    NSCam::TuningUtils::FILE_DUMP_NAMING_HINT hint = camtune::fuzz::namingHintFrom(input);
    const char* label = kExposureLabels[input.ConsumeIntegralInRange<size_t>(
            0, std::size(kExposureLabels) - 1)];
    std::strncpy(hint.ExpString, label, sizeof(hint.ExpString));
    return hint;
}

// What the prefix prints of a number and decodes back: its last four digits (all of a unique
// key), or nothing for a negative one.
Fields decodedNumber(int32_t value, bool lastFourDigits) {
    const int32_t printed = lastFourDigits ? value % 10000 : value;
    return printed >= 0 ? Fields(printed) : Fields();
}

void decodeComposedName(const uint8_t* data, size_t size) {
    static const std::vector<std::string> sKinds = camtune::naming::nameKindList();
    FuzzedDataProvider input(data, size);
    const bool bracketing = input.ConsumeBool();
    const NSCam::TuningUtils::FILE_DUMP_NAMING_HINT hint = hintFrom(input);
    const int port = input.ConsumeIntegral<int32_t>();
    const std::string& kind = sKinds[input.ConsumeIntegralInRange<size_t>(0, sKinds.size() - 1)];
    const std::string user = input.ConsumeRandomLengthString(64);

    camtune::props::set(camtune::props::kNormalAeb, bracketing ? 1 : 0);
    char path[4096];
    camtune::naming::composeName(kind, hint, port, user.c_str(), path, sizeof(path));
    const std::string name = path + std::strlen(camtune::naming::kDumpRoot) + 1;
    // A free text holding a '/' puts part of the name in a folder.
    if (name.find('/') != std::string::npos) return;

    Decoded decoded;
    std::string reason;
    check(gWithoutConfig->decode(name, kind, &decoded, &reason),
          "a composed name does not decode as its kind");
    const Fields& fields = decoded.fields;
    check(fields.value("unique_key", Fields()) == decodedNumber(hint.UniqueKey, false) &&
                  fields.value("request", Fields()) == decodedNumber(hint.RequestNo, true) &&
                  fields.value("frame", Fields()) == decodedNumber(hint.FrameNo, true),
          "a composed name decodes to other numbers");
    check(!bracketing || fields.value("ev", Fields()) == Fields(hint.EvValue),
          "a composed name decodes to another exposure value");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    camtune::fuzz::setUpRoot();
    gWithConfig = new NameDecoder();
    gWithoutConfig = new NameDecoder();
    gKinds = new std::vector<std::string>(NameDecoder::kinds());
    std::string error;
    std::vector<std::string> warnings;
    check(gWithConfig->loadNddConfig(kExampleConfig, &error, &warnings) && warnings.empty(),
          "the example NDD configuration");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    decodeComposedName(data, size);
    std::string name(reinterpret_cast<const char*>(data), size);
    const size_t slash = name.rfind('/');
    if (slash != std::string::npos) name.erase(0, slash + 1);
    if (name.empty()) return 0;
    decodeEveryWay(*gWithConfig, name);
    decodeEveryWay(*gWithoutConfig, name);
    return 0;
}
