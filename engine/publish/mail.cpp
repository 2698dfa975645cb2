#include "engine/publish/mail.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "engine/core/event.h"
#include "engine/derived/number_text.h"
#include "engine/publish/forced_run.h"
#include "engine/publish/ftp_upload.h"
#include "engine/publish/internet.h"
#include "engine/publish/internet_check.h"
#include "engine/publish/last_run.h"
#include "engine/publish/mail_address.h"
#include "engine/publish/mail_body.h"
#include "engine/publish/published_files.h"
#include "engine/publish/server_settings.h"
#include "engine/records/auto_report.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/resolvtag.h"

namespace nimbry {
namespace {

constexpr const char* sender_name = "Nimbry_Automatic_Weather_Email";
constexpr std::uint16_t usual_port = 25;
constexpr EncryptionWords encryption_words{"starttls", "tls"};

/// `emailbusy`, and the setup windows locked, for as long as it lives.
class MailUnderWay {
public:
    explicit MailUnderWay(WeatherState& state) : state_(state), busy_(state.publish.emailbusy.try_hold()) {
        if (busy_) lock_setup_windows(state_.setup);
    }
    ~MailUnderWay() {
        if (busy_ && !state_.comm.changebusy) unlock_setup_windows(state_.setup);
    }
    MailUnderWay(const MailUnderWay&) = delete;
    MailUnderWay& operator=(const MailUnderWay&) = delete;

    explicit operator bool() const { return static_cast<bool>(busy_); }

private:
    WeatherState& state_;
    BusyFlag::Held busy_;
};

/// A mail whose text is made.
struct MadeMail {
    MailKind kind = MailKind::scheduled;
    std::string body;
};

MadeMail take_pending(WeatherState& state) {
    MadeMail made{state.publish.pending_mail.value_or(MailKind::scheduled), std::move(state.reports.mail_body)};
    drop_pending_mail(state);
    return made;
}

/// The mail that waits keeps its text.
bool put_off(WeatherState& state) {
    if (!state.comm.changebusy && !state.publish.uloadftpbusy) return false;
    state.publish.revisitmail = true;
    return true;
}

std::vector<MailAttachment> attachments(Copy& copy, const std::string& list) {
    std::vector<MailAttachment> found;
    for (const std::string& name : list_items(list, ';')) {
        if (copy.ports.files.exists(name)) {
            found.push_back({fnamesplit(name), copy.ports.files.path(name)});
        } else {
            copy.log.event_or_nothing(" Email attachment not found: " + name);
        }
    }
    return found;
}

Mail addressed(Copy& copy, const MadeMail& made) {
    const InternetDialog& settings = copy.state.publish.NimbryFTPSetup;
    const auto tag = [&](const char* name) { return resolvtag(copy, name); };
    Mail mail;
    mail.server = trimmed(settings.MailServer);
    mail.port = port_of(settings.MailPort, usual_port);
    mail.encryption = encryption_of(settings.MailSecurity, encryption_words);
    mail.user = trimmed(settings.MailUser);
    if (!mail.user.empty()) mail.password = settings.MailPass;
    mail.from_name = sender_name;
    mail.from = trimmed(settings.MailMyAddr);
    mail.to = mail_addresses(settings.MailTo);
    mail.cc = mail_addresses(settings.Mailcc);
    mail.bcc = mail_addresses(settings.MailBcc);
    mail.subject = std::string(made.kind == MailKind::alarm ? "Weather Alarm " : "Weather Data ") +
                   tag("~~WEBTIMENOW~~") + " " + tag("~~WEBDATENOW~~");
    mail.body = made.body;
    mail.attachments = attachments(copy, settings.MailAttach);
    return mail;
}

void tell_failure(Copy& copy, const std::string& fault) {
    if (!copy.state.menu.mnuNoMailPop.checked) {
        copy.ports.notices.balloon(
            {.title = "Email Error", .text = "Nimbry was unable to send Email\r\n" + fault, .icon = "!"});
    }
    if (copy.state.menu.mnulogMail.checked) copy.log.event(" Email send failed: " + fault);
}

void tell_success(Copy& copy) {
    if (copy.state.publish.FtpForced) {
        copy.ports.notices.balloon({.title = "Email success", .text = "Email was sent successfully", .icon = "i"});
    }
    if (copy.state.menu.mnulogMail.checked) copy.log.event(" Email send success");
}

/// The notice of a forced mail, and the line. False when there is none: that is told.
bool line_is_there(Copy& copy) {
    tell_forced_run(copy, ForcedRun::mail);
    if (go_online(copy, trimmed(copy.state.publish.NimbryFTPSetup.MailServer))) return true;
    copy.ports.notices.balloon({.title = "Email Error", .text = "Nimbry was unable to send Email!", .icon = "!"});
    copy.log.event(" Email send failed: Unable to connect to Internet");
    note_run(copy, copy.state.publish.last_mail, "Unable to connect to Internet");
    return false;
}

/// Waits for the server's answer: why it has not taken the mail, or nothing.
std::string fault_of_sending(Copy& copy, const MadeMail& made) {
    // Without a server or an address there would be a fault too, but in the words of a URL.
    if (auto missing = missing_for_mail(copy.state.publish.NimbryFTPSetup)) return *missing;
    const std::unique_ptr<MailDelivery> delivery = copy.ports.transfers.send(addressed(copy, made));
    copy.ports.pauses.wait_until([&] { return !delivery->under_way(); });
    return delivery->fault();
}

/// Sends a mail over a line that is there.
void send(Copy& copy, const MadeMail& made) {
    const std::string fault = fault_of_sending(copy, made);
    note_run(copy, copy.state.publish.last_mail, fault.empty() ? run_went_well : fault);
    if (fault.empty()) {
        tell_success(copy);
    } else {
        tell_failure(copy, fault);
    }
}

/// From the test of the line to the server's answer. The caller holds `emailbusy`.
void deliver(Copy& copy, const MadeMail& made) {
    if (line_is_there(copy)) send(copy, made);
}

/// What follows a mail, whether it went or not; `emailbusy` is clear again.
void after_mail(Copy& copy) {
    PublishState& publish = copy.state.publish;
    const bool was_put_off = std::exchange(publish.revisitftp, false);
    if (publish.NimbryFTPSetup.ChkDoEmailToo) {
        FTPupload(copy, UploadCause::after_mail);
    } else if (was_put_off) {
        FTPupload(copy);
    }
    leave_line(copy);
}

bool is_for_changeover(const std::string& entry) {
    return entry.find("CHANGE") != std::string::npos;
}

void make_and_send_scheduled(Copy& copy) {
    {
        const MailUnderWay under_way(copy.state);
        if (!under_way) return;
        genmail(copy);
        if (copy.state.publish.NimbryFTPSetup.MailReport) AutoGenreport(copy);
        make_fresh_pages(copy);
        if (put_off(copy.state)) return;
        deliver(copy, take_pending(copy.state));
    }
    after_mail(copy);
}

}  // namespace

void send_scheduled_mails(Copy& copy) {
    const Readings& readings = copy.state.readings;
    PublishState& publish = copy.state.publish;
    if (!readings.dtvar || readings.rdattime.size() < 8 || readings.rdattime.substr(6, 2) >= "10") return;
    const auto& list = publish.NimbryFTPSetup.MailList;
    if (std::find(list.begin(), list.end(), readings.rdattime.substr(0, 5)) == list.end()) return;
    const CivilTime minute = std::chrono::floor<std::chrono::minutes>(*readings.dtvar);
    if (publish.last_mail_minute == minute) return;
    publish.last_mail_minute = minute;
    start_event(copy, "genmail", [&copy] { make_and_send_scheduled(copy); });
}

void send_alarm_mail(Copy& copy) {
    {
        const MailUnderWay under_way(copy.state);
        if (!under_way) return;
        genAlarmMail(copy);
        if (put_off(copy.state)) return;
        deliver(copy, take_pending(copy.state));
    }
    after_mail(copy);
}

bool send_changeover_mails(Copy& copy) {
    PublishState& publish = copy.state.publish;
    const auto& list = publish.NimbryFTPSetup.MailList;
    const auto count = std::count_if(list.begin(), list.end(), is_for_changeover);
    if (count == 0) return false;
    if (publish.uloadftpbusy) {
        publish.revisitmail = true;
        return true;
    }
    start_event(copy, "uploadmail", [&copy, count] {
        const MadeMail made = take_pending(copy.state);
        for (auto n = count; n > 0; --n) {
            {
                const MailUnderWay under_way(copy.state);
                if (!under_way) return;
                deliver(copy, made);
            }
            after_mail(copy);
        }
    });
    return true;
}

void drop_unsent_changeover_mail(Copy& copy) {
    const PublishState& publish = copy.state.publish;
    if (publish.pending_mail == MailKind::changeover && !publish.revisitmail) drop_pending_mail(copy.state);
}

void uploadmail(Copy& copy) {
    WeatherState& state = copy.state;
    if (state.publish.emailbusy || state.settings.fromnet || state.run.ProgramClosing) return;
    if (put_off(state)) return;
    {
        const MailUnderWay under_way(state);
        if (line_is_there(copy)) {
            if (!state.publish.pending_mail) genmail(copy);
            send(copy, take_pending(state));
        } else {
            drop_pending_mail(state);  // what misses its time is not sent later
        }
    }
    after_mail(copy);
}

}  // namespace nimbry
