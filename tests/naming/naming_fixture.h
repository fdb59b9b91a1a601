// Shared set-up of the naming tests: a temporary dump root and the bracketing switch off.
#pragma once

#include <gtest/gtest.h>

#include "support/property_scope.h"
#include "support/temp_root.h"

namespace camtune {
namespace test {

class NamingTest : public ::testing::Test {
protected:
    NamingTest() { mProps.clear(props::kNormalAeb); }

    void bracketing(int on) { mProps.set(props::kNormalAeb, on); }

    TempRoot mRoot;
    PropertyScope mProps;
};

}  // namespace test
}  // namespace camtune
