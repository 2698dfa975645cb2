#include "tests/platform/transfers_test.h"

namespace nimbry::platform {
namespace {

struct MailServer : TestServer {
    explicit MailServer(const char* mode, const TestCertificate* certificate = nullptr)
        : TestServer(QStringLiteral("smtp_server.py"),
                     QStringList{QString::fromLatin1(mode),
                                 certificate == nullptr ? QString() : QString::fromStdString(certificate->path())}) {}

    [[nodiscard]] Mail mail() const {
        return {.server = "localhost",
                .port = port(),
                .from_name = "Nimbry",
                .from = "me@home.net",
                .to = {"you@there.net"},
                .cc = {"c@there.net"},
                .bcc = {"hidden@there.net"},
                .subject = "Weather",
                .body = "one\n.\n..two\n"};
    }
};

TEST(CurlMail, ReachesEverybodyAndKeepsItsText) {
    MailServer server("none");
    server.folder.put("almanac.txt", "Man");
    Mail mail = server.mail();
    mail.attachments = {{"almanac.txt", server.folder.path("almanac.txt")}, {"gone.txt", server.folder.path("gone")}};
    Outside outside;
    const auto delivery = outside.transfers.send(mail);
    ASSERT_TRUE(ends(delivery));
    EXPECT_EQ(delivery->fault(), "");
    EXPECT_TRUE(run_events_until([&] { return outside.news == 1; }));

    const std::string envelope = server.folder.contents("envelope");
    EXPECT_TRUE(envelope.ends_with("\nme@home.net\nyou@there.net\nc@there.net\nhidden@there.net\n-\n")) << envelope;
    char host[256] = {};
    gethostname(host, sizeof host - 1);
    EXPECT_TRUE(envelope.starts_with(std::string(host) + "\n")) << envelope;
    const std::string message = server.folder.contents("message");
    EXPECT_NE(message.find("\r\n\r\none\r\n.\r\n..two\r\n--="), std::string::npos) << message;
    EXPECT_NE(message.find("TWFu\r\n"), std::string::npos) << message;
    EXPECT_EQ(message.find("gone.txt"), std::string::npos) << message;
    EXPECT_NE(message.find("Date: "), std::string::npos) << message;
    EXPECT_EQ(message.find("hidden"), std::string::npos) << message;
}

TEST(CurlMail, LogsInUnderTls) {
    const TestCertificate certificate;
    const Trust trust(certificate);
    for (const char* mode : {"starttls", "tls"}) {
        SCOPED_TRACE(mode);
        MailServer server(mode, &certificate);
        Mail mail = server.mail();
        mail.encryption = std::string(mode) == "tls" ? Encryption::implicit_tls : Encryption::explicit_tls;
        mail.user = "me";
        mail.password = "secret";
        Outside outside;
        const auto delivery = outside.transfers.send(mail);
        ASSERT_TRUE(ends(delivery));
        EXPECT_EQ(delivery->fault(), "");
        EXPECT_TRUE(server.folder.contents("envelope").ends_with("\nme\n"));

        mail.password = "wrong";
        const auto refused = outside.transfers.send(mail);
        ASSERT_TRUE(ends(refused));
        EXPECT_TRUE(refused->fault().starts_with("535 ")) << refused->fault();
    }
}

TEST(CurlMail, DoesNotGoInTheClearWhereTlsWasAskedFor) {
    MailServer server("none");
    Mail mail = server.mail();
    mail.encryption = Encryption::explicit_tls;
    Outside outside;
    const auto delivery = outside.transfers.send(mail);
    ASSERT_TRUE(ends(delivery));
    EXPECT_NE(delivery->fault(), "");
    EXPECT_EQ(server.folder.contents("message"), "");
}

TEST(CurlMail, TellsWhyItWasNotTaken) {
    Outside outside;
    MailServer refuses("refuses");
    const auto refused = outside.transfers.send(refuses.mail());
    ASSERT_TRUE(ends(refused));
    EXPECT_EQ(refused->fault(), "550 User unknown");

    MailServer silent("silent");
    EXPECT_TRUE(outside.transfers.send(silent.mail())->under_way()) << "it is not waited for";
    Mail patient = silent.mail();
    patient.limit = Milliseconds{500};
    const auto late = outside.transfers.send(patient);
    ASSERT_TRUE(ends(late));
    EXPECT_EQ(late->fault(), "Timed out");

    Mail nowhere = silent.mail();
    nowhere.server = "no.such.host.invalid";
    const auto unknown = outside.transfers.send(nowhere);
    ASSERT_TRUE(ends(unknown));
    EXPECT_EQ(unknown->fault(), "Couldn't resolve host name");
}

TEST(CurlMail, HasTwoMinutes) {
    EXPECT_EQ(Mail().limit, std::chrono::seconds(120));
}

}  // namespace
}  // namespace nimbry::platform
