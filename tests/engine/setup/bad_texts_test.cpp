// What a person can type into the text fields of the setup windows: each text is taken as it is meant or refused with a
// message, and a refused dialog changes no setting.

#include <gtest/gtest.h>

#include "engine/alarms/alarms_dialog.h"
#include "engine/derived/number_text.h"
#include "engine/displays/marquee.h"
#include "engine/publish/internet_check.h"
#include "engine/setup/comment_dialog.h"
#include "engine/setup/comms_dialog.h"
#include "engine/setup/rain_days_dialog.h"
#include "engine/setup/units_dialog.h"
#include "engine/sun/location_dialog.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

struct Typed {
    const char* name;
    std::string text;
};

const Typed typed[] = {
    {"empty", ""},
    {"blanks", "   "},
    {"letters", "abc"},
    {"more than a double holds", "1e400"},
    {"a comma", "1,5"},
    {"an umlaut", "\xFC"},
    {"10,000 characters", std::string(10000, 'x')},
    {"10,000 digits", std::string(10000, '7')},
};
constexpr std::size_t kinds = std::size(typed);

constexpr const char* not_numeric = "Input must be numeric.";
constexpr const char* minutes_wrong = "The minutes of the data log need to be between 1 and 99.";
constexpr const char* address_wrong = "The IP address appears to be invalid.\r\nUse the format nnn.nnn.nnn.nnn";
constexpr const char* device_wrong = "The name of a serial device can not be used.";

/// A field, how a dialog with a text in it is accepted, and what comes of each kind of text: the message, or what the
/// field's key then holds ("=" and the value).
struct Field {
    const char* name;
    std::string (*accept)(test::BareCopy& world, const std::string& text);
    std::string outcomes[kinds];
};

template <class Member>
std::string accept_location_with(test::BareCopy& world, const std::string& text, Member field, const char* key) {
    LocationDialog dialog = location_dialog("10.000000", "20.000000");
    dialog.Check3 = field == &LocationDialog::Text7 || field == &LocationDialog::Text8;
    dialog.*field = text;
    if (const auto refusal = accept_location(world.copy, dialog)) return std::string(refusal->message);
    return "=" + world.ini.GetSetting("Main", key, "");
}

std::string accept_comms_with(test::BareCopy& world, const std::string& text, std::string CommsDialog::*field,
                              const char* key) {
    CommsDialog dialog = comms_dialog(world.state.settings);
    dialog.*field = text;
    if (const auto box = unfit_comms(world.copy, dialog)) return box->text;
    accept_comms(world.copy, dialog);
    return "=" + world.ini.GetSetting("Main", key, "");
}

const Field fields[] = {
    {"latitude",
     [](test::BareCopy& world, const std::string& text) {
         return accept_location_with(world, text, &LocationDialog::Text7, "Latitude");
     },
     {"=0.000000", "=0.000000", not_numeric, "Input needs to be between 0 and 90.", "=1.500000", not_numeric,
      not_numeric, "Input needs to be between 0 and 90."}},
    {"longitude",
     [](test::BareCopy& world, const std::string& text) {
         return accept_location_with(world, text, &LocationDialog::Text8, "Longitude");
     },
     {"=0.000000", "=0.000000", not_numeric, "Input needs to be between 0 and 180.", "=1.500000", not_numeric,
      not_numeric, "Input needs to be between 0 and 180."}},
    {"minutes of the latitude",
     [](test::BareCopy& world, const std::string& text) {
         return accept_location_with(world, text, &LocationDialog::Text3, "Latitude");
     },
     {"=10.000000", "=10.000000", not_numeric, "Input needs to be between 0 and 60.", "=10.025000", not_numeric,
      not_numeric, "Input needs to be between 0 and 60."}},
    {"seconds of the latitude",
     [](test::BareCopy& world, const std::string& text) {
         return accept_location_with(world, text, &LocationDialog::Text4, "Latitude");
     },
     {"=10.000000", "=10.000000", not_numeric, "Input needs to be between 0 and 60.", "=10.000417", not_numeric,
      not_numeric, "Input needs to be between 0 and 60."}},
    {"minutes of the longitude",
     [](test::BareCopy& world, const std::string& text) {
         return accept_location_with(world, text, &LocationDialog::Text5, "Longitude");
     },
     {"=20.000000", "=20.000000", not_numeric, "Input needs to be between 0 and 60.", "=20.025000", not_numeric,
      not_numeric, "Input needs to be between 0 and 60."}},
    {"seconds of the longitude",
     [](test::BareCopy& world, const std::string& text) {
         return accept_location_with(world, text, &LocationDialog::Text6, "Longitude");
     },
     {"=20.000000", "=20.000000", not_numeric, "Input needs to be between 0 and 60.", "=20.000417", not_numeric,
      not_numeric, "Input needs to be between 0 and 60."}},
    {"minutes of the data log",
     [](test::BareCopy& world, const std::string& text) {
         return accept_comms_with(world, text, &CommsDialog::TxtLogMins, "LogMin");
     },
     {minutes_wrong, minutes_wrong, minutes_wrong, minutes_wrong, minutes_wrong, minutes_wrong, minutes_wrong,
      minutes_wrong}},
    {"device of a serial port",
     [](test::BareCopy& world, const std::string& text) {
         return accept_comms_with(world, text, &CommsDialog::SerialPort2, "SerialPort2");
     },
     // Any short text may name a device; an empty field is the system's own name, which needs no key.
     {"=", "=", "=abc", "=1e400", "=1,5", "=\xFC", device_wrong, device_wrong}},
    {"an address for the list",
     [](test::BareCopy& world, const std::string& text) {
         CommsDialog dialog = comms_dialog(world.state.settings);
         dialog.txtIP = text;
         const auto box = add_address(dialog);
         accept_comms(world.copy, dialog);
         return box ? box->text : "=" + world.ini.GetSetting("Main", "iplist(1)", "");
     },
     {address_wrong, address_wrong, address_wrong, address_wrong, address_wrong, address_wrong, address_wrong,
      address_wrong}},
    {"comment",
     [](test::BareCopy& world, const std::string& text) {
         accept_comment(world.copy, Comment::second, {text});
         return "=" + world.ini.GetSetting("Main", "WebComment2", "");
     },
     // Any text is one, up to its greatest length.
     {"=<!--empty-->", "=<!--empty-->", "=abc", "=1e400", "=1,5", "=\xFC", "=" + std::string(2000, 'x'),
      "=" + std::string(2000, '7')}},
    {"days since rain",
     [](test::BareCopy& world, const std::string& text) {
         world.state.records.DaySinceRain = 3;
         accept_rain_days(world.copy, {text, "0"});
         return "=" + std::to_string(world.state.records.DaySinceRain);
     },
     // What is no number changes nothing; one that no double holds is 0; halves go to the even day.
     {"=3", "=3", "=3", "=0", "=2", "=3", "=3", "=0"}},
    {"amount of the last rain",
     [](test::BareCopy& world, const std::string& text) {
         accept_rain_days(world.copy, {"1", text});
         return "=" + numtext(world.state.records.LastRain);
     },
     {"=0", "=0", "=0", "=0", "=1.5", "=0", "=0", "=0"}},
};

/// Everything that the dialogs could have changed.
std::string settings_of(const test::BareCopy& world) {
    std::string all;
    for (const MainKey& key : main_keys()) all += value_text(world.state.settings, key) + "\n";
    for (const std::string& address : world.state.settings.iplist) all += address + "\n";
    return all;
}

TEST(BadTexts, AreTakenAsMeantOrRefusedAndNeverChangeHalfASetting) {
    for (const Field& field : fields) {
        for (std::size_t n = 0; n < kinds; ++n) {
            SCOPED_TRACE(std::string(field.name) + ": " + typed[n].name);
            test::BareCopy world;
            world.state.settings.Latitude = "10.000000";
            world.state.settings.Longitude = "20.000000";
            const std::string before = settings_of(world);
            EXPECT_EQ(field.accept(world, typed[n].text), field.outcomes[n]);
            const bool refused = !field.outcomes[n].starts_with('=');
            if (refused) {
                EXPECT_EQ(settings_of(world), before);
            }
        }
    }
}

TEST(BadTexts, OfTheInternetDialogAreKeptAsTypedWhileNothingIsSwitchedOn) {
    // A key of the configuration file is read without outer blanks and up to 2047 characters.
    const std::string read[kinds] = {
        "", "", "abc", "1e400", "1,5", "\xFC", std::string(2047, 'x'), std::string(2047, '7')};
    InternetDialog names;
    const std::size_t count = dialog_controls(names).size();
    for (std::size_t control = 0; control < count; ++control) {
        for (std::size_t n = 0; n < kinds; ++n) {
            InternetDialog dialog;
            const DialogControl field = dialog_controls(dialog)[control];
            SCOPED_TRACE(std::string(field.name) + ": " + typed[n].name);
            if (!std::holds_alternative<std::string*>(field.value)) continue;
            *std::get<std::string*>(field.value) = typed[n].text;
            test::BareCopy world;
            EXPECT_FALSE(accept_internet(world.copy, dialog));
            const DialogControl kept = dialog_controls(world.state.publish.NimbryFTPSetup)[control];
            EXPECT_EQ(*std::get<std::string*>(kept.value), read[n]);
        }
    }
}

template <class Dialog>
std::vector<std::string> text_fields(Dialog dialog) {
    std::vector<std::string> names;
    for (const DialogControl& control : dialog_controls(dialog))
        if (std::holds_alternative<std::string*>(control.value)) names.emplace_back(control.name);
    return names;
}

TEST(BadTexts, HaveNoOtherFieldToGoToButThoseOfTheInternetDialog) {
    EXPECT_TRUE(text_fields(AlarmsDialog{}).empty());
    EXPECT_TRUE(text_fields(UnitsDialog{}).empty());
    EXPECT_TRUE(text_fields(MarqueeDialog{}).empty());
    EXPECT_EQ(text_fields(CommentDialog{}), std::vector<std::string>{"txtComment"});
    EXPECT_EQ(text_fields(RainDaysDialog{}), (std::vector<std::string>{"txtEDSR", "txtALR"}));
    EXPECT_EQ(text_fields(LocationDialog{}),
              (std::vector<std::string>{"Text7", "Text3", "Text4", "Text8", "Text5", "Text6"}));
    EXPECT_EQ(text_fields(CommsDialog{}), (std::vector<std::string>{"SerialPort1", "SerialPort2", "SerialPort3",
                                                                    "SerialPort4", "txtIP", "TxtLogMins"}));
}

}  // namespace
}  // namespace nimbry
