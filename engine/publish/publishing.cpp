#include "engine/publish/publishing.h"

namespace nimbry {

void getFTP(Copy& copy) {
    copy.state.publish.chkLocal = copy.ini.GetFlag("FTP", "LocalSave", false);
    copy.state.publish.txtLocalPath = copy.ini.GetSetting("FTP", "LocalPath", "C:\\");
}

void ftp_schedule(Copy&) {}

void ftp_time_out(Copy&) {}

void cancel_ftp(Copy& copy) {
    copy.state.publish.uloadftpbusy.clear();
}

void weather_services(Copy&) {}

void update_location_text(Copy&) {}

void send_scheduled_mails(Copy&) {}

void send_alarm_mail(Copy&) {}

void gencomail(Copy&) {}

bool send_changeover_mails(Copy&) {
    return false;
}

void FTPupload(Copy&) {}

void uploadmail(Copy&) {}

void wunderground(Copy&) {}

void hangup(Copy& copy) {
    bool& dialled = copy.state.publish.ProgramDialled;
    if (!dialled) return;
    copy.ports.desktop.hang_up_modem();
    dialled = false;
}

void offer_to_hang_up(Copy& copy) {
    if (!copy.state.publish.ProgramDialled) return;
    const Answer answer = copy.ports.notices.box({.title = "Nimbry message",
                                                  .text = "Do you wish to hang up the modem",
                                                  .icon = "?",
                                                  .choices = Choices::yes_no});
    if (answer == Answer::yes) hangup(copy);
}

}  // namespace nimbry
