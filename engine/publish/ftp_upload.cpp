#include "engine/publish/local_save.h"
#include "engine/publish/publishing.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/page_names.h"
#include "engine/reports/user_files.h"

namespace nimbry {
namespace {

// Ticks of TimerFTP, one every ten seconds.
constexpr int ticks_to_first_upload = 3;
constexpr int ticks_a_minute = 6;

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
        FTPupload(copy);
        publish.FtpStartupDone = true;
        return;
    }
    ++publish.FtpTicks;
    if (publish.FtpTicks < publish.FtpMinutes * ticks_a_minute) return;
    // Kept on purpose: 1 here and 0 after the first upload, so the second comes ten seconds later than the others.
    publish.FtpTicks = 1;
    FTPupload(copy);
}

void FTPupload(Copy& copy, UploadCause) {
    const WeatherState& state = copy.state;
    if (state.settings.fromnet || state.run.ProgramClosing) return;
    if (!state.publish.NimbryFTPSetup.ChkEnableFTP && !state.publish.NimbryFTPSetup.chkLocal) return;
    if (state.publish.uloadftpbusy || state.reports.LocalSaveBusy) return;
    if (!something_to_send(copy)) return tell_nothing_to_send(copy);
    if (state.comm.changebusy || state.reports.mailGenBusy) {
        copy.state.publish.revisitftp = true;
        return;
    }
    const auto busy = copy.state.publish.uloadftpbusy.try_hold();
    make_fresh_pages(copy);
    localsave(copy);
}

}  // namespace nimbry
