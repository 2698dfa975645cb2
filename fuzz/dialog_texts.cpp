// Any texts in the fields of the setup dialogs. The laws: a dialog that is refused stores nothing; what an accepted one
// stores is what the next start reads, and storing that again changes no byte; the file stays a file of one line a key.
#include <algorithm>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/alarms/alarms_dialog.h"
#include "engine/core/known_keys.h"
#include "engine/core/main_settings.h"
#include "engine/publish/internet_dialog.h"
#include "engine/setup/comment_dialog.h"
#include "engine/setup/comms_dialog.h"
#include "engine/setup/rain_days_dialog.h"
#include "engine/sun/location_dialog.h"
#include "fuzz/fuzz_input.h"
#include "tests/world/bare_copy.h"

namespace {

using namespace nimbry;
using fuzz::expect;

const std::string file = "Nimbry.ini";

/// Every control of a dialog takes what the input has for it.
template <class Dialog>
void type_into(Dialog& dialog, fuzz::Input& input) {
    for (const DialogControl& control : dialog_controls(dialog)) {
        if (auto* const* flag = std::get_if<bool*>(&control.value)) **flag = (input.next() & 1) != 0;
        if (auto* const* text = std::get_if<std::string*>(&control.value)) **text = input.text_to_nul();
        if (auto* const* list = std::get_if<std::vector<std::string>*>(&control.value)) {
            for (int n = input.next() % 4; n > 0; --n) (*list)->push_back(input.text_to_nul());
        }
        if (auto* const* number = std::get_if<float*>(&control.value))
            **number = alarm_single(static_cast<double>(input.next()) * 1e7 - 1e9);
    }
}

void check_location(fuzz::Input& input) {
    test::BareCopy world;
    LocationDialog dialog;
    type_into(dialog, input);
    const LocationDialog typed = dialog;
    const std::string before = world.files.contents(file);
    if (accept_location(world.copy, dialog)) {
        expect(world.files.contents(file) == before);
    } else {
        // Six decimals are what is stored: accepting them again stores the same.
        const std::string stored = world.files.contents(file);
        const MainSettings& settings = world.state.settings;
        expect(!accept_location(world.copy, location_dialog(settings.Latitude, settings.Longitude)));
        expect(world.files.contents(file) == stored);
    }
    dialog = typed;
    change_way_of_input(dialog);
    change_way_of_input(dialog);
    expect(dialog.Check3 == typed.Check3);
}

/// Every line of the file is a section or a key that Nimbry reads: no text has become one.
void check_keys(const test::MemoryFiles& files) {
    const std::string text = files.contents(file);
    std::string_view rest = text;
    std::string section;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find("\r\n"));
        rest.remove_prefix(std::min(rest.size(), line.size() + 2));
        if (line.starts_with('[')) {
            section = line.substr(1, line.find(']') - 1);
        } else if (!line.empty()) {
            expect(known_key(section, line.substr(0, line.find('='))).has_value());
        }
    }
}

/// The section `Main` as it stands is read as the settings in force, and they write the same bytes.
void check_stored(test::BareCopy& world) {
    clsIniFile again(world.files, file);
    again.read();
    const MainSettings read = read_main_settings(again);
    const MainSettings& held = world.state.settings;
    expect(comms_dialog(read) == comms_dialog(held));
    const std::string stored = world.files.contents(file);
    WrtCfg(again, read);
    expect(world.files.contents(file) == stored);
}

void check_comms(fuzz::Input& input) {
    test::BareCopy world;
    CommsDialog dialog = comms_dialog(world.state.settings);
    type_into(dialog, input);
    const int port = input.next() % 4;
    dialog.Option1 = port == 0;
    dialog.Option2 = port == 1;
    dialog.Option3 = port == 2;
    dialog.Option4 = port == 3;
    for (std::string& address : dialog.IPList) {
        dialog.txtIP = address;
        CommsDialog list;
        list.txtIP = address;
        address = add_address(list) ? "127.0.0.1" : list.IPList.front();
    }
    const bool refused = unfit_comms(world.copy, dialog).has_value();
    expect(world.files.contents(file).empty());
    if (refused) return;
    accept_comms(world.copy, dialog);
    if (!world.state.settings.fromnet) check_stored(world);
    world.pauses.end_all();
}

void check_comments(fuzz::Input& input) {
    test::BareCopy world;
    for (const Comment which : {Comment::first, Comment::second})
        accept_comment(world.copy, which, CommentDialog{input.text_to_nul()});
    expect(world.state.settings.WebComment.size() <= longest_comment);
    check_keys(world.files);
}

void check_rain_days(fuzz::Input& input) {
    test::BareCopy world;
    RainDaysDialog dialog;
    type_into(dialog, input);
    accept_rain_days(world.copy, dialog);
    const RainDaysDialog now = rain_days_dialog(world.state.records);
    accept_rain_days(world.copy, now);
    expect(rain_days_dialog(world.state.records) == now);
}

void check_internet(fuzz::Input& input) {
    test::BareCopy world;
    InternetDialog dialog;
    type_into(dialog, input);
    for (const InternetPassword& password : internet_passwords()) dialog.*password.value = input.text_to_nul();
    expect(write_internet(world.ini, dialog));
    check_keys(world.files);
    clsIniFile again(world.files, file);
    again.read();
    const InternetDialog read = read_internet(again);
    for (const InternetPassword& password : internet_passwords()) {
        const std::string& typed = dialog.*password.value;
        const bool printable = std::all_of(typed.begin(), typed.end(), [](char c) { return (c & 0xE0) != 0; });
        if (password.scrambled && printable && typed.size() < 600) expect(read.*password.value == typed);
    }
}

void check_alarms(fuzz::Input& input) {
    test::BareCopy world;
    AlarmsDialog dialog;
    type_into(dialog, input);
    expect(write_alarms(world.ini, dialog));
    clsIniFile again(world.files, file);
    again.read();
    expect(read_alarms(again) == dialog);
    // And any text as a threshold of the file.
    world.files.put(file, "[Alarms]\r\nATempHi=" + fuzz::one_line(input.rest()) + "\r\n");
    again.read();
    const float threshold = read_alarms(again).ATempHi;
    expect(threshold >= -1e9F && threshold <= 1e9F);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    constexpr void (*checks[])(fuzz::Input&) = {check_location,  check_comms,    check_comments,
                                                check_rain_days, check_internet, check_alarms};
    checks[static_cast<std::size_t>(input.next()) % std::size(checks)](input);
    return 0;
}
