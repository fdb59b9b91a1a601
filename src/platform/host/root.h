// The host's file-system root: absolute device paths land under it.
#pragma once

#include <string>

namespace camtune {
namespace host {

// The folder device paths are resolved under: a test root when one is set, else the one set
// here, else CAMTUNE_ROOT; "" for none.
std::string root();
// Makes `root` the folder (over CAMTUNE_ROOT), as `camtune sim --output` does.
void setRoot(const char* root);
// The host path the library opens for the device path `path`.
std::string hostPath(const char* path);

}  // namespace host
}  // namespace camtune
