// The test root: a folder device paths land under for the length of a test.
#include <atomic>
#include <mutex>

#include "camtune/platform/testing.h"
#include "platform/host/testing_hooks.h"

namespace camtune {
namespace fs {
namespace testing {
namespace {

struct TestRoot {
    std::mutex lock;
    std::string path;
};

std::atomic<bool> gSet{false};

TestRoot& testRoot() {
    static TestRoot* sRoot = new TestRoot();  // never destroyed: library threads may outlive main
    return *sRoot;
}

}  // namespace

void setRoot(const char* root) {
    TestRoot& r = testRoot();
    std::lock_guard<std::mutex> guard(r.lock);
    r.path = root != nullptr ? root : "";
    gSet.store(!r.path.empty(), std::memory_order_release);
}

std::string root() {
    TestRoot& r = testRoot();
    std::lock_guard<std::mutex> guard(r.lock);
    return r.path;
}

}  // namespace testing
}  // namespace fs
}  // namespace camtune

bool camtune_testing_fs_root(std::string* root) {
    using namespace camtune::fs::testing;
    if (!gSet.load(std::memory_order_acquire)) return false;
    *root = camtune::fs::testing::root();
    return !root->empty();
}
