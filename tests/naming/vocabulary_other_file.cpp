// A second file that includes the vocabulary, to compare its copy of the string arrays.
#include <string>

#include "camtune/naming_vocabulary.h"

namespace camtune {
namespace test {

const std::string* stageNamesOfAnotherFile() {
    return NAMING_STAGE;
}

}  // namespace test
}  // namespace camtune
