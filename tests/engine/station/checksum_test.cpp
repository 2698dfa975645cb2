#include "engine/station/checksum.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry {
namespace {

struct Case {
    std::string what;
    std::vector<std::uint8_t> group;
    bool holds;
};

TEST(Checksum, IsTheLowByteOfTheSumOfAllBytesButTheLast) {
    const std::vector<Case> cases = {
        {"a sum below 256", {0x01, 0x02, 0x03}, true},
        {"the tag counts", {0xCF, 0x01, 0xD0}, true},
        {"only the low eight bits count: 0x8F + 0x9F = 0x12E", {0x8F, 0x9F, 0x2E}, true},
        {"a sum that ends in 00 is as good as any: 0xCF + 0x31 = 0x100", {0xCF, 0x31, 0x00}, true},
        {"a checksum below 0x10 is compared as a whole byte: 0xCF + 0x36 = 0x105", {0xCF, 0x36, 0x05}, true},
        {"the same low digit is not enough", {0xCF, 0x36, 0x15}, false},
        {"one too many", {0xCF, 0x01, 0xD1}, false},
        {"one too few", {0xCF, 0x01, 0xCF}, false},
        {"the last byte is not summed", {0x80, 0x80}, true},
        {"a group of one byte sums nothing", {0x00}, true},
        {"a group of one byte that is not zero", {0xCF}, false},
        {"no bytes at all", {}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(checksum_holds(c.group), c.holds);
    }
}

TEST(Checksum, ALongGroupOfFullBytesWrapsMoreThanOnce) {
    // 34 x 0xFF = 8670 = 33 x 256 + 222
    std::vector<std::uint8_t> group(35, 0xFF);
    EXPECT_EQ(checksum_of(group), 222);
}

}  // namespace
}  // namespace nimbry
