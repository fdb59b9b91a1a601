// Texts of the list and configuration checks, each written once.
#pragma once

#include <string>

namespace camtune {
namespace dumpin {
namespace lint {

inline constexpr char kUnknownKeyword[] = "unknown keyword \"%s\"; the line is never used";
inline constexpr char kMissingComma[] = "missing ',' after the %s";
inline constexpr char kMissingSemicolon[] = "missing ';' before the path";
inline constexpr char kBadRequest[] = "request number \"%s\" is not four digits (\"%%04d\")";
inline constexpr char kEmptyPath[] = "empty path";
inline constexpr char kDefaultInPath[] =
        "path \"%s\" contains \"default\" and is read as not found";
inline constexpr char kNoSuchFile[] = "file \"%s\" does not exist";
inline constexpr char kBadFrameNo[] = "frame number \"%s\" is not a number";
inline constexpr char kValueNoSemicolon[] = "\"%s\" line without ';'; its value reads as 0";
inline constexpr char kValueNotNumber[] = "\"%s\" value \"%s\" is not a number; it reads as 0";
inline constexpr char kValueMisread[] = "\"%s\" value \"%s\" reads as %d";
inline constexpr char kValueShadowed[] = "second \"%s\" line; line %d is used";
inline constexpr char kEntryHasValueWord[] =
        "entry contains \"%s\" and is also read as that value line";
inline constexpr char kEntryShadowed[] = "never used: line %d matches the same requests first";

inline constexpr char kOutsideBlock[] = "ignored: outside a frame block";
inline constexpr char kShortLine[] = "ignored: too short to be an entry";
inline constexpr char kMarkerWithText[] = "read as \"%s\"; the rest of the line is ignored";
inline constexpr char kNoEndOfFrame[] =
        "frame block ends without <END_OF_FRAME>; its entries join the next frame";
inline constexpr char kDroppedEntries[] =
        "entries from here on are never ended by <END_OF_FRAME> and are dropped";
inline constexpr char kEmptyFrame[] = "<END_OF_FRAME> without entries adds an empty frame";
inline constexpr char kReprocRequestNaN[] =
        "request number \"%s\" is not a number; initReprocInfo throws";
inline constexpr char kReprocRequestMisread[] = "request number \"%s\" reads as %d";
inline constexpr char kNr3dNaN[] = "nr3d value \"%s\" is not a number; initReprocInfo throws";
inline constexpr char kNr3dMisread[] = "nr3d value \"%s\" reads as %d";
inline constexpr char kFormatBlanks[] =
        "format \"%s\" has blanks around it; a lookup of \"%s\" never finds it";
inline constexpr char kValueReplaced[] = "second \"%s\" line; it replaces line %d";
inline constexpr char kStrideNaN[] = "raw_stride \"%s\" is not a number; the stride reads as 0";
inline constexpr char kDuplicateFormat[] = "second \"%s\" in this frame; the first is kept";
inline constexpr char kEmptyUniqueKey[] = "empty uniqueKey value";
inline constexpr char kUniqueKeyNaN[] =
        "uniqueKey \"%s\" is not a number; names made from it carry it as it stands";
inline constexpr char kStrideMisread[] = "raw_stride \"%s\" reads as %d";

// Field names for kMissingComma.
inline constexpr char kFormatField[] = "format";
inline constexpr char kRequestField[] = "request number";
inline constexpr char kUsageField[] = "usage";

// printf into a string.
std::string format(const char* fmt, ...) __attribute__((format(printf, 1, 2)));

}  // namespace lint
}  // namespace dumpin
}  // namespace camtune
