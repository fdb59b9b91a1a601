#include "camtune/platform/properties.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "platform/host/property_file.h"
#include "platform/property_parse.h"
#include "platform/property_registry.h"
#include "support/property_scope.h"
#include "support/temp_root.h"

namespace camtune {
namespace {

using NSCam::Utils::Properties::kPropertyValueMax;
using NSCam::Utils::Properties::property_get;
using NSCam::Utils::Properties::property_get_int32;
using NSCam::Utils::Properties::property_set;

std::string get(const char* key, const char* defaultValue = nullptr) {
    char value[kPropertyValueMax];
    int length = property_get(key, value, defaultValue);
    EXPECT_EQ(length, static_cast<int>(std::string(value).size()));
    return value;
}

TEST(PropertyStore, SetValueIsReadBackAndEmptyReadsAsUnset) {
    test::PropertyScope scope;
    EXPECT_EQ(get("camtune.test.absent", "fallback"), "fallback");
    EXPECT_EQ(get("camtune.test.absent"), "");

    scope.set("camtune.test.key", "hello");
    EXPECT_EQ(get("camtune.test.key", "fallback"), "hello");
    scope.set("camtune.test.key", "");
    EXPECT_EQ(get("camtune.test.key", "fallback"), "fallback");
}

TEST(PropertyStore, RejectsBadKeysAndValuesThatDoNotFit) {
    test::PropertyScope scope;
    EXPECT_EQ(property_set(nullptr, "x"), -1);
    EXPECT_EQ(property_set("", "x"), -1);

    std::string longest(kPropertyValueMax - 1, 'a');
    scope.set("camtune.test.long", "before");
    EXPECT_EQ(property_set("camtune.test.long", longest.c_str()), 0);
    EXPECT_EQ(get("camtune.test.long"), longest);
    EXPECT_EQ(property_set("camtune.test.long", (longest + "b").c_str()), -1);
    EXPECT_EQ(get("camtune.test.long"), longest);
}

TEST(PropertyStore, IntegersAreReadAsAndroidReadsThem) {
    struct Case {
        const char* text;
        int32_t expected;
    };
    const Case kCases[] = {
            // clang-format off
            {"42", 42}, {"-17", -17}, {"+8", 8}, {"0x1F", 31}, {"0X10", 16}, {"-0x10", -16},
            {"010", 8}, {"0", 0}, {"  12", 12}, {"12abc", 12}, {"abc", -99}, {"-", -99}, {"0x", 0},
            {"2147483647", 2147483647}, {"-2147483648", INT32_MIN}, {"2147483648", -99},
            {"-2147483649", -99}, {"99999999999999999999", -99},
            // clang-format on
    };
    test::PropertyScope scope;
    for (const Case& c : kCases) {
        scope.set("camtune.test.int", c.text);
        EXPECT_EQ(property_get_int32("camtune.test.int", -99), c.expected) << '"' << c.text << '"';
    }
    scope.set("camtune.test.int", "");
    EXPECT_EQ(property_get_int32("camtune.test.int", 7), 7);
}

// Keys of every length up to past forty characters, some sharing all but their last character,
// each read back as its own value.
TEST(PropertyStore, KeysOfEveryLengthKeepTheirOwnValues) {
    test::PropertyScope scope;
    std::vector<std::string> keys;
    for (size_t length = 1; length <= 48; ++length) {
        std::string key = "k" + std::string(length - 1, '.');
        keys.push_back(key);
        key.back() = 'x';
        if (length > 1) keys.push_back(key);
    }
    for (size_t i = 0; i < keys.size(); ++i) scope.set(keys[i].c_str(), std::to_string(i));
    for (size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(property_get_int32(keys[i].c_str(), -1), static_cast<int32_t>(i)) << keys[i];
        EXPECT_EQ(get(keys[i].c_str()), std::to_string(i)) << keys[i];
    }
    EXPECT_EQ(property_get_int32("k.......x.", -1), -1);  // a prefix of none of them
}

TEST(PropertyStore, SeedFileSetsEntriesAndSkipsCommentsAndMalformedLines) {
    test::TempRoot root;
    test::PropertyScope scope;
    scope.set("camtune.seed.a", "");
    scope.set("camtune.seed.b", "");
    scope.set("camtune.seed.c", "untouched");
    scope.set("camtune.seed.d", "");
    scope.set("camtune.seed.e", "");
    root.writeFile(
            "/seed.props",
            "# a comment\n\ncamtune.seed.a=1\n  camtune.seed.b =  two words  \n"
            "no separator here\n=value without key\n#camtune.seed.c=commented\n"
            "[camtune.seed.d]: [from getprop]\n[camtune.seed.e]: []\n[camtune.seed.c] [x]\n");
    const std::string path = root.hostPath("/seed.props");

    EXPECT_TRUE(host::loadPropertyFile(path.c_str()));
    EXPECT_EQ(get("camtune.seed.a"), "1");
    EXPECT_EQ(get("camtune.seed.b"), "two words");
    EXPECT_EQ(get("camtune.seed.c"), "untouched");
    EXPECT_EQ(get("camtune.seed.d"), "from getprop");
    EXPECT_EQ(get("camtune.seed.e"), "");
    EXPECT_FALSE(host::loadPropertyFile((root.path() + "/missing.props").c_str()));
    EXPECT_FALSE(host::loadPropertyFile(root.path().c_str()));  // a directory
}

// Readers racing a writer must see one whole value or the other, never a mix.
TEST(PropertyStore, ConcurrentReadersNeverSeeATornValue) {
    test::PropertyScope scope;
    const std::string a(kPropertyValueMax - 1, 'a');
    const std::string b(kPropertyValueMax - 1, 'b');
    scope.set("camtune.test.race", a);

    std::atomic<bool> stop{false};
    std::atomic<int> torn{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 2; ++i) {
        readers.emplace_back([&] {
            char value[kPropertyValueMax];
            while (!stop.load()) {
                property_get("camtune.test.race", value, "");
                std::string seen = value;
                if (seen != a && seen != b) torn.fetch_add(1);
            }
        });
    }
    for (int i = 0; i < 20000; ++i) property_set("camtune.test.race", (i % 2 ? a : b).c_str());
    stop.store(true);
    for (auto& reader : readers) reader.join();
    EXPECT_EQ(torn.load(), 0);
}

TEST(PropertyRegistry, NamesAreUniqueAndDefaultsMatchTheirType) {
    size_t count = 0;
    const props::Property* const* all = props::all(&count);
    ASSERT_GT(count, 30u);
    for (size_t i = 0; i < count; ++i) {
        const props::Property& p = *all[i];
        EXPECT_EQ(std::string(p.name).rfind("vendor.debug.", 0), 0u) << p.name;
        EXPECT_EQ(props::find(p.name), &p) << p.name;
        if (p.type == props::Type::Int) {
            EXPECT_EQ(parsePropertyInt32(p.defaultValue, 12345), props::defaultInt(p)) << p.name;
        }
        for (size_t j = i + 1; j < count; ++j) EXPECT_STRNE(p.name, all[j]->name);
    }
    EXPECT_EQ(props::find("vendor.debug.no.such"), nullptr);
}

TEST(PropertyRegistry, TypedReadsFallBackToTheRegisteredDefault) {
    test::PropertyScope scope;
    scope.clear(props::kNddActionEnable);
    scope.clear(props::kNddRootPath);
    EXPECT_EQ(props::getInt(props::kNddActionEnable), -1);
    char text[kPropertyValueMax];
    props::getString(props::kNddRootPath, text);
    EXPECT_STREQ(text, "/data/vendor/camera_dump/");

    scope.set(props::kNddActionEnable, 3);
    EXPECT_EQ(props::getInt(props::kNddActionEnable), 3);
}

}  // namespace
}  // namespace camtune
