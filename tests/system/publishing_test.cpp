#include <gtest/gtest.h>

#include <QJsonObject>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/test_server.h"
#include "tests/support/without_network.h"
#include "tests/system/running_copy.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

/// A copy of nimbryd that publishes to servers of this machine.
class PublishingTest : public testing::Test {
protected:
    /// Starts it with these lines in its sections and lets it take two trains.
    void start(const std::string& ftp_lines, const std::string& main_lines = "") {
        folder.put("Nimbry.ini",
                   "[Main]\r\nHasRun=True\r\nmlogmail=True\r\nWUactive=True\r\nLogAPRS=True\r\n"
                   "Latitude=48.2\r\nLongitude=16.4\r\n" +
                       main_lines + "[FTP]\r\n" + ftp_lines);
        folder.put("mail_template.txt", "It is ~~WEBOUTTEMP~~ now\n.\nand that is all\n");
        copy.emplace(folder, station.device(), setting);
        ASSERT_TRUE(copy->listens());
        for (int taken = 1; taken <= 2; ++taken) {
            station.send(train_of_now());
            ASSERT_TRUE(eventually([&] { return copy->frames("trains") == taken; }));
        }
    }
    [[nodiscard]] Ending force(const char* what) {
        Process nimbryctl(NIMBRYCTL, {"--dir", folder.path(), "force", what});
        const Ending ending = nimbryctl.ending();
        told = nimbryctl.standard_error();
        return ending;
    }
    [[nodiscard]] std::string last_result(const char* kind) const {
        return copy->status()["uploads"].toObject()[kind].toObject()["last_result"].toString().toStdString();
    }
    /// Starts a copy that logs in to a mail server under TLS.
    void start_with_login(const TestServer& server, const std::string& security) {
        start(mail_lines(server) + "MailSecurity=" + security + "\r\nMailUser=me\r\n");
        set_password("secret");
    }
    void set_password(const char* password) {
        Process set(NIMBRYCTL, {"--dir", folder.path(), "set", "FTP", "MailPass", password});
        ASSERT_EQ(set.ending(), exited(0));
    }
    static std::string mail_lines(const TestServer& server) {
        return "MailServer=localhost\r\nMailPort=" + std::to_string(server.port()) +
               "\r\nMailTo=you@there.net\r\nMailMyAddr=me@home.net\r\n";
    }

    TemporaryFolder folder;
    StationLine station;
    Process::Setting setting;
    std::optional<RunningCopy> copy;
    std::string told;
};

TEST_F(PublishingTest, AMailReachesItsServer) {
    const TestServer server("smtp_server.py", {"none"});
    start(mail_lines(server) + "MailAttach=note.txt;gone.txt\r\n");
    folder.put("note.txt", "a note");
    EXPECT_EQ(force("mail"), exited(0)) << told;
    const std::string message = server.folder.contents("message");
    EXPECT_NE(message.find("Subject: Weather Data "), std::string::npos) << message;
    EXPECT_NE(message.find("\r\n.\r\nand that is all\r\n"), std::string::npos) << message;
    EXPECT_NE(message.find("note.txt"), std::string::npos) << message;
    EXPECT_EQ(copy->logged(" Email send success"), 1);
    EXPECT_EQ(copy->logged(" Email attachment not found: gone.txt"), 1);
    EXPECT_EQ(last_result("mail"), "ok");
}

TEST_F(PublishingTest, ARefusedMailIsToldWithTheServersWords) {
    const TestServer server("smtp_server.py", {"refuses"});
    start(mail_lines(server));
    EXPECT_EQ(force("mail"), exited(1));
    EXPECT_NE(told.find("550"), std::string::npos) << told;
    EXPECT_EQ(copy->logged(" Email send failed: " + last_result("mail")), 1);
    EXPECT_NE(copy->standard_error().find("Email Error: Nimbry was unable to send Email"), std::string::npos);
}

TEST_F(PublishingTest, AMailGoesUnderTlsWithALogin) {
    const TestCertificate certificate;
    setting.environment["SSL_CERT_FILE"] = certificate.path();
    for (const char* security : {"starttls", "tls"}) {
        SCOPED_TRACE(security);
        const TestServer server("smtp_server.py", {security, QString::fromStdString(certificate.path())});
        start_with_login(server, security);
        EXPECT_EQ(force("mail"), exited(0)) << told;
        EXPECT_TRUE(server.folder.contents("envelope").ends_with("\nme@home.net\nyou@there.net\nme\n"));
        EXPECT_NE(server.folder.contents("message").find("Subject: Weather Data "), std::string::npos);
        set_password("0ther-w0rd");
        EXPECT_EQ(force("mail"), exited(1));
        EXPECT_TRUE(told.starts_with("535 ")) << told;
        EXPECT_EQ(folder.contents("nbyprog.log").find("0ther-w0rd"), std::string::npos);
        copy.reset();
    }
}

TEST_F(PublishingTest, NoMailGoesToAServerWithAStrangersCertificate) {
    const TestCertificate certificate;
    const TestServer server("smtp_server.py", {"starttls", QString::fromStdString(certificate.path())});
    start_with_login(server, "starttls");
    EXPECT_EQ(force("mail"), exited(1));
    EXPECT_EQ(server.folder.contents("message"), "");
    EXPECT_EQ(copy->logged(" Email send failed: " + last_result("mail")), 1);
}

TEST_F(PublishingTest, AReportGoesUnderTlsWhereItsHostSaysSo) {
    const TestCertificate certificate;
    setting.environment["SSL_CERT_FILE"] = certificate.path();
    const TestServer server("http_server.py", {QString::fromStdString(certificate.path())});
    start("WUuser=KTEST1\r\nWUpass=p\r\nWUhost=https://localhost:" + std::to_string(server.port()) + "\r\n");
    EXPECT_EQ(force("weather"), exited(0)) << told;
    EXPECT_TRUE(server.folder.contents("requests").starts_with("GET /weatherstation/"));
    EXPECT_EQ(copy->logged(" Weather Underground upload OK"), 1);
}

TEST_F(PublishingTest, WithoutANetworkEachKindOfUploadSaysSo) {
    if (asked_without_network([] { return true; }) == 2)
        GTEST_SKIP() << "this system keeps its processes on the network";
    setting.in_child = [] {
        if (!leave_the_network()) _exit(126);
    };
    folder.put("myhtml.html", "page");
    start(
        "FTPServer=ftp.example.net\r\nFTPRemoteFile=weather.htm\r\nMailServer=mail.example.net\r\n"
        "MailTo=you@there.net\r\nMailMyAddr=me@home.net\r\nWUuser=KTEST1\r\nWUpass=p\r\n");
    struct Kind {
        const char *word, *line, *popup;
    };
    for (const Kind& kind :
         {Kind{"ftp", " FTP Upload failed: Unable to connect to Internet",
               "FTP Error: Nimbry was unable to make a connection / and did not complete FTP Upload!"},
          Kind{"mail", " Email send failed: Unable to connect to Internet",
               "Email Error: Nimbry was unable to send Email!"},
          Kind{"weather", " Weather Underground upload failed: Unable to connect to Internet",
               "Upload Error: Nimbry was unable to make a connection / and did not complete Weather "
               "Underground upload!"}}) {
        SCOPED_TRACE(kind.word);
        EXPECT_EQ(force(kind.word), exited(1));
        EXPECT_EQ(told, "Unable to connect to Internet\n");
        EXPECT_EQ(copy->logged(kind.line), 1);
        EXPECT_NE(copy->standard_error().find(kind.popup), std::string::npos) << copy->standard_error();
    }
}

TEST_F(PublishingTest, AReportReachesItsServerWithItsBlanksEscapedAndNothingElse) {
    const TestServer server("http_server.py");
    start("WUuser=KTEST1\r\nWUpass=a+b\r\nWUhost=127.0.0.1:" + std::to_string(server.port()) + "\r\n");
    EXPECT_EQ(force("weather"), exited(0)) << told;
    const std::string request = server.folder.contents("requests");
    EXPECT_TRUE(request.starts_with(
        "GET /weatherstation/updateweatherstation.php?action=updateraw&ID=KTEST1&PASSWORD=a+b&dateutc=20"))
        << request;
    EXPECT_NE(request.find("&softwaretype=Nimbry%202.02 HTTP/1.1"), std::string::npos) << request;
    EXPECT_EQ(copy->logged(" Weather Underground upload OK"), 1);
}

TEST_F(PublishingTest, NobodyAtTheHostIsToldAsAServerNotFound) {
    start("WUuser=KTEST1\r\nWUpass=p\r\nWUhost=127.0.0.1:1\r\n");
    EXPECT_EQ(force("weather"), exited(1));
    EXPECT_EQ(told, "Weather Underground Server not found\n");
    EXPECT_EQ(copy->logged(" Weather Underground upload Weather Underground Server not found"), 1);
}

TEST_F(PublishingTest, APacketReachesTheSecondServerWhenTheFirstIsNotThere) {
    const TestServer server("aprs_server.py");
    start("APRSuser=N0CALL\r\n", "APRSserver=127.0.0.1\r\nAPRSport=1\r\nAPRS2server=localhost\r\nAPRS2port=" +
                                     std::to_string(server.port()) + "\r\n");
    EXPECT_EQ(force("weather"), exited(0)) << told;
    const std::string heard = server.folder.contents("heard");
    EXPECT_TRUE(heard.starts_with("user N0CALL pass -1 vers NBY V2.02\r\nN0CALL>APRS,TCPXX*,qAX,N0CALL:@")) << heard;
    EXPECT_TRUE(heard.ends_with("NBY\r\n")) << heard;
    EXPECT_EQ(copy->logged(" APRS upload Failure. Connection timed out on primary server"), 1);
    EXPECT_EQ(copy->logged(" APRS upload success "), 1);
    EXPECT_EQ(last_result("aprs"), "ok");
}

TEST_F(PublishingTest, PasswordsStandInNoOutput) {
    const TestServer server("smtp_server.py", {"refuses"});
    start(mail_lines(server) + "WUuser=KTEST1\r\nWUpass=s3cr3t\r\nWUhost=127.0.0.1:1\r\n");
    Process set(NIMBRYCTL, {"--dir", folder.path(), "set", "FTP", "MailPass", "s3cr3t"});
    EXPECT_EQ(set.ending(), exited(0));
    EXPECT_EQ(force("mail"), exited(1));
    EXPECT_EQ(force("weather"), exited(1));
    EXPECT_EQ(copy->standard_error().find("s3cr3t"), std::string::npos);
    EXPECT_EQ(folder.contents("nbyprog.log").find("s3cr3t"), std::string::npos);
    const std::string ini = folder.contents("Nimbry.ini");
    EXPECT_EQ(ini.find("MailPass=s3cr3t"), std::string::npos);
}

TEST_F(PublishingTest, AServerThatIsSilentHoldsUpNothingButItsMail) {
    const TestServer server("smtp_server.py", {"silent"});
    start(mail_lines(server));
    Process forced(NIMBRYCTL, {"--dir", folder.path(), "force", "mail"});
    station.send(train_of_now());
    EXPECT_TRUE(eventually([&] { return copy->frames("trains") == 3; }));
    EXPECT_TRUE(forced.runs());
    copy->signal(SIGTERM);
    EXPECT_EQ(copy->ending(), exited(0)) << "nor does it hold up the exit";
}

}  // namespace
}  // namespace nimbry::system_test
