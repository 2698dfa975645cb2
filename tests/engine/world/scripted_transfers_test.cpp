#include "tests/world/scripted_transfers.h"

#include <gtest/gtest.h>

#include "tests/world/virtual_clock.h"
#include "tests/world/virtual_pauses.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

struct ScriptedTransfersTest : testing::Test {
    VirtualClock clock;
    VirtualPauses pauses{clock};
    ScriptedTransfers transfers{clock};

    template <class Work>
    bool ends(const Work& work, Milliseconds limit) {
        return pauses.wait_until([&] { return !work->under_way(); }, limit);
    }
};

TEST_F(ScriptedTransfersTest, WithoutAScriptAllGoesWell) {
    const auto session = transfers.ftp_session();
    EXPECT_FALSE(session->under_way());
    session->connect({.host = "ftp.example.net"});
    EXPECT_TRUE(session->under_way());
    ASSERT_TRUE(ends(session, 10ms));
    EXPECT_EQ(session->end().status, 3000);
    session->put("/folder/a.html", "a.html");
    ASSERT_TRUE(ends(session, 10ms));
    EXPECT_EQ(session->end().fault, "");
    session->quit();
    ASSERT_TRUE(ends(session, 10ms));
    EXPECT_EQ(transfers.names_sent(), std::vector<std::string>{"a.html"});
    EXPECT_EQ(transfers.ftp.quits, 1);
    const auto mail = transfers.send({});
    ASSERT_TRUE(ends(mail, 10ms));
    EXPECT_EQ(mail->fault(), "");
    const auto reply = transfers.get("http://example.net/", 10s);
    ASSERT_TRUE(ends(reply, 10ms));
    EXPECT_EQ(reply->end(), WebReply::End::answered);
    EXPECT_EQ(reply->status(), 200);
}

TEST_F(ScriptedTransfersTest, AStepEndsAsAndWhenItIsScripted) {
    transfers.ftp.puts["b"] = {.end = {.fault = "553 No"}, .after = 2s, .said = {{"STOR b", "553 No"}}};
    const auto session = transfers.ftp_session();
    session->put("/b", "b");
    EXPECT_FALSE(ends(session, 1999ms));
    EXPECT_TRUE(ends(session, 1ms));
    EXPECT_EQ(session->end().fault, "553 No");
    EXPECT_EQ(session->take_exchanges().size(), 1U);
    EXPECT_TRUE(session->take_exchanges().empty());

    transfers.mail_steps = {{.fault = "550 No"}};
    EXPECT_EQ(transfers.send({})->fault(), "550 No");
    EXPECT_EQ(transfers.send({})->fault(), "");

    transfers.web_steps = {{.end = WebReply::End::timed_out}, {.body = std::string(60, 'x')}};
    EXPECT_EQ(transfers.get("a", 1s)->end(), WebReply::End::timed_out);
    EXPECT_EQ(transfers.get("b", 1s)->body_start(), std::string(50, 'x'));
}

TEST_F(ScriptedTransfersTest, WhatNeverEndsIsBrokenOffWithItsObject) {
    transfers.ftp.connect.after = std::nullopt;
    transfers.mail_steps = {{.after = std::nullopt}};
    transfers.web_steps = {{.after = std::nullopt}};
    {
        const auto session = transfers.ftp_session();
        session->connect({});
        const auto mail = transfers.send({});
        const auto reply = transfers.get("a", 1s);
        pauses.pause(24h);
        EXPECT_TRUE(session->under_way() && mail->under_way() && reply->under_way());
        EXPECT_EQ(transfers.ftp.open, 1);
    }
    EXPECT_EQ(transfers.ftp.open, 0);
    EXPECT_EQ(transfers.ftp.dropped, 1);
    EXPECT_EQ(transfers.mails_dropped, 1);
    EXPECT_EQ(transfers.requests_dropped, 1);
}

}  // namespace
}  // namespace nimbry::test
