#include "engine/setup/changeover_choice.h"

#include "engine/graphs/graph_store.h"
#include "engine/records/day_files.h"
#include "engine/records/extremes_display.h"

namespace nimbry {
namespace {

constexpr std::string_view midnight_question =
    "Changing this setting will reset the graphs as well as all accumulated data for Today & Yesterday.\r\n"
    "It will also disable email sending and clear email sending times.\r\n"
    "Click OK to Continue, Cancel to abort change.";

// Kept on purpose: it does not speak of the graphs, which start afresh all the same.
constexpr std::string_view nine_question =
    "Changing this setting will reset the accumulated data for Today & Yesterday\r\n"
    "as well as disabling email sending and clearing email sending times.\r\n"
    "Click OK to Continue, Cancel to abort change.";

void start_today_again(WeatherState& state) {
    state.records.day.reset_values();
    blank_today(state);
    state.rain.raintoday = 0;
    if (state.rain.rainbefore) state.rain.rainatchange = state.rain.rainnow;
}

void forget_yesterday(Copy& copy) {
    show_yesterday_to_come(copy.state);
    const FileResult result = copy.ports.files.remove(std::string(yesterday_file));
    if (result == FileResult::ok || result == FileResult::not_found) return;
    copy.log.event_or_nothing(" nimbrYDay.log could not be deleted: yesterday comes back with the next start");
}

void switch_mail_off(Copy& copy) {
    copy.ini.SaveSettings({{"FTP", "EMailEn", flag_text(false)}, {"FTP", "numofentries", "0"}});
    copy.state.publish.NimbryFTPSetup.ChkSendMail = false;
    copy.state.publish.NimbryFTPSetup.MailList.clear();
}

}  // namespace

std::optional<MessageBox> changeover_question(const MainSettings& settings, bool midnight) {
    if (settings.tmidnight == midnight) return {};
    return MessageBox{
        .text = std::string(midnight ? midnight_question : nine_question), .icon = "?", .choices = Choices::ok_cancel};
}

void change_changeover(Copy& copy, bool midnight) {
    MainSettings& settings = copy.state.settings;
    settings.tmidnight = midnight;
    settings.tnineam = !midnight;
    copy.ini.SaveSettings({{"Main", "tmidnight", flag_text(midnight)}, {"Main", "tnineam", flag_text(!midnight)}});
    start_today_again(copy.state);
    forget_yesterday(copy);
    switch_mail_off(copy);
    set_changeover_captions(copy.state.panel, settings);
    discard_graphs(copy);
}

bool choose_changeover(Copy& copy, bool midnight) {
    const auto question = changeover_question(copy.state.settings, midnight);
    if (!question || copy.ports.notices.box(*question) != Answer::ok) return false;
    change_changeover(copy, midnight);
    return true;
}

MessageBox one_hour_warning() {
    // Kept on purpose: "setting!." and the second "to".
    return {.text =
                "Please ensure you understand the implications of changing this setting!.\r\n"
                "You should consult the Nimbry help file for details of the correct sequence to\r\n"
                "to follow when altering this setting in conjunction with changes to daylight saving."};
}

void set_one_hour(Copy& copy, bool one_hour) {
    MainSettings& settings = copy.state.settings;
    settings.AddOneHour = one_hour;
    copy.ini.SaveFlag("Main", "AddOneHour", one_hour);
    set_changeover_captions(copy.state.panel, settings);
}

}  // namespace nimbry
