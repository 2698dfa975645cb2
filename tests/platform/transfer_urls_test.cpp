#include "platform/transfer_urls.h"

#include <gtest/gtest.h>

#include "platform/curl_handle.h"
#include "platform/network_interfaces.h"

namespace nimbry::platform {
namespace {

TEST(FtpUrl, NamesTheDirectoryAndTheFile) {
    struct Case {
        const char *directory, *url;
    };
    for (const Case& c :
         {Case{"", "ftp://h.net:21/"}, Case{"web", "ftp://h.net:21/web/"}, Case{"web/", "ftp://h.net:21/web/"},
          Case{"pub/my web", "ftp://h.net:21/pub/my%20web/"}, Case{"/srv/www", "ftp://h.net:21/%2Fsrv/www/"},
          Case{"/", "ftp://h.net:21/%2F"}, Case{"a#b?c%d;e", "ftp://h.net:21/a%23b%3Fc%25d%3Be/"}}) {
        const FtpServer server{.host = "h.net", .directory = c.directory};
        EXPECT_EQ(directory_url(server), c.url);
        EXPECT_EQ(file_url(server, "a b.htm"), std::string(c.url) + "a%20b.htm");
    }
    EXPECT_EQ(directory_url({.host = "h.net", .port = 990, .encryption = Encryption::implicit_tls}),
              "ftps://h.net:990/");
    EXPECT_EQ(directory_url({.host = "h.net", .encryption = Encryption::explicit_tls}), "ftp://h.net:21/");
    EXPECT_EQ(directory_url({.host = "::1"}), "ftp://[::1]:21/");
    EXPECT_EQ(file_url({.host = "h"}, "\xE9/\n"), "ftp://h:21/%E9%2F%0A");
}

TEST(MailUrl, SaysHowThisMachineNamesItself) {
    EXPECT_EQ(mail_url({.server = "m.net"}, "my.host"), "smtp://m.net:25/my.host");
    EXPECT_EQ(mail_url({.server = "m.net", .port = 465, .encryption = Encryption::implicit_tls}, "a"),
              "smtps://m.net:465/a");
}

TEST(WebUrl, EscapesOnlyWhatCannotTravel) {
    EXPECT_EQ(web_url("h.net/u.php?a=1&b=x+y%20:/;@"), "http://h.net/u.php?a=1&b=x+y%20:/;@");
    EXPECT_EQ(web_url("https://h.net/?d=2026-10-21 03:05:07"), "https://h.net/?d=2026-10-21%2003:05:07");
    EXPECT_EQ(web_url("http://h/?p=\"#<>\x01\x1F\x7F\x80\xFF~!"), "http://h/?p=%22%23%3C%3E%01%1F%7F%80%FF~!");
    EXPECT_EQ(web_url("h/?u=http://x"), "http://h/?u=http://x");
}

TEST(Conversation, ShowsNoPassword) {
    EXPECT_EQ(masked("PASS secret"), "PASS ****");
    EXPECT_EQ(masked("pass  se cret"), "PASS ****");
    EXPECT_EQ(masked("PASV"), "PASV");
    EXPECT_EQ(masked("USER PASS "), "USER PASS ");
}

TEST(Conversation, KnowsTheCodeOfAReply) {
    EXPECT_EQ(reply_code("550 No."), 550);
    EXPECT_EQ(reply_code("230-Hello"), 230);
    EXPECT_EQ(reply_code("221"), 221);
    for (const char* line : {"", "55", "HTTP/1.1 400", "5500 x", " 550 x"}) EXPECT_EQ(reply_code(line), 0) << line;
}

TEST(Conversation, EndsWithTheServersWordIfThatWasARefusal) {
    EXPECT_EQ(fault_text(CURLE_UPLOAD_FAILED, "553 Could not create file."), "553 Could not create file.");
    EXPECT_EQ(fault_text(CURLE_UPLOAD_FAILED, "400 No"), "400 No");
    EXPECT_EQ(fault_text(CURLE_RECV_ERROR, "150 go on"), "Failure when receiving data from the peer");
    EXPECT_EQ(fault_text(CURLE_RECV_ERROR, ""), "Failure when receiving data from the peer");
}

TEST(ThisMachine, IsLoopback) {
    for (const char* host : {"localhost", "LocalHost", "127.0.0.1", "127.9.8.7", "::1", "[::1]"})
        EXPECT_TRUE(is_this_machine(host)) << host;
    for (const char* host : {"", "localhost.net", "127.net", "128.0.0.1", "::2", "ftp.example.net"})
        EXPECT_FALSE(is_this_machine(host)) << host;
}

}  // namespace
}  // namespace nimbry::platform
