#include "engine/derived/units.h"

#include <gtest/gtest.h>

#include <vector>

namespace nimbry {
namespace {

// The settings with every unit key false, then those set that `set` names.
MainSettings only(const std::vector<bool MainSettings::*>& set) {
    MainSettings settings;
    for (const auto key :
         {&MainSettings::fBarmb, &MainSettings::fRainmm, &MainSettings::fTempC, &MainSettings::fWindkph})
        settings.*key = false;
    for (const auto key : set) settings.*key = true;
    return settings;
}

TEST(Units, OfTheDefaultsAreCelsiusKilometresMillibarsAndMillimetres) {
    const Units units = units_from(MainSettings{});
    EXPECT_EQ(units.temperature, TemperatureUnit::celsius);
    EXPECT_EQ(units.wind, WindUnit::kph);
    EXPECT_EQ(units.barometer, BarometerUnit::mb);
    EXPECT_EQ(units.rain, RainUnit::mm);
}

TEST(Units, HaveTheirFactorsAndTexts) {
    struct WindCase {
        bool MainSettings::*key;
        WindUnit unit;
        double factor;
        const char* text;
    };
    for (const WindCase& c : std::vector<WindCase>{{&MainSettings::fWindms, WindUnit::ms, 1, "m/S"},
                                                   {&MainSettings::fWindkph, WindUnit::kph, 3.6, "km/h"},
                                                   {&MainSettings::fWindmph, WindUnit::mph, 2.23693, "MPH"},
                                                   {&MainSettings::fWindknots, WindUnit::knots, 1.96936, "KT"}}) {
        const Units units = units_from(only({c.key}));
        EXPECT_EQ(units.wind, c.unit) << c.text;
        EXPECT_EQ(units.wcorr, c.factor) << c.text;
        EXPECT_EQ(units.wind_text, c.text);
    }
    struct BarometerCase {
        bool MainSettings::*key;
        BarometerUnit unit;
        double factor;
        const char* text;
    };
    for (const BarometerCase& c :
         std::vector<BarometerCase>{{&MainSettings::fBarmb, BarometerUnit::mb, 1, "mB"},
                                    {&MainSettings::fBarhpa, BarometerUnit::hpa, 1, "hPa"},
                                    {&MainSettings::fBarinhg, BarometerUnit::inhg, 0.029528750668088, "In.Hg"}}) {
        const Units units = units_from(only({c.key}));
        EXPECT_EQ(units.barometer, c.unit) << c.text;
        EXPECT_EQ(units.bcorr, c.factor) << c.text;
        EXPECT_EQ(units.barometer_text, c.text);
    }
    const Units millimetres = units_from(only({&MainSettings::fRainmm}));
    EXPECT_EQ(millimetres.rain, RainUnit::mm);
    EXPECT_EQ(millimetres.rcorr, 1);
    EXPECT_EQ(millimetres.rain_text, "mm");
    const Units inches = units_from(only({&MainSettings::fRainin}));
    EXPECT_EQ(inches.rain, RainUnit::inches);
    EXPECT_EQ(inches.rcorr, 0.0393700787401575);
    EXPECT_EQ(inches.rain_text, "In.");
}

TEST(Units, OfTemperatureCarryTheirOwnBlankAndADegreeSignOfOneByte) {
    EXPECT_EQ(units_from(only({&MainSettings::fTempC})).temperature_text, " \260C");
    EXPECT_EQ(units_from(only({&MainSettings::fTempF})).temperature_text, " \260F");
}

TEST(Units, KeyThatIsFalseByDefaultWinsOverTheDefaultUnit) {
    MainSettings settings;  // every default unit is still true
    settings.fTempF = settings.fWindknots = settings.fBarhpa = settings.fRainin = true;
    const Units units = units_from(settings);
    EXPECT_EQ(units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_EQ(units.wind, WindUnit::knots);
    EXPECT_EQ(units.barometer, BarometerUnit::hpa);
    EXPECT_EQ(units.rain, RainUnit::inches);
}

TEST(Units, LastOfSeveralKeysWins) {
    MainSettings settings;
    settings.fWindknots = settings.fWindmph = true;
    settings.fBarhpa = settings.fBarinhg = true;
    EXPECT_EQ(units_from(settings).wind, WindUnit::mph);
    EXPECT_EQ(units_from(settings).barometer, BarometerUnit::inhg);
    settings.fWindms = true;
    EXPECT_EQ(units_from(settings).wind, WindUnit::ms);
}

TEST(Units, WithNoKeyTrueAreTheDefaultOnes) {
    const Units units = units_from(only({}));
    EXPECT_EQ(units.temperature, TemperatureUnit::celsius);
    EXPECT_EQ(units.wind, WindUnit::kph);
    EXPECT_EQ(units.barometer, BarometerUnit::mb);
    EXPECT_EQ(units.rain, RainUnit::mm);
}

TEST(Units, KeptLeaveExactlyOneKeyTrueForEachQuantity) {
    MainSettings settings;
    settings.fTempF = settings.fWindms = settings.fWindknots = settings.fBarinhg = settings.fRainin = true;
    keep_units(settings, units_from(settings));
    EXPECT_EQ(settings.fTempC + settings.fTempF, 1);
    EXPECT_TRUE(settings.fTempF);
    EXPECT_EQ(settings.fWindknots + settings.fWindmph + settings.fWindms + settings.fWindkph, 1);
    EXPECT_TRUE(settings.fWindms);
    EXPECT_EQ(settings.fBarhpa + settings.fBarinhg + settings.fBarmb, 1);
    EXPECT_TRUE(settings.fBarinhg);
    EXPECT_EQ(settings.fRainin + settings.fRainmm, 1);
    EXPECT_TRUE(settings.fRainin);
}

}  // namespace
}  // namespace nimbry
