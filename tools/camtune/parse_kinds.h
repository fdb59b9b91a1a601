// The kinds of file name camtune parse decodes: NDD dumps (against the patterns of an NDD
// configuration file), the scenario recorder's log files, the on-device tuning dump-in list and
// its log, and the names of the naming functions (raw, yuv, jpg and the data kinds).
#pragma once

#include <string>
#include <vector>

#include "ndd/config_table.h"
#include "parse_grammar.h"

namespace camtune {
namespace cli {
namespace parse {

// Kind names outside the naming functions' own.
inline constexpr char kNddKind[] = "ndd";
inline constexpr char kRecorderLogKind[] = "recorder_log";
inline constexpr char kDumpinListKind[] = "dumpin_list";
inline constexpr char kDumpinLogKind[] = "dumpin_log";
// Names of this kind end with whatever their caller appended, so anything after the sensor
// matches; it is decoded only when asked for by name.
inline constexpr char kVsdofKind[] = "vsdof_buffer";

struct Decoded {
    std::string kind;
    Fields fields = Fields::object();
    Fields config;                // ndd: the configuration line that named the file
    std::vector<int> otherLines;  // ndd: later lines whose pattern and names fit as well
};

// Names of the image formats whose dump-file pieces are `extension` and, when `bits` is not
// null, the bit-depth name `bits` (an empty array: a format code the table does not know).
Fields imageFormatsFor(const std::string* bits, const std::string& extension);

// One option per dump extension of the image-format table ("unknown" included), reporting it
// under `field`.
std::vector<Option> dumpExtensionOptions(const char* field);

// The grammar of an NDD dump-file pattern such as "[Prefix][SensorId]-AAO.bin": each bracketed
// rule becomes what the rule can print, the rest stays literal text.
Sequence nddPatternGrammar(const std::string& pattern);

// Why decoded NDD fields do not fit the configuration line, or "" when they do: NDD names a file
// after the line that its own feature and stage select, so a name that prints them must print
// the line's.
std::string nddLineMismatch(const Fields& fields, const NSCam::TuningUtils::configInfo& info);

class NameDecoder {
public:
    // Reads the dump-file patterns of an NDD configuration file. Returns false with `error` when
    // the file cannot be read. As NDD does, reading stops at the first malformed line and a line
    // replaces an earlier one of the same feature, stage, category and module; each stop is
    // described in `warnings`.
    bool loadNddConfig(const std::string& path, std::string* error,
                       std::vector<std::string>* warnings);
    bool hasNddConfig() const { return !mConfigPath.empty(); }

    // Every kind, in the order they are tried.
    static std::vector<std::string> kinds();
    static bool isKind(const std::string& kind);

    // Decodes the file name `name` (without its folder) as `kind`, or as the first kind that
    // fits when `kind` is empty (every kind but vsdof_buffer). Returns false with `reason` when
    // the name is not of the kind or of any kind.
    bool decode(const std::string& name, const std::string& kind, Decoded* out,
                std::string* reason) const;

private:
    struct NddPattern {
        int line = 0;
        NSCam::TuningUtils::configInfo info;
        Sequence grammar;
    };

    struct Attempt;
    bool decodeNdd(const std::string& name, Decoded* out, Attempt* closest) const;

    std::string mConfigPath;
    std::vector<NddPattern> mPatterns;
};

}  // namespace parse
}  // namespace cli
}  // namespace camtune
