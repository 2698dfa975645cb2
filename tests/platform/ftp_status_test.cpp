#include "platform/ftp_status.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace nimbry::platform {
namespace {

TEST(FtpStatus, IsDecidedByReplyCodeAndErrorInThisOrder) {
    struct Case {
        const char* name;
        LoginResult result;
        int status;
    };
    for (const Case& c : {
             Case{"all went well", {.code = CURLE_OK, .last_reply = 250}, 3000},
             Case{"too many users, which libcurl calls a time-out",
                  {.code = CURLE_OPERATION_TIMEDOUT, .last_reply = 421},
                  5004},
             Case{"421 before a refused login", {.code = CURLE_LOGIN_DENIED, .last_reply = 421}, 5004},
             Case{"login refused", {.code = CURLE_LOGIN_DENIED, .last_reply = 530}, 4009},
             Case{"password not understood", {.code = CURLE_FTP_WEIRD_PASS_REPLY, .last_reply = 202}, 4009},
             Case{"no account", {.code = CURLE_RECV_ERROR, .last_reply = 532}, 4009},
             Case{"invalid user", {.code = CURLE_RECV_ERROR, .last_reply = 430}, 4009},
             Case{"530 slower than the patience", {.code = CURLE_OPERATION_TIMEDOUT, .last_reply = 530}, 4009},
             Case{"unknown name", {.code = CURLE_COULDNT_RESOLVE_HOST, .tcp_stood = false}, 5001},
             Case{"unknown proxy", {.code = CURLE_COULDNT_RESOLVE_PROXY, .tcp_stood = false}, 5001},
             Case{"closed port", {.code = CURLE_COULDNT_CONNECT, .os_error = ECONNREFUSED, .tcp_stood = false}, 5004},
             Case{"reset at once", {.code = CURLE_COULDNT_CONNECT, .os_error = ECONNRESET, .tcp_stood = false}, 5004},
             Case{"no way there", {.code = CURLE_COULDNT_CONNECT, .os_error = EHOSTUNREACH, .tcp_stood = false}, 5002},
             Case{"machine says nothing", {.code = CURLE_OPERATION_TIMEDOUT, .tcp_stood = false}, 5002},
             Case{"silent after connecting", {.code = CURLE_OPERATION_TIMEDOUT}, 5007},
             Case{"silent after USER", {.code = CURLE_OPERATION_TIMEDOUT, .last_reply = 331}, 5007},
             Case{"data connection not accepted", {.code = CURLE_FTP_ACCEPT_FAILED}, 5007},
             Case{"data connection not made", {.code = CURLE_FTP_ACCEPT_TIMEOUT}, 5007},
             Case{"greets with something else", {.code = CURLE_WEIRD_SERVER_REPLY}, 6001},
             Case{"directory refused", {.code = CURLE_REMOTE_ACCESS_DENIED, .last_reply = 550}, 6001},
             Case{"hangs up", {.code = CURLE_RECV_ERROR}, 6001},
             Case{"no TLS there", {.code = CURLE_USE_SSL_FAILED, .last_reply = 502}, 6001},
             Case{"TLS fails", {.code = CURLE_SSL_CONNECT_ERROR}, 6001},
             Case{"wrong certificate", {.code = CURLE_PEER_FAILED_VERIFICATION}, 6001},
             Case{"a certificate, as older libraries say it", {.code = CURLE_OBSOLETE51}, 6001},
             Case{"revoked certificate", {.code = CURLE_SSL_INVALIDCERTSTATUS}, 6001},
             Case{"a URL that libcurl does not take", {.code = CURLE_URL_MALFORMAT}, 3},
             Case{"no memory", {.code = CURLE_OUT_OF_MEMORY}, 27},
         }) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ftp_status(c.result), c.status);
    }
}

}  // namespace
}  // namespace nimbry::platform
