// Internal entry points of the dump-in switches and value lookups, shared by the searches.
#pragma once

namespace camtune {
namespace dumpin {

// Bits of the dump-in enable property.
bool isReadEnabled();
bool isDumpEnabled();

// Value of the first list line containing `word` (the text after its first ";"); false when
// no line contains it or the list cannot be read.
bool findValueLine(const char* word, int* value);

}  // namespace dumpin
}  // namespace camtune
