#include "platform/ftp_status.h"

#include <cerrno>

namespace nimbry::platform {
namespace {

enum Status {
    connected = 3000,
    login_refused = 4009,
    unknown_host = 5001,
    no_reply = 5002,
    rejected = 5004,
    timed_out = 5007,
    unexpected_answer = 6001,
};

bool refuses_login(long reply) {
    return reply == 530 || reply == 532 || reply == 430;
}

}  // namespace

int ftp_status(const LoginResult& result) {
    if (result.code == CURLE_OK) return connected;
    if (result.last_reply == 421) return rejected;
    if (refuses_login(result.last_reply)) return login_refused;
    switch (result.code) {
        case CURLE_LOGIN_DENIED:
        case CURLE_FTP_WEIRD_PASS_REPLY: return login_refused;

        case CURLE_COULDNT_RESOLVE_PROXY:
        case CURLE_COULDNT_RESOLVE_HOST: return unknown_host;

        case CURLE_COULDNT_CONNECT:
            return result.os_error == ECONNREFUSED || result.os_error == ECONNRESET ? rejected : no_reply;

        case CURLE_OPERATION_TIMEDOUT: return result.tcp_stood ? timed_out : no_reply;
        case CURLE_FTP_ACCEPT_FAILED:
        case CURLE_FTP_ACCEPT_TIMEOUT: return timed_out;

        case CURLE_WEIRD_SERVER_REPLY:
        case CURLE_REMOTE_ACCESS_DENIED:
        case CURLE_FTP_WEIRD_PASV_REPLY:
        case CURLE_FTP_WEIRD_227_FORMAT:
        case CURLE_FTP_COULDNT_SET_TYPE:
        case CURLE_FTP_PORT_FAILED:
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_OBSOLETE51:  // what older libraries call a certificate that is not to be trusted
        case CURLE_GOT_NOTHING:
        case CURLE_SSL_ENGINE_NOTFOUND:
        case CURLE_SSL_ENGINE_SETFAILED:
        case CURLE_SEND_ERROR:
        case CURLE_RECV_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_USE_SSL_FAILED:
        case CURLE_SSL_INVALIDCERTSTATUS: return unexpected_answer;

        default: return result.code;
    }
}

}  // namespace nimbry::platform
