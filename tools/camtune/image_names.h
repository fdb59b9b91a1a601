// Decodes the names of dump files with the NDD configuration that named them: NDD copies its
// configuration into each dump folder it creates, so a folder's own copy is used when there is
// one.
#pragma once

#include <map>
#include <string>

#include "parse_kinds.h"

namespace camtune {
namespace cli {
namespace image {

// Names of NDD's copy in a dump folder: the configuration's own name ("ndd.cfg" for the usual
// one), or "default_cfg.cfg" when its path has no folder.
inline constexpr const char* kFolderConfigNames[] = {"ndd.cfg", "default_cfg.cfg"};

class DumpNames {
public:
    // `config` is used for every folder when `forced`, otherwise for folders without their own
    // copy. Without a readable configuration, NDD names are not decoded.
    DumpNames(std::string config, bool forced) : mConfig(std::move(config)), mForced(forced) {}

    // Decodes the name of the file at `path` (the part after the last '/'). False with
    // `reason` when it is no name the library composes.
    bool decode(const std::string& path, parse::Decoded* out, std::string* reason);

private:
    const parse::NameDecoder& decoderFor(const std::string& folder);

    std::string mConfig;
    bool mForced;
    std::map<std::string, parse::NameDecoder> mDecoders;  // by folder
};

}  // namespace image
}  // namespace cli
}  // namespace camtune
