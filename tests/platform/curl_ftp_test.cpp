#include <curl/curl.h>
#include <unistd.h>

#include <map>
#include <sstream>

#include "platform/curl_ftp.h"
#include "tests/platform/transfers_test.h"
#include "tests/support/held_port.h"

namespace nimbry::platform {
namespace {

using namespace std::chrono_literals;

/// A session with a server that does one thing wrong, or nothing.
struct Peer : Outside {
    explicit Peer(const char* fault) : server(QStringLiteral("ftp_peer.py"), {QString::fromLatin1(fault)}) {
        local.put("page.html", "<html>23.4</html>");
        local.put("big.bin", std::string(2'000'000, 'x'));
        where = {.host = "127.0.0.1", .port = server.port(), .user = "me", .password = "secret", .directory = "web"};
        where.active = false;
    }

    int connect() {
        session->connect(where);
        EXPECT_TRUE(ends(session));
        return session->end().status;
    }
    std::string put(const std::string& file, const std::string& remote) {
        session->put(local.path(file), remote);
        EXPECT_TRUE(ends(session));
        return session->end().fault;
    }
    void quit() {
        session->quit();
        EXPECT_TRUE(ends(session));
    }
    /// The commands that have reached the server, in order.
    [[nodiscard]] std::vector<std::string> commands() const { return lines("C "); }
    [[nodiscard]] std::vector<std::string> lines(const std::string& beginning) const {
        std::vector<std::string> found;
        std::istringstream log(server.folder.contents("exchange.log"));
        for (std::string line; std::getline(log, line);) {
            if (line.starts_with(beginning)) found.push_back(line.substr(beginning.size()));
        }
        return found;
    }

    const test::TemporaryFolder local;
    TestServer server;
    FtpServer where;
    std::unique_ptr<FtpSession> session = transfers.ftp_session();
};

TEST(CurlFtp, LogsInOnceAndSendsEachFileOnTheSameConnection) {
    Peer peer("none");
    EXPECT_EQ(peer.connect(), 3000);
    EXPECT_EQ(peer.commands(), (std::vector<std::string>{"USER me", "PASS secret", "PWD", "CWD web"}));
    EXPECT_EQ(peer.put("page.html", "a.html"), "");
    EXPECT_EQ(peer.put("big.bin", "b.bin"), "");
    peer.quit();
    EXPECT_EQ(peer.commands(), (std::vector<std::string>{"USER me", "PASS secret", "PWD", "CWD web", "EPSV", "TYPE I",
                                                         "STOR a.html", "EPSV", "STOR b.bin", "QUIT"}));
    EXPECT_EQ(peer.server.folder.contents("a.html"), "<html>23.4</html>");
    EXPECT_EQ(peer.server.folder.contents("b.bin"), std::string(2'000'000, 'x'));
    EXPECT_EQ(peer.lines("connected").size(), 1U);
    EXPECT_TRUE(run_events_until([&] { return peer.news == 4; }));
}

TEST(CurlFtp, LetsTheServerConnectWhenActive) {
    for (const char* fault : {"none", "no-eprt"}) {
        SCOPED_TRACE(fault);
        Peer peer(fault);
        peer.where.active = true;
        EXPECT_EQ(peer.connect(), 3000);
        EXPECT_EQ(peer.put("page.html", "a.html"), "");
        EXPECT_EQ(peer.server.folder.contents("a.html"), "<html>23.4</html>");
        EXPECT_EQ(peer.lines("C PORT").empty(), std::string(fault) == "none");
        EXPECT_TRUE(peer.lines("C EPSV").empty());
    }
}

TEST(CurlFtp, GoesToADirectoryInOneStepAndToNoneWithoutOne) {
    for (const auto& [directory, command] : std::map<std::string, std::vector<std::string>>{
             {"", {}}, {"pub/my web", {"pub/my web"}}, {"/srv/w#1", {"/srv/w#1"}}, {"/", {"/"}}}) {
        SCOPED_TRACE(directory);
        Peer peer("none");
        peer.where.directory = directory;
        EXPECT_EQ(peer.connect(), 3000);
        EXPECT_EQ(peer.put("page.html", "a.html"), "");
        EXPECT_EQ(peer.lines("C CWD "), command);
    }
}

TEST(CurlFtp, SendsNamesAndLoginsAsTheyAre) {
    Peer peer("none");
    peer.where.user = "me@home";
    peer.where.password = "p#%?/: @";
    EXPECT_EQ(peer.connect(), 3000);
    EXPECT_EQ(peer.put("page.html", "a b#c%41?d;type=a.html"), "");
    EXPECT_EQ(peer.lines("C USER "), std::vector<std::string>{"me@home"});
    EXPECT_EQ(peer.lines("C PASS "), std::vector<std::string>{"p#%?/: @"});
    EXPECT_EQ(peer.lines("C STOR "), std::vector<std::string>{"a b#c%41?d;type=a.html"});
}

TEST(CurlFtp, TellsTheExchangeWithoutThePassword) {
    Peer peer("none");
    peer.connect();
    peer.put("page.html", "a.html");
    std::string told;
    for (const FtpExchange& exchange : peer.session->take_exchanges())
        told += exchange.command + "|" + exchange.reply + "\n";
    EXPECT_TRUE(told.starts_with("|220 ready\nUSER me|331 password please\nPASS ****|230 logged in\n")) << told;
    EXPECT_TRUE(told.ends_with("STOR a.html|150 go on\nSTOR a.html|226 Transfer complete.\n")) << told;
    EXPECT_EQ(told.find("secret"), std::string::npos);
    EXPECT_TRUE(peer.session->take_exchanges().empty());
}

TEST(CurlFtp, TellsWhyALoginFailed) {
    for (const auto& [fault, status] : std::map<std::string, int>{{"421-greeting", 5004},
                                                                  {"421-pass", 5004},
                                                                  {"530-pass", 4009},
                                                                  {"550-cwd", 6001},
                                                                  {"closes-at-once", 6001},
                                                                  {"greets-with-http", 6001}}) {
        SCOPED_TRACE(fault);
        EXPECT_EQ(Peer(fault.c_str()).connect(), status);
    }
}

TEST(CurlFtp, TellsARefusedConnectionAndANameThatNobodyKnows) {
    Outside outside;
    const HeldPort nobody;
    const auto refused = outside.transfers.ftp_session();
    refused->connect({.host = "127.0.0.1", .port = nobody.number(), .user = "me"});
    ASSERT_TRUE(ends(refused));
    EXPECT_EQ(refused->end().status, 5004);
    const auto unknown = outside.transfers.ftp_session();
    unknown->connect({.host = "no.such.host.invalid", .user = "me"});
    ASSERT_TRUE(ends(unknown));
    EXPECT_EQ(unknown->end().status, 5001);
}

TEST(CurlFtp, TellsWhyAFileDidNotGetThere) {
    for (const auto& [fault, text] : std::map<std::string, std::string>{
             {"553-stor", "553 Could not create file."}, {"425-data", "425 Cannot open data connection."}}) {
        SCOPED_TRACE(fault);
        Peer peer(fault.c_str());
        ASSERT_EQ(peer.connect(), 3000);
        EXPECT_EQ(peer.put("page.html", "a.html"), text);
    }
    Peer second("550-second-file");
    ASSERT_EQ(second.connect(), 3000);
    EXPECT_EQ(second.put("page.html", "a.html"), "");
    EXPECT_EQ(second.put("page.html", "b.html"), "550 Permission denied.");
    Peer broken("closed-in-mid-transfer");
    ASSERT_EQ(broken.connect(), 3000);
    EXPECT_NE(broken.put("big.bin", "a.bin"), "");
    Peer missing("none");
    ASSERT_EQ(missing.connect(), 3000);
    EXPECT_EQ(missing.put("nothing.html", "a.html"), "Failed to open/read local data from file/application");
}

TEST(CurlFtp, SuggestsPassiveModeWhereTheServerCannotReachUs) {
    Peer peer("425-data");
    peer.where.active = true;
    ASSERT_EQ(peer.connect(), 3000);
    EXPECT_EQ(peer.put("page.html", "a.html"), "425 Cannot open data connection. (try passive mode)");
}

TEST(CurlFtp, DoesNotLogInAgainBehindOurBack) {
    Peer peer("hangs-up-after-file");
    ASSERT_EQ(peer.connect(), 3000);
    EXPECT_EQ(peer.put("page.html", "a.html"), "");
    EXPECT_NE(peer.put("page.html", "b.html"), "");
    peer.quit();
    EXPECT_EQ(peer.lines("connected").size(), 1U);
    EXPECT_EQ(peer.lines("C USER ").size(), 1U);
}

TEST(CurlFtp, TakesLeaveWithinThreeSecondsWhateverTheServerSays) {
    Peer peer("quit-never-answered");
    ASSERT_EQ(peer.connect(), 3000);
    EXPECT_EQ(peer.put("page.html", "a.html"), "");
    QElapsedTimer since;
    since.start();
    peer.quit();  // which is to end: this server would be waited for much longer
    EXPECT_EQ(peer.commands().back(), "QUIT");
    EXPECT_GE(since.elapsed(), 2'500);
}

TEST(CurlFtp, IsBrokenOffByLettingGoOfIt) {
    for (const char* fault :
         {"silent-after-connect", "silent-after-user", "silent-after-login", "226-withheld", "slow"}) {
        SCOPED_TRACE(fault);
        Peer peer(fault);
        peer.session->connect(peer.where);
        const bool logs_in = std::string(fault) == "226-withheld" || std::string(fault) == "slow";
        if (logs_in) {
            ASSERT_TRUE(ends(peer.session));
            peer.session->put(peer.local.path(std::string(fault) == "slow" ? "big.bin" : "page.html"), "a");
        }
        ASSERT_TRUE(run_events_until([&] { return !peer.lines(logs_in ? "C STOR" : "connected").empty(); }));
        run_pending_events();
        EXPECT_TRUE(peer.session->under_way());
        QElapsedTimer since;
        since.start();
        peer.session.reset();
        EXPECT_LT(since.elapsed(), 25'000) << "broken off, not waited for: the shortest patience is of 30 s";
        EXPECT_TRUE(run_events_until([&] { return !peer.lines("gone").empty(); }));
    }
}

TEST(CurlFtp, HoldsUpNoOtherTransferWhileItWaitsInsideACall) {
    Peer peer("226-withheld");
    TestServer web(QStringLiteral("http_server.py"));
    ASSERT_EQ(peer.connect(), 3000);
    peer.session->put(peer.local.path("page.html"), "a.html");
    ASSERT_TRUE(run_events_until([&] { return !peer.server.folder.contents("a.html").empty(); }));
    const auto reply = peer.transfers.get("127.0.0.1:" + std::to_string(web.port()), 10s);
    ASSERT_TRUE(ends(reply));
    EXPECT_EQ(reply->status(), 200);
    EXPECT_TRUE(peer.session->under_way());
}

struct Security {
    const char* word;
    Encryption encryption;
};
constexpr Security securities[] = {
    {"none", Encryption::none}, {"explicit", Encryption::explicit_tls}, {"implicit", Encryption::implicit_tls}};

/// vsftpd, which under TLS wants the session of the first connection again on the second.
struct Vsftpd : TestServer {
    Vsftpd(const char* security, const TestCertificate& certificate)
        : TestServer(QStringLiteral("vsftpd.py"),
                     {QString::fromLatin1(security), QString::fromStdString(certificate.path())}) {}
    [[nodiscard]] FtpServer where(Encryption encryption) const {
        return {.host = "localhost",
                .port = port(),
                .user = "anonymous",
                .password = "me@home.net",
                .directory = "up",
                .encryption = encryption};
    }
};

bool no_vsftpd() {
    return access("/usr/sbin/vsftpd", X_OK) != 0;
}

TEST(CurlFtp, SendsToARealServerInTheClearAndWithTls) {
    if (no_vsftpd()) GTEST_SKIP() << "no vsftpd here";
    const TestCertificate certificate;
    const Trust trust(certificate);
    for (const Security& security : securities) {
        const Vsftpd server(security.word, certificate);
        for (const bool active : {false, true}) {
            SCOPED_TRACE(std::string(security.word) + (active ? ", active" : ", passive"));
            Outside outside;
            const auto session = outside.transfers.ftp_session();
            FtpServer where = server.where(security.encryption);
            where.active = active;
            session->connect(where);
            ASSERT_TRUE(ends(session));
            ASSERT_EQ(session->end().status, 3000);
            for (const char* name : {"a.pem", "b.pem"}) {
                const std::string remote = name + std::to_string(active);
                session->put(certificate.path(), remote);
                ASSERT_TRUE(ends(session));
                // A libcurl that would send it in the clear sends nothing.
                const bool refused = active && security.encryption != Encryption::none &&
                                     curl_version_info(CURLVERSION_NOW)->version_num < 0x080000;
                EXPECT_EQ(session->end().fault, refused ? platform::no_active_tls : "");
                EXPECT_EQ(server.folder.contents("root/up/" + remote).empty(), refused);
            }
            session->put("/nothing/there", "c");
            ASSERT_TRUE(ends(session));
            EXPECT_NE(session->end().fault, "");
        }
    }
}

TEST(CurlFtp, SendsToAnotherRealServer) {
    TestServer server(QStringLiteral("ftp_server.py"));
    const test::TemporaryFolder local;
    local.put("page.html", "page");
    for (const bool active : {false, true}) {
        Outside outside;
        const auto session = outside.transfers.ftp_session();
        session->connect(
            {.host = "localhost", .port = server.port(), .user = "me", .password = "secret", .active = active});
        ASSERT_TRUE(ends(session));
        ASSERT_EQ(session->end().status, 3000);
        const std::string name = active ? "active" : "passive";
        session->put(local.path("page.html"), name);
        ASSERT_TRUE(ends(session));
        EXPECT_EQ(session->end().fault, "");
        EXPECT_EQ(server.folder.contents(name), "page");
    }
}

TEST(CurlFtp, TrustsNoCertificateOfAnotherNameNorAStrangers) {
    if (no_vsftpd()) GTEST_SKIP() << "no vsftpd here";
    const TestCertificate elsewhere(QStringLiteral("elsewhere.example"));
    const TestCertificate here;
    const Trust trust(elsewhere);
    for (const TestCertificate* shown : {&elsewhere, &here}) {
        for (const Security& security : securities) {
            if (security.encryption == Encryption::none) continue;
            const Vsftpd server(security.word, *shown);
            Outside outside;
            const auto session = outside.transfers.ftp_session();
            session->connect(server.where(security.encryption));
            ASSERT_TRUE(ends(session));
            EXPECT_EQ(session->end().status, 6001);
        }
    }
}

TEST(CurlFtp, SendsNoPasswordWhereTlsIsRefused) {
    Peer peer("none");
    peer.where.encryption = Encryption::explicit_tls;
    EXPECT_EQ(peer.connect(), 6001);
    EXPECT_EQ(peer.commands().front(), "AUTH TLS");
    EXPECT_TRUE(peer.lines("C USER").empty());
    EXPECT_TRUE(peer.lines("C PASS").empty());
}

}  // namespace
}  // namespace nimbry::platform
