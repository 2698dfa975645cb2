#include "engine/publish/ftp_upload.h"

#include <string>
#include <utility>

#include "engine/derived/number_text.h"
#include "engine/publish/forced_run.h"
#include "engine/publish/ftp_watchdog.h"
#include "engine/publish/internet.h"
#include "engine/publish/last_run.h"
#include "engine/publish/local_pages.h"
#include "engine/publish/perform_upload.h"
#include "engine/publish/red_button.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/page_names.h"
#include "engine/reports/user_files.h"

namespace nimbry {
namespace {

constexpr Milliseconds before_the_look{50};

bool something_to_send(const Copy& copy) {
    const UserFiles folder(copy.ports.files);
    for (int n = 0; n < pages_uploaded; ++n)
        if (!folder.find(page_template(n)).empty()) return true;
    for (const char* name : {"nimbrywap.wml", "VidCap.jpg", "VidCap.png"})
        if (!folder.find(name).empty()) return true;
    return false;
}

void tell_nothing_to_send(Copy& copy) {
    copy.ports.notices.balloon({.title = "Template error",
                                .text = "Nimbry was unable to complete FTP Upload!\r\nThe template files are missing"});
    copy.log.event(" FTP Upload Failure. Missing template files.");
    note_run(copy, copy.state.publish.last_ftp, "Missing template files");
}

/// What an upload sets in motion ends with it, on every way out.
class UnderWay {
public:
    explicit UnderWay(Copy& copy) : copy_(copy), busy_(copy.state.publish.uloadftpbusy.try_hold()) {
        UploadState& upload = copy.state.publish.upload;
        upload.FtpTransferError = upload.FtpConnectFailed = upload.FtpGeneralError = upload.FtpTimedOut = false;
        upload.fault.clear();
        restart_watchdog(copy);
    }
    ~UnderWay() {
        stop_watchdog(copy_);
        wake_timers(copy_);
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    Copy& copy_;
    BusyFlag::Held busy_;
};

void tell_no_line(Copy& copy) {
    copy.ports.notices.balloon(
        {.title = "FTP Error", .text = "Nimbry was unable to make a connection\r\nand did not complete FTP Upload!"});
    copy.log.event(" FTP Upload failed: Unable to connect to Internet");
    copy.state.publish.upload.fault = "Unable to connect to Internet";
}

/// Tidies up after one kind of failure, if it has happened, and tells the user.
void tell_if(Copy& copy, bool& failed, const char* text) {
    if (!std::exchange(failed, false)) return;
    enable_panel_buttons(copy.state, true);
    stop_watchdog(copy);
    if (!copy.state.settings.NoFTPop) copy.ports.notices.balloon({.title = "FTP Error", .text = text});
}

void send_pages(Copy& copy) {
    UploadState& upload = copy.state.publish.upload;
    rest_timers(copy);
    upload.FtpTransferError = upload.FtpGeneralError = false;
    {
        const RedButton red(copy.state.menu.fmb[0]);
        PerformUpload(copy);
    }
    tell_if(copy, upload.FtpTransferError, "Nimbry has encountered an FTP upload problem");
    tell_if(copy, upload.FtpConnectFailed, "Nimbry has encountered an FTP connection problem");
    // Kept on purpose: a line of its own, below an empty one.
    tell_if(copy, upload.FtpGeneralError, "\r\nNimbry has encountered a general FTP problem");
}

/// False where only the local folder gets the pages.
bool goes_out(const PublishState& publish, UploadCause cause) {
    return publish.NimbryFTPSetup.ChkEnableFTP || publish.FtpForced ||
           (cause == UploadCause::after_mail && publish.NimbryFTPSetup.ChkDoEmailToo);
}

/// From the first look at the templates to the last file. The caller keeps everybody else out.
void upload(Copy& copy, UploadCause cause) {
    PublishState& publish = copy.state.publish;
    copy.ports.pauses.pause(before_the_look);
    if (!something_to_send(copy)) return tell_nothing_to_send(copy);
    if (copy.state.reports.mailGenBusy) {
        publish.revisitftp = true;
        return;
    }
    make_fresh_pages(copy);
    localsave(copy);
    if (!goes_out(publish, cause)) return;
    tell_forced_run(copy, ForcedRun::ftp);
    if (go_online(copy, trimmed(publish.NimbryFTPSetup.FTPServer))) {
        send_pages(copy);
    } else {
        tell_no_line(copy);
    }
    publish.revisitftp = false;
    note_run(copy, publish.last_ftp, publish.upload.fault.empty() ? run_went_well : publish.upload.fault);
}

}  // namespace

void ftp_schedule(Copy& copy) {
    const WeatherState& state = copy.state;
    const ReportsState& reports = state.reports;
    if (state.settings.fromnet || state.comm.changebusy || state.publish.emailbusy || reports.mailGenBusy ||
        reports.htmlGenBusy) {
        return;
    }
    PublishState& publish = copy.state.publish;
    if (publish.FtpTicks >= ticks_to_first_upload && !publish.FtpStartupDone) {
        publish.FtpTicks = 0;
        publish.FtpStartupDone = true;  // before the ticks that come during it
        FTPupload(copy);
        return;
    }
    ++publish.FtpTicks;
    if (publish.FtpTicks < publish.FtpMinutes * ticks_a_minute) return;
    // Kept on purpose: 1 here and 0 after the first upload, so the second comes ten seconds later than the others.
    publish.FtpTicks = 1;
    FTPupload(copy);
}

void FTPupload(Copy& copy, UploadCause cause) {
    const WeatherState& state = copy.state;
    const InternetDialog& settings = state.publish.NimbryFTPSetup;
    if (state.settings.fromnet || state.run.ProgramClosing) return;
    if (!settings.ChkEnableFTP && !state.publish.FtpForced && !settings.chkLocal && !settings.ChkDoEmailToo) return;
    if (state.publish.uloadftpbusy || state.reports.LocalSaveBusy) return;
    if (state.comm.changebusy) {
        copy.state.publish.revisitftp = true;
        return;
    }
    {
        const UnderWay under_way(copy);
        upload(copy, cause);
    }
    leave_line(copy);
}

}  // namespace nimbry
