#include "platform/mail_message.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbry::platform {
namespace {

const MessageStamp stamp{.date = "21 Nov 2026 10:35:57 +0000", .id = "ab12@my.host"};

Mail weather(const std::string& body) {
    return {.from_name = "Nimbry_Automatic_Weather_Email",
            .from = "me@home.net",
            .to = {"you@there.net", "all@there.net"},
            .subject = "Weather Data 14:05:07 21 Oct 2026",
            .body = body};
}

std::string body_of(const std::string& message) {
    return message.substr(message.find("\r\n\r\n") + 4);
}

bool has(const std::string& message, const std::string& piece) {
    return message.find(piece) != std::string::npos;
}

TEST(MailMessage, HasItsHeadersAndItsText) {
    EXPECT_EQ(mail_message(weather("T:+8.1C\r\n"), {}, stamp),
              "Date: 21 Nov 2026 10:35:57 +0000\r\n"
              "Message-ID: <ab12@my.host>\r\n"
              "From: \"Nimbry_Automatic_Weather_Email\" <me@home.net>\r\n"
              "To: you@there.net, all@there.net\r\n"
              "Subject: Weather Data 14:05:07 21 Oct 2026\r\n"
              "MIME-Version: 1.0\r\n"
              "Content-Type: text/plain; charset=windows-1252\r\n"
              "Content-Transfer-Encoding: 7bit\r\n"
              "\r\n"
              "T:+8.1C\r\n");
}

TEST(MailMessage, NamesOpenCopiesAndNoBlindOnes) {
    Mail mail = weather("");
    mail.cc = {"c@there.net"};
    mail.bcc = {"hidden@there.net"};
    const std::string message = mail_message(mail, {}, stamp);
    EXPECT_TRUE(has(message, "\r\nCc: c@there.net\r\n"));
    EXPECT_FALSE(has(message, "hidden"));
    EXPECT_FALSE(has(mail_message(weather(""), {}, stamp), "Cc:"));
}

TEST(MailMessage, EndsEachLineInTheSameWay) {
    EXPECT_EQ(body_of(mail_message(weather("a\nb\rc\r\nd\n\n.\n\re"), {}, stamp)),
              "a\r\nb\r\nc\r\nd\r\n\r\n.\r\n\r\ne\r\n");
    EXPECT_EQ(body_of(mail_message(weather(""), {}, stamp)), "");
}

TEST(MailMessage, SaysWhenItHasBytesAbove7F) {
    const std::string message = mail_message(weather("8.1 \260C"), {}, stamp);
    EXPECT_TRUE(has(message, "Content-Transfer-Encoding: 8bit\r\n"));
    EXPECT_EQ(body_of(message), "8.1 \260C\r\n");
}

TEST(MailMessage, BreaksLinesThatNoServerTakes) {
    EXPECT_TRUE(has(mail_message(weather(std::string(998, 'x')), {}, stamp), "7bit"));
    const std::string message = mail_message(weather(std::string(999, 'x') + "\n8.1 \xB0=1 \n"), {}, stamp);
    EXPECT_TRUE(has(message, "Content-Transfer-Encoding: quoted-printable\r\n"));
    // 75 characters and "=": 13 whole lines hold 975 of the 999.
    std::string expected;
    for (int n = 0; n < 13; ++n) expected += std::string(75, 'x') + "=\r\n";
    EXPECT_EQ(body_of(message), expected + std::string(24, 'x') + "\r\n8.1 =B0=3D1=20\r\n");
}

TEST(MailMessage, CarriesFilesBehindTheText) {
    const std::string message =
        mail_message(weather("hello"),
                     {{"al manac.txt", "Man"}, {"b\"c.bin", std::string("\x00\xFF", 2)}, {"\xE9.txt", "M"}}, stamp);
    EXPECT_TRUE(has(message,
                    "MIME-Version: 1.0\r\n"
                    "Content-Type: multipart/mixed; boundary=\"=_ab12.my.host\"\r\n"
                    "\r\n"
                    "--=_ab12.my.host\r\n"
                    "Content-Type: text/plain; charset=windows-1252\r\n"
                    "Content-Transfer-Encoding: 7bit\r\n"
                    "\r\n"
                    "hello\r\n"
                    "--=_ab12.my.host\r\n"
                    "Content-Type: application/octet-stream\r\n"
                    "Content-Disposition: attachment; filename=\"al manac.txt\"\r\n"
                    "Content-Transfer-Encoding: base64\r\n"
                    "\r\n"
                    "TWFu\r\n"
                    "--=_ab12.my.host\r\n"))
        << message;
    EXPECT_TRUE(has(message, "filename=\"b\\\"c.bin\"\r\nContent-Transfer-Encoding: base64\r\n\r\nAP8=\r\n"))
        << message;
    EXPECT_TRUE(has(message, "filename*=windows-1252''%E9.txt\r\n")) << message;
    EXPECT_TRUE(message.ends_with("TQ==\r\n--=_ab12.my.host--\r\n")) << message;
}

TEST(MailMessage, BreaksFilesIntoLinesOf76) {
    const std::string message = mail_message(weather(""), {{"a", std::string(60, 'A')}}, stamp);
    // 57 bytes make 76 characters.
    std::string line;
    for (int n = 0; n < 19; ++n) line += "QUFB";
    EXPECT_TRUE(has(message, "\r\n\r\n" + line + "\r\nQUFB\r\n--")) << message;
}

TEST(MailMessage, TakesNoHeaderOutOfAValue) {
    Mail mail = weather("");
    mail.subject = "a\r\nBcc: x@y.z";
    EXPECT_TRUE(has(mail_message(mail, {}, stamp), "Subject: aBcc: x@y.z\r\n"));
}

}  // namespace
}  // namespace nimbry::platform
