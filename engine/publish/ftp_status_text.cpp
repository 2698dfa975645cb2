#include "engine/publish/ftp_status_text.h"

#include "engine/derived/number_text.h"
#include "engine/publish/ftp_watchdog.h"

namespace nimbry {
namespace {

/// In the program log, and for `nimbryctl status`, which has room for what is `known` beyond it.
void tell(Copy& copy, const std::string& fault, const std::string& known = {}) {
    stop_watchdog(copy);
    copy.log.event(" " + fault);
    copy.state.publish.upload.fault = fault + (known.empty() ? "" : " (" + known + ")");
}

}  // namespace

std::string ftp_status_text(int number) {
    switch (number) {
        case 4009: return "Login Refused";
        case 5001: return "Unknown Host";
        case 5002: return "No Reply";
        case 5004: return "Connect Rejected";
        case 5007: return "Timed out";
        case 6001: return "Unexpected Answer";
        default: return numtext(number);
    }
}

void status_event(Copy& copy, int number, const std::string& words) {
    UploadState& upload = copy.state.publish.upload;
    if (number == ftp_connected) {
        upload.FtpConnectFailed = false;
        upload.FtpConnected = true;
        return;
    }
    if (upload.FtpConnectFailed) return;
    upload.FtpConnectFailed = true;
    tell(copy, "Unable to make a connection to the remote FTP server: " + ftp_status_text(number), words);
}

void transfer_failure_event(Copy& copy, const std::string& text) {
    UploadState& upload = copy.state.publish.upload;
    if (upload.FtpTransferError) return;
    upload.FtpTransferError = true;
    tell(copy, "FTP " + text);
}

}  // namespace nimbry
