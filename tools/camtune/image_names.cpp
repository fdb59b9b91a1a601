#include "image_names.h"

#include <sys/stat.h>

#include <vector>

namespace camtune {
namespace cli {
namespace image {
namespace {

bool isRegularFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

}  // namespace

const parse::NameDecoder& DumpNames::decoderFor(const std::string& folder) {
    auto found = mDecoders.find(folder);
    if (found != mDecoders.end()) return found->second;
    parse::NameDecoder& decoder = mDecoders[folder];
    std::string config = mConfig;
    for (const char* name : kFolderConfigNames) {
        const std::string own = folder + "/" + name;
        if (mForced || !isRegularFile(own)) continue;
        config = own;
        break;
    }
    std::string error;
    std::vector<std::string> warnings;
    // A configuration that cannot be read leaves NDD names undecoded, as camtune parse does.
    decoder.loadNddConfig(config, &error, &warnings);
    return decoder;
}

bool DumpNames::decode(const std::string& path, parse::Decoded* out, std::string* reason) {
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.empty()) {
        *reason = "no file name after the folder";
        return false;
    }
    return decoderFor(slash == 0 ? "/" : folder).decode(name, "", out, reason);
}

}  // namespace image
}  // namespace cli
}  // namespace camtune
