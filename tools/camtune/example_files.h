// Where the tool finds the example files it uses by default.
#pragma once

#ifndef CAMTUNE_EXAMPLES_DIR
#define CAMTUNE_EXAMPLES_DIR "examples"
#endif

namespace camtune {
namespace cli {

// The example NDD configuration, the default of sim and parse.
inline constexpr char kDefaultNddConfig[] = CAMTUNE_EXAMPLES_DIR "/ndd/ndd.cfg";

}  // namespace cli
}  // namespace camtune
