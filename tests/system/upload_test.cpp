#include <gtest/gtest.h>

#include <unistd.h>

#include <QJsonObject>
#include <csignal>
#include <optional>
#include <string>

#include "tests/support/test_server.h"
#include "tests/system/running_copy.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

/// A copy of nimbryd that publishes by FTP to a server of this machine.
class UploadTest : public testing::Test {
protected:
    /// Starts it and lets it take two trains.
    void start(const TestServer& server, const std::string& ftp_lines = "",
               const std::string& login = "FTPServer=127.0.0.1\r\nFTPUser=me\r\n") {
        folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nmlogftp=True\r\nFTPPort=" + std::to_string(server.port()) +
                                     "\r\n[FTP]\r\nFTPRemoteFile=weather.htm\r\nLogFTPResponses=True\r\n" + login +
                                     ftp_lines);
        folder.put("myhtml.html", "<p>~~WEBOUTTEMP~~</p>");
        folder.put("VidCap.jpg", "a picture");
        copy.emplace(folder, station.device(), setting);
        ASSERT_TRUE(copy->listens());
        Process set(NIMBRYCTL, {"--dir", folder.path(), "set", "FTP", "FTPPass", "secret"});
        ASSERT_EQ(set.ending(), exited(0));
        for (int taken = 1; taken <= 2; ++taken) {
            station.send(train_of_now());
            ASSERT_TRUE(eventually([&] { return copy->frames("trains") == taken; }));
        }
    }
    [[nodiscard]] Ending force() {
        Process nimbryctl(NIMBRYCTL, {"--dir", folder.path(), "force", "ftp"});
        return nimbryctl.ending();
    }

    TemporaryFolder folder;
    StationLine station;
    Process::Setting setting;
    std::optional<RunningCopy> copy;
};

TEST_F(UploadTest, APageReachesItsServerInEitherMode) {
    for (const char* active : {"True", "False"}) {
        SCOPED_TRACE(active);
        const TestServer server("ftp_server.py");
        start(server, std::string("FTPen=True\r\nFTPact=") + active + "\r\n");
        EXPECT_EQ(force(), exited(0));
        EXPECT_EQ(server.folder.contents("weather.htm"), folder.contents("nbyxauto.html"));
        EXPECT_NE(server.folder.contents("weather.htm"), "");
        EXPECT_EQ(server.folder.contents("VidCap.jpg"), "a picture");
        EXPECT_EQ(server.folder.contents("nimbryraw.txt"), folder.contents("nimbryraw.txt"));
        EXPECT_GE(copy->logged(" FTP Upload success"), 1);
        copy.reset();
    }
}

TEST_F(UploadTest, APageReachesVsftpdUnderTlsAndNoneGoesToAStranger) {
    if (access("/usr/sbin/vsftpd", X_OK) != 0) GTEST_SKIP() << "no vsftpd here";
    const TestCertificate certificate;
    for (const QString security : {"explicit", "implicit"}) {
        const TestServer server("vsftpd.py", {security, QString::fromStdString(certificate.path())});
        const std::string lines = "FTPact=False\r\nFTPRemDir=up\r\nFTPSecurity=" + security.toStdString() + "\r\n";
        const std::string login = "FTPServer=localhost\r\nFTPUser=anonymous\r\n";
        for (const bool trusted : {false, true}) {
            SCOPED_TRACE(security.toStdString() + (trusted ? ", trusted" : ", a stranger"));
            setting.environment["SSL_CERT_FILE"] = trusted ? certificate.path() : folder.path("none");
            folder.put("NimbryFTPLOG.txt", "");
            start(server, lines, login);
            EXPECT_EQ(force(), exited(trusted ? 0 : 1));
            EXPECT_EQ(server.folder.contents("root/up/weather.htm"), trusted ? folder.contents("nbyxauto.html") : "");
            const std::string exchange = folder.contents("NimbryFTPLOG.txt");
            EXPECT_EQ(exchange.find("AUTH TLS 234") != std::string::npos, security == "explicit") << exchange;
            EXPECT_EQ(exchange.find("PROT P 200") != std::string::npos, trusted) << exchange;
            EXPECT_EQ(exchange.find("USER ") != std::string::npos, trusted) << exchange;
            copy.reset();
        }
    }
}

TEST_F(UploadTest, ThePasswordStandsInNoOutput) {
    const TestServer server("ftp_server.py");
    start(server);
    EXPECT_EQ(force(), exited(0));
    const std::string exchange = folder.contents("NimbryFTPLOG.txt");
    EXPECT_NE(exchange.find("PASS **** 230"), std::string::npos) << exchange;
    EXPECT_EQ(exchange.find("secret"), std::string::npos);
    EXPECT_EQ(copy->standard_error().find("secret"), std::string::npos);
    EXPECT_EQ(folder.contents("nbyprog.log").find("secret"), std::string::npos);
}

TEST_F(UploadTest, ARefusedLoginIsTold) {
    const TestServer server("ftp_peer.py", {"530-pass"});
    start(server);
    EXPECT_EQ(force(), exited(1));
    EXPECT_EQ(copy->logged(" Unable to make a connection to the remote FTP server: Login Refused"), 1);
    EXPECT_NE(copy->standard_error().find("FTP Error: Nimbry has encountered an FTP connection problem"),
              std::string::npos);
}

TEST_F(UploadTest, ASilentServerHoldsUpNeitherTheWeatherNorTheExit) {
    const TestServer server("ftp_peer.py", {"226-withheld"});
    start(server, "FTPact=False\r\n");
    Process forced(NIMBRYCTL, {"--dir", folder.path(), "force", "ftp"});
    ASSERT_TRUE(eventually([&] { return !server.folder.contents("weather.htm").empty(); }));
    station.send(train_of_now());
    EXPECT_TRUE(eventually([&] { return copy->frames("trains") == 3; }));
    EXPECT_TRUE(forced.runs());
    copy->signal(SIGTERM);
    EXPECT_EQ(copy->ending(), exited(0));
}

}  // namespace
}  // namespace nimbry::system_test
