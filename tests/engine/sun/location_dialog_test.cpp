#include "engine/sun/location_dialog.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

#include "tests/world/bare_copy.h"
#ifndef _WIN32
#include "tests/support/temporary_folder.h"
#endif

namespace nimbry {
namespace {

LocationDialog decimal(const std::string& latitude, const std::string& longitude) {
    LocationDialog dialog;
    dialog.Text7 = latitude;
    dialog.Text8 = longitude;
    return dialog;
}

LocationDialog in_parts(const std::string& degrees, const std::string& minutes, const std::string& seconds) {
    LocationDialog dialog;
    dialog.Check3 = false;
    dialog.Text7 = degrees;
    dialog.Text3 = minutes;
    dialog.Text4 = seconds;
    return dialog;
}

/// What the dialog would store: "latitude longitude", or "control: message".
std::string outcome(const LocationDialog& dialog) {
    LocationTexts texts{"as", "before"};
    if (const auto refusal = read_location(dialog, texts)) {
        EXPECT_EQ(texts.latitude + texts.longitude, "asbefore") << "a refused dialog changes nothing";
        return std::string(refusal->control) + ": " + std::string(refusal->message);
    }
    return texts.latitude + " " + texts.longitude;
}

TEST(LocationDialog, TheHemispheresAreChosenByTheCheckBoxes) {
    LocationDialog dialog = decimal("33.8571", "151.2149");
    EXPECT_EQ(outcome(dialog), "33.857100 151.214900") << "north and east";
    dialog.Check1 = true;
    EXPECT_EQ(outcome(dialog), "-33.857100 151.214900") << "south";
    dialog.Check2 = false;
    EXPECT_EQ(outcome(dialog), "-33.857100 -151.214900") << "and west";
}

TEST(LocationDialog, ZeroNeverHasASign) {
    LocationDialog dialog = decimal("0", "0.0000004");
    dialog.Check1 = true;
    dialog.Check2 = false;
    EXPECT_EQ(outcome(dialog), "0.000000 0.000000") << "a latitude of 0 is a place, not a missing one";
}

/// A system that writes its numbers with a comma, as the programs' Qt turns it on where a user has one.
#ifdef _WIN32
class SystemWithComma {
public:
    SystemWithComma() : is_there_(std::setlocale(LC_ALL, "German_Germany") != nullptr) {}
    ~SystemWithComma() { std::setlocale(LC_ALL, "C"); }
    SystemWithComma(const SystemWithComma&) = delete;
    SystemWithComma& operator=(const SystemWithComma&) = delete;
    [[nodiscard]] bool is_there() const { return is_there_; }

private:
    bool is_there_;
};
#else
class SystemWithComma {
public:
    SystemWithComma() {
        const std::string make = "localedef -i de_DE -f UTF-8 " + folder_.path("comma") + " >/dev/null 2>&1";
        is_there_ = std::system(make.c_str()) == 0 && setenv("LOCPATH", folder_.path().c_str(), 1) == 0 &&
                    std::setlocale(LC_ALL, "comma") != nullptr;
    }
    ~SystemWithComma() {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }
    SystemWithComma(const SystemWithComma&) = delete;
    SystemWithComma& operator=(const SystemWithComma&) = delete;
    [[nodiscard]] bool is_there() const { return is_there_; }

private:
    platform::test::TemporaryFolder folder_;
    bool is_there_ = false;
};
#endif

TEST(LocationDialog, APointIsStoredWhereTheSystemWritesAComma) {
    const SystemWithComma system;
    if (!system.is_there()) GTEST_SKIP() << "this system has no such numbers (Debian: the package locales)";
    LocationDialog dialog = decimal("0.25", "151.2149");
    dialog.Check1 = true;
    EXPECT_EQ(outcome(dialog), "-0.250000 151.214900");
}

TEST(LocationDialog, DegreesMinutesAndSecondsMakeDecimalDegrees) {
    LocationDialog dialog = in_parts("33", "51", "25.56");
    dialog.Text8 = "151";
    dialog.Text5 = "12";
    dialog.Text6 = "53.64";
    EXPECT_EQ(outcome(dialog), "33.857100 151.214900");
}

struct BoxCase {
    const char* name;
    LocationDialog dialog;
    const char* outcome;
};

const BoxCase box_cases[] = {
    {"empty boxes are 0", decimal("", ""), "0.000000 0.000000"},
    {"blanks are empty", decimal("  ", " "), "0.000000 0.000000"},
    {"a decimal comma", decimal(" 12,5", "7"), "12.500000 7.000000"},
    {"the pole", decimal("90", "180"), "90.000000 180.000000"},
    {"past the pole", decimal("90.000001", "0"), "Text7: Input needs to be between 0 and 90."},
    {"past the date line", decimal("0", "180.1"), "Text8: Input needs to be between 0 and 180."},
    {"a sign of one's own", decimal("-1", "0"), "Text7: Input needs to be between 0 and 90."},
    {"a word", decimal("north", "0"), "Text7: Input must be numeric."},
    {"a number and more", decimal("0", "12 E"), "Text8: Input must be numeric."},
    {"an umlaut", decimal("1\xFC", "0"), "Text7: Input must be numeric."},
    {"both wrong: the latitude is told", decimal("91", "east"), "Text7: Input needs to be between 0 and 90."},
    {"more than a double holds", decimal("1e400", "0"), "Text7: Input needs to be between 0 and 90."},
    {"ten thousand digits", decimal("0", std::string(10000, '9')), "Text8: Input needs to be between 0 and 180."},
    {"90 degrees with minutes and seconds are taken", in_parts("90", "59", "60"), "91.000000 0.000000"},
    {"60 minutes are legal", in_parts("1", "60", ""), "2.000000 0.000000"},
    {"61 minutes are not", in_parts("1", "60.5", "0"), "Text3: Input needs to be between 0 and 60."},
    {"seconds likewise", in_parts("1", "0", "-1"), "Text4: Input needs to be between 0 and 60."},
    {"minutes that are none", in_parts("1", "x", "y"), "Text3: Input must be numeric."},
    {"degrees come before minutes", in_parts("91", "61", "0"), "Text7: Input needs to be between 0 and 90."},
};

TEST(LocationDialog, EachBoxIsReadOrRefused) {
    for (const BoxCase& c : box_cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(outcome(c.dialog), c.outcome);
    }
}

TEST(LocationDialog, TheBoxesOfALongitudeAreItsOwn) {
    LocationDialog dialog = in_parts("0", "0", "0");
    dialog.Text5 = "61";
    EXPECT_EQ(outcome(dialog), "Text5: Input needs to be between 0 and 60.");
    dialog.Text5 = "0";
    dialog.Text6 = "s";
    EXPECT_EQ(outcome(dialog), "Text6: Input must be numeric.");
}

TEST(LocationDialog, MinutesAreNotLookedAtInDecimalDegrees) {
    LocationDialog dialog = decimal("1", "2");
    dialog.Text3 = "nonsense";
    EXPECT_EQ(outcome(dialog), "1.000000 2.000000");
}

TEST(LocationDialog, ItOpensWithTheStoredPlaceInDecimalDegrees) {
    const LocationDialog dialog = location_dialog("-33.857100", "-151.214900");
    EXPECT_TRUE(dialog.Check3);
    EXPECT_EQ(dialog.Text7, "33.8571");
    EXPECT_EQ(dialog.Text8, "151.2149");
    EXPECT_TRUE(dialog.Check1);
    EXPECT_FALSE(dialog.Check2);
}

TEST(LocationDialog, APlaceThatWasNeverEnteredShowsAs0NorthAndEast) {
    EXPECT_EQ(location_dialog("999", "999"), decimal("0", "0"));
    EXPECT_EQ(location_dialog("", "east"), decimal("0", "0"));
    EXPECT_FALSE(location_dialog("999", "999").Check1);
    EXPECT_TRUE(location_dialog("999", "999").Check2);
}

struct WayCase {
    const char* name;
    const char *decimal, *degrees, *minutes, *seconds;
};

const WayCase way_cases[] = {
    {"an observatory", "33.8571", "33", "51", "25.56"},
    {"a whole number of minutes has no sixty seconds", "33.85", "33", "51", "0"},
    {"less than a degree", "0.7", "0", "42", "0"},
    {"all six decimals", "12.345678", "12", "20", "44.441"},
    {"nothing", "0", "0", "0", "0"},
};

TEST(LocationDialog, TheOtherWayOfInputShowsTheSamePlaceAndComesBackUnchanged) {
    for (const WayCase& c : way_cases) {
        SCOPED_TRACE(c.name);
        LocationDialog dialog = decimal(c.decimal, "0");
        change_way_of_input(dialog);
        EXPECT_FALSE(dialog.Check3);
        EXPECT_EQ(dialog.Text7, c.degrees);
        EXPECT_EQ(dialog.Text3, c.minutes);
        EXPECT_EQ(dialog.Text4, c.seconds);
        change_way_of_input(dialog);
        EXPECT_EQ(dialog, decimal(c.decimal, "0"));
    }
}

TEST(LocationDialog, WhatIsNoNumberStaysWhereItWasTyped) {
    for (const char* typed : {"north", "1e400"}) {
        LocationDialog dialog = decimal(typed, "0");
        change_way_of_input(dialog);
        EXPECT_EQ(dialog.Text7, typed);
        change_way_of_input(dialog);
        EXPECT_EQ(dialog.Text7, typed);
    }
}

TEST(LocationDialog, EveryBoxHasItsHint) {
    LocationDialog dialog;
    EXPECT_EQ(location_hint(dialog, "Text7"), "Enter your latitude in degrees and decimal degrees (DD.ddddd)");
    EXPECT_EQ(location_hint(dialog, "Text8"), "Enter your longitude in degrees and decimal degrees (DDD.ddddd)");
    dialog.Check3 = false;
    EXPECT_EQ(location_hint(dialog, "Text7"), "Enter the degrees part of your latitude (0 to 90)");
    EXPECT_EQ(location_hint(dialog, "Text8"), "Enter the degrees part of your longitude (0 to 180)");
    EXPECT_EQ(location_hint(dialog, "Text3"), "Enter the minutes part of your latitude (0 to 60)");
    EXPECT_EQ(location_hint(dialog, "Text5"), "Enter the minutes part of your longitude (0 to 60)");
    EXPECT_EQ(location_hint(dialog, "Text4"), "Enter the seconds part of your latitude (0 to 60)");
    EXPECT_EQ(location_hint(dialog, "Text6"), "Enter the seconds part of your longitude (0 to 60)");
    EXPECT_EQ(location_hint(dialog, "Check1"), "");
}

TEST(LocationDialog, AcceptingStoresThePlaceAndShowsItsSun) {
    test::BareCopy world;
    LocationDialog dialog = decimal("0", "0");
    EXPECT_FALSE(accept_location(world.copy, dialog));
    EXPECT_EQ(world.ini.GetSetting("Main", "Latitude", ""), "0.000000");
    EXPECT_EQ(world.ini.GetSetting("Main", "Longitude", ""), "0.000000");
    EXPECT_EQ(world.state.settings.Latitude, "0.000000");
    EXPECT_EQ(world.state.settings.Longitude, "0.000000");
    EXPECT_EQ(world.state.sun.numwebsunrise, "05:44:50") << "5 October 2026 where the meridian meets the equator";
    EXPECT_TRUE(world.state.additional.TxtSunrise.visible);
}

TEST(LocationDialog, ARefusedDialogStoresNothing) {
    test::BareCopy world;
    const auto refusal = accept_location(world.copy, decimal("12", "181"));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->control, "Text8");
    EXPECT_FALSE(world.ini.has("Main", "Latitude"));
    EXPECT_EQ(world.state.settings.Latitude, "999");
}

TEST(LocationDialog, AForgottenPlaceIs999Again) {
    test::BareCopy world;
    accept_location(world.copy, decimal("12", "18"));
    forget_location(world.copy);
    EXPECT_EQ(world.ini.GetSetting("Main", "Latitude", ""), "999");
    EXPECT_EQ(world.ini.GetSetting("Main", "Longitude", ""), "999");
    EXPECT_EQ(world.state.additional.TxtSunset.text, "Can't calculate Sunset as no location entered");
    EXPECT_TRUE(world.state.additional.lblNoSun.visible);
}

TEST(LocationDialog, ItsControlsAreBoundByTheirNames) {
    LocationDialog dialog;
    for (const DialogControl& control : dialog_controls(dialog)) {
        if (auto* const* text = std::get_if<std::string*>(&control.value)) **text = std::string(control.name);
        if (auto* const* box = std::get_if<bool*>(&control.value)) **box = control.name == "Check1";
    }
    EXPECT_EQ(dialog.Text3 + dialog.Text4 + dialog.Text5 + dialog.Text6 + dialog.Text7 + dialog.Text8,
              "Text3Text4Text5Text6Text7Text8");
    EXPECT_TRUE(dialog.Check1);
    EXPECT_FALSE(dialog.Check2);
    EXPECT_FALSE(dialog.Check3);
}

}  // namespace
}  // namespace nimbry
