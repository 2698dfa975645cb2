#include "engine/network/forwarding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/station/train_writer.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

struct Server : test::BareCopy {
    Server() {
        state.settings.bcastnet = true;
        state.settings.iplist = {"10.0.0.7", "255.255.255.255", "10.0.0.2"};
    }
    [[nodiscard]] std::vector<std::string> hosts() const {
        std::vector<std::string> hosts;
        for (const auto& sent : datasock.sent) hosts.push_back(sent.host);
        return hosts;
    }
};

TEST(Forwarding, AFrameGoesToEveryClientInTheOrderOfTheList) {
    Server server;
    const Bytes train = write_train({});
    forwardgroup(server.copy, train);
    EXPECT_EQ(server.hosts(), (std::vector<std::string>{"10.0.0.7", "255.255.255.255", "10.0.0.2"}));
    for (const auto& sent : server.datasock.sent) {
        EXPECT_EQ(sent.port, 60135);
        EXPECT_EQ(sent.bytes, train);
    }
    EXPECT_TRUE(server.notices.balloons.empty());
}

TEST(Forwarding, ALoneGroupIsOneDatagramOf27Bytes) {
    Server server;
    server.state.settings.iplist = {"10.0.0.7"};
    forwardgroup(server.copy, write_lone_wind({}));
    ASSERT_EQ(server.datasock.sent.size(), 1U);
    EXPECT_EQ(server.datasock.sent[0].bytes.size(), 27U);
}

TEST(Forwarding, TheSocketIsBoundOnceTo60137) {
    Server server;
    forwardgroup(server.copy, write_lone_wind({}));
    forwardgroup(server.copy, write_lone_wind({}));
    EXPECT_EQ(server.datasock.binds, std::vector<std::uint16_t>{60137});
}

TEST(Forwarding, OnlyAServerForwards) {
    struct Case {
        std::string what;
        bool bcastnet, fromnet, closing;
    };
    for (const Case& c : {Case{"a copy alone", false, false, false}, Case{"a client", false, true, false},
                          Case{"both roles chosen: the client's wins", true, true, false},
                          Case{"a server that closes", true, false, true}}) {
        SCOPED_TRACE(c.what);
        Server server;
        server.state.settings.bcastnet = c.bcastnet;
        server.state.settings.fromnet = c.fromnet;
        server.state.run.ProgramClosing = c.closing;
        forwardgroup(server.copy, write_lone_wind({}));
        EXPECT_TRUE(server.datasock.sent.empty());
        EXPECT_TRUE(server.datasock.binds.empty());
    }
}

TEST(Forwarding, AServerWithoutClientsDoesNothing) {
    Server server;
    server.state.settings.iplist.clear();
    server.datasock.bindable = false;
    forwardgroup(server.copy, write_lone_wind({}));
    EXPECT_TRUE(server.datasock.binds.empty());
    EXPECT_TRUE(server.notices.balloons.empty());
}

TEST(Forwarding, AFailedAddressDoesNotStopTheLaterOnes) {
    Server server;
    server.datasock.refusals = {{"255.255.255.255", {101, "Network is unreachable"}}};
    forwardgroup(server.copy, write_train({}));
    EXPECT_EQ(server.hosts(), (std::vector<std::string>{"10.0.0.7", "255.255.255.255", "10.0.0.2"}));
    ASSERT_EQ(server.notices.balloons.size(), 1U);
    const Balloon& balloon = server.notices.balloons[0].what;
    EXPECT_EQ(balloon.title, "Network Error");
    EXPECT_EQ(balloon.text,
              "Network error. Unable to send data to Nimbry client(s) Network is unreachable (101)\r\nThe address is "
              "255.255.255.255");
    EXPECT_EQ(balloon.closes_after, Milliseconds{5000});
    EXPECT_TRUE(server.log_lines().empty());
}

TEST(Forwarding, AnEntryThatIsNoAddressIsAFailureAndNeverAnotherAddress) {
    for (const char* entry : {"1.2.3", "10", "0x7f.1", "127.0.0.1.", "somewhere", ""}) {
        SCOPED_TRACE(entry);
        Server server;
        server.state.settings.iplist = {entry, "010.0.0.2"};
        forwardgroup(server.copy, write_train({}));
        EXPECT_EQ(server.hosts(), std::vector<std::string>{"10.0.0.2"});
        ASSERT_EQ(server.notices.balloons.size(), 1U);
        EXPECT_EQ(server.notices.balloons[0].what.text,
                  std::string("Network error. Unable to send data to Nimbry client(s) Invalid argument (10022)") +
                      (*entry == '\0' ? "" : std::string("\r\nThe address is ") + entry));
    }
}

TEST(Forwarding, OneNoticeAFrameTellsOfTheFirstFailure) {
    Server server;
    server.datasock.refusals = {{"10.0.0.2", {13, "Permission denied"}}, {"10.0.0.7", {5, "Odd"}}};
    forwardgroup(server.copy, write_train({}));
    ASSERT_EQ(server.notices.balloons.size(), 1U);
    EXPECT_EQ(server.notices.balloons[0].what.text,
              "Network error. Unable to send data to Nimbry client(s) Odd (5)\r\nThe address is 10.0.0.7");
    forwardgroup(server.copy, write_train({}));
    EXPECT_EQ(server.notices.balloons.size(), 2U);
}

TEST(Forwarding, ASocketThatCannotBeBoundIsTriedAgainWithEachFrame) {
    Server server;
    server.datasock.bindable = false;
    forwardgroup(server.copy, write_train({}));
    EXPECT_TRUE(server.datasock.sent.empty());
    ASSERT_EQ(server.notices.balloons.size(), 1U);
    EXPECT_EQ(server.notices.balloons[0].what.text,
              "Network error. Unable to send data to Nimbry client(s) Address in use (10048)");
    server.datasock.bindable = true;
    forwardgroup(server.copy, write_train({}));
    EXPECT_EQ(server.datasock.binds, (std::vector<std::uint16_t>{60137, 60137}));
    EXPECT_EQ(server.datasock.sent.size(), 3U);
}

}  // namespace
}  // namespace nimbry
