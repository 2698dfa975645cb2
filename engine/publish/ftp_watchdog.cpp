#include "engine/publish/ftp_watchdog.h"

#include <utility>

#include "engine/publish/internet.h"
#include "engine/publish/mail_body.h"

namespace nimbry {
namespace {

constexpr int most_ticks = 4;

/// Lets go of the server: whoever waits for it looks at this.
void give_up(UploadState& upload) {
    upload.FtpTransferError = false;
    upload.FtpConnectFailed = true;
    upload.FtpTimedOut = true;
}

/// A mail that waited for the line goes no more, nor does its text with a later one. One that is in hand is not it.
void forget_waiting_mail(WeatherState& state) {
    if (std::exchange(state.publish.revisitmail, false) && !state.publish.emailbusy) drop_pending_mail(state);
}

}  // namespace

int watchdog_limit(int FtpMinutes) {
    return FtpMinutes <= most_ticks ? FtpMinutes : most_ticks;
}

void restart_watchdog(Copy& copy) {
    copy.state.publish.upload.watchdog_ticks = 0;
    copy.timers.start(TimerId::TimFTPTOT, copy.ports.clock.monotonic());
}

void stop_watchdog(Copy& copy) {
    copy.state.publish.upload.watchdog_ticks = 0;
    copy.timers.stop(TimerId::TimFTPTOT);
}

void rest_timers(Copy& copy) {
    UploadState& upload = copy.state.publish.upload;
    upload.TimComFail_rests = copy.timers.running(TimerId::TimComFail);
    upload.TimAlarm_rests = copy.timers.running(TimerId::TimAlarm);
    copy.timers.stop(TimerId::TimComFail);
    copy.timers.stop(TimerId::TimAlarm);
}

void wake_timers(Copy& copy) {
    UploadState& upload = copy.state.publish.upload;
    if (copy.state.run.ProgramClosing) return;
    const Instant now = copy.ports.clock.monotonic();
    if (std::exchange(upload.TimComFail_rests, false)) copy.timers.start_if_stopped(TimerId::TimComFail, now);
    if (std::exchange(upload.TimAlarm_rests, false)) copy.timers.start_if_stopped(TimerId::TimAlarm, now);
}

void ftp_time_out(Copy& copy) {
    PublishState& publish = copy.state.publish;
    if (++publish.upload.watchdog_ticks < watchdog_limit(publish.FtpMinutes)) return;
    forget_waiting_mail(copy.state);
    wake_timers(copy);
    publish.revisitftp = false;
    if (publish.NimbryFTPSetup.ChkHangup) hangup(copy);
    give_up(publish.upload);
    // Kept on purpose: 45 seconds, however long it was, and the blank in front.
    copy.ports.notices.balloon({.title = "FTP upload failure",
                                .text = " FTP has not responded for more than 45 seconds\r\n"
                                        "and the upload has been cancelled."});
    copy.log.event(" FTP routine has timed out and the upload has been cancelled");
    publish.upload.fault = "FTP routine has timed out and the upload has been cancelled";
    stop_watchdog(copy);
}

void cancel_ftp(Copy& copy) {
    PublishState& publish = copy.state.publish;
    if (publish.uloadftpbusy) give_up(publish.upload);
    stop_watchdog(copy);
    forget_waiting_mail(copy.state);
    publish.revisitftp = publish.revisitwu = false;
}

}  // namespace nimbry
