#include "engine/publish/server_settings.h"

#include <gtest/gtest.h>

namespace nimbry {
namespace {

TEST(ServerSettings, APortThatIsNoneIsTheUsualOne) {
    struct Case {
        const char* setting;
        int port;
    };
    for (const Case& c : {Case{"587", 587},
                          {" 587 ", 587},
                          {"1", 1},
                          {"65535", 65535},
                          {"65536", 25},
                          {"0", 25},
                          {"-3", 25},
                          {"", 25},
                          {"smtp", 25},
                          {"1e99", 25}}) {
        EXPECT_EQ(port_of(c.setting, 25), c.port) << c.setting;
    }
}

TEST(ServerSettings, AnEncryptionIsAskedForByItsWordInAnyCase) {
    constexpr EncryptionWords words{"starttls", "tls"};
    EXPECT_EQ(encryption_of(" StartTLS ", words), Encryption::explicit_tls);
    EXPECT_EQ(encryption_of("TLS", words), Encryption::implicit_tls);
    for (const char* other : {"", "none", "implicit", "explicit", "ssl"})
        EXPECT_EQ(encryption_of(other, words), Encryption::none) << other;
    EXPECT_EQ(encryption_of("implicit", {"explicit", "implicit"}), Encryption::implicit_tls);
    EXPECT_EQ(encryption_of("tls", {"explicit", "implicit"}), Encryption::none);
}

TEST(ServerSettings, AListHasItsItemsWithoutOuterBlanksAndWithoutEmptyOnes) {
    using Items = std::vector<std::string>;
    EXPECT_EQ(list_items(" a;b c;;", ';'), (Items{"a", "b c"}));
    EXPECT_EQ(list_items("a;b, c", ','), (Items{"a;b", "c"}));
    EXPECT_EQ(list_items("one", ','), Items{"one"});
    EXPECT_EQ(list_items("", ','), Items{});
    EXPECT_EQ(list_items(" ; ;", ';'), Items{});
}

}  // namespace
}  // namespace nimbry
