#include "tests/platform/transfers_test.h"

namespace nimbry::platform {
namespace {

using namespace std::chrono_literals;

struct CurlWeb : testing::Test, Outside {
    TestServer server{QStringLiteral("http_server.py")};

    std::unique_ptr<WebReply> get(const std::string& path, Milliseconds limit = 60s) {
        auto reply = transfers.get("127.0.0.1:" + std::to_string(server.port()) + path, limit);
        EXPECT_TRUE(ends(reply));
        return reply;
    }
};

TEST_F(CurlWeb, KeepsStatusAndTheStartOfTheBody) {
    const auto good = get("/u.php?dateutc=2026-10-21 03:05:07&softwaretype=Nimbry 2.02");
    EXPECT_EQ(good->end(), WebReply::End::answered);
    EXPECT_EQ(good->status(), 200);
    EXPECT_EQ(good->body_start(), "success");
    EXPECT_EQ(server.folder.contents("requests"),
              "GET /u.php?dateutc=2026-10-21%2003:05:07&softwaretype=Nimbry%202.02 HTTP/1.1\n");
    const auto missing = get("/missing");
    EXPECT_EQ(missing->end(), WebReply::End::answered);
    EXPECT_EQ(missing->status(), 404);
    EXPECT_EQ(missing->body_start(), "not here");
}

TEST_F(CurlWeb, WaitsForNoMoreThanFiftyBytes) {
    const auto reply = get("/long");
    EXPECT_EQ(reply->end(), WebReply::End::answered);
    EXPECT_EQ(reply->status(), 200);
    EXPECT_EQ(reply->body_start(), "01234567890123456789012345678901234567890123456789");
}

TEST_F(CurlWeb, FollowsFiveRedirects) {
    EXPECT_EQ(get("/again/5")->status(), 200);
    EXPECT_EQ(get("/again/6")->status(), 302);
}

TEST_F(CurlWeb, TellsSilenceFromNoConnection) {
    const auto silent = get("/slow", 300ms);
    EXPECT_EQ(silent->end(), WebReply::End::timed_out);
    EXPECT_EQ(silent->status(), 0);
    EXPECT_EQ(get("/hangs-up")->end(), WebReply::End::no_connection);
    const auto unknown = transfers.get("no.such.host.invalid/", 60s);
    ASSERT_TRUE(ends(unknown));
    EXPECT_EQ(unknown->end(), WebReply::End::no_connection);
}

TEST_F(CurlWeb, TrustsOnlyCertificatesThatItKnows) {
    const TestCertificate certificate;
    TestServer secure(QStringLiteral("http_server.py"), {QString::fromStdString(certificate.path())});
    const std::string url = "https://localhost:" + std::to_string(secure.port()) + "/";
    const auto stranger = transfers.get(url, 60s);
    ASSERT_TRUE(ends(stranger));
    EXPECT_EQ(stranger->end(), WebReply::End::no_connection);
    const Trust trust(certificate);
    Outside trusting;
    const auto known = trusting.transfers.get(url, 60s);
    ASSERT_TRUE(ends(known));
    EXPECT_EQ(known->status(), 200);
}

}  // namespace
}  // namespace nimbry::platform
