#include "engine/publish/mail_body.h"

#include <string_view>

#include "engine/core/run_time_error.h"
#include "engine/core/separator.h"
#include "engine/derived/number_text.h"
#include "engine/reports/generation.h"
#include "engine/reports/resolvtag.h"
#include "engine/reports/template_scanner.h"

namespace nimbry {
namespace {

/// Marks a mail as being made, on every way out.
class MailInHand {
public:
    MailInHand(ReportsState& reports, bool is_alarm) : reports_(reports), busy_(reports.mailGenBusy.try_hold()) {
        reports_.IsAlarmMail = is_alarm;
        reports_.mail_body.clear();
    }
    ~MailInHand() {
        reports_.IsAlarmMail = false;
        reports_.short_text.clear();
    }
    MailInHand(const MailInHand&) = delete;
    MailInHand& operator=(const MailInHand&) = delete;

private:
    ReportsState& reports_;
    BusyFlag::Held busy_;
};

// Nothing waits in here, so no other generation can see its flags.
void compose(Copy& copy, std::string_view routine, const std::string& template_name, MailKind kind) {
    if (copy.state.run.HaveError) return;
    tagged(routine, [&] {
        ReportsState& reports = copy.state.reports;
        const MailInHand mail(reports, kind == MailKind::alarm);
        refresh_tag_sources(copy);
        reports.short_text = short_weather_text(copy);
        const Template text = read_template(copy, UserFiles(copy.ports.files), template_name);
        if (text.bytes) fill_template(*text.bytes, plain_tags(copy), reports.mail_body);
        reports.new_data = false;
        copy.state.publish.pending_mail = kind;
    });
}

}  // namespace

void genmail(Copy& copy) {
    compose(copy, "genmail", "mail_template.txt", MailKind::scheduled);
}

void genAlarmMail(Copy& copy) {
    compose(copy, "genAlarmMail", "mail_alm_template.txt", MailKind::alarm);
}

void gencomail(Copy& copy) {
    compose(copy, "gencomail", "mail_co_template.txt", MailKind::changeover);
}

void drop_pending_mail(WeatherState& state) {
    state.publish.pending_mail.reset();
    state.reports.mail_body.clear();
}

std::string short_weather_text(const Copy& copy) {
    const auto tag = [&](const char* name) { return resolvtag(copy, std::string("~~") + name + "~~"); };
    const std::string time = tag("WEBTIMENOW").substr(0, 5);
    // As it is shown now: the gust tag tells of the alarm's in a mail that does.
    const std::string gust = trimmed(copy.state.panel.Text2[6].text);
    const std::string line = "T:" + tag("WEBOUTTEMP") + " H:" + tag("WEBOSHUMID") + " B:" + tag("WEBBAROMTR") + "," +
                             tag("WEBBARTRND").substr(0, 1) + " Wgst:" + gust + "," + tag("WEBWINDGSD") +
                             " Wavg:" + tag("WEBWINDAVS") + "," + tag("WEBWINDAVD") + "DP:" + tag("WEBDEWPOIN") +
                             " Rain:" + tag("WEBRAINTOD") + " Tin:" + tag("WEBINSTEMP") + " Hin:" + tag("WEBINHUMID") +
                             "\r\n" + "NBY " + time + " " + tag("WEBDATENOW") + "\r\n" + std::string(separator_line);
    return trimmed(repdegree(line));
}

}  // namespace nimbry
