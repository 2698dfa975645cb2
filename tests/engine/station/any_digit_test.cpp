#include <vector>

#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

// No value of any digit in any group is an error: a damaged frame passes an eight-bit checksum once in 256 times.

class AnyDigit : public Decoding {
protected:
    /// What shows the present weather, in one list.
    [[nodiscard]] std::vector<std::string> present() const {
        std::vector<std::string> texts;
        for (const Box& box : panel.Text2) texts.push_back(box.text);
        for (const Box* box :
             {&panel.TxtDate, &panel.TxtWindChill, &panel.TxtHeatInd, &panel.TxtWinDir, &panel.TxtBarTrend,
              &panel.TxtForecast, &panel.TxtRainTot, &panel.TxtOShi, &panel.TxtOSLo, &panel.TxtOsHumHi,
              &panel.TxtOsHumLo, &panel.TxtWindHiG, &state.additional.txtWetBulb, &state.additional.txtWBDep,
              &state.additional.txtCloudBase})
            texts.push_back(box->text);
        return texts;
    }

    /// Sends every value of every digit between tag and checksum, twice, and then a good train.
    void try_every_digit(const GroupSpan& span) {
        train();
        const std::vector<std::string> before = present();
        for (int place = 3; place <= static_cast<int>(2 * span.length) - 2; ++place) {
            for (int value = 0; value <= 15; ++value) {
                SCOPED_TRACE(testing::Message() << "digit " << place << " is " << value);
                ASSERT_NO_THROW(train_with(span.tag, place, value));
                ASSERT_NO_THROW(train_with(span.tag, place, value));
                ASSERT_NO_THROW(train());
                ASSERT_EQ(present(), before) << "the next good train brings everything back";
            }
        }
    }
};

TEST_F(AnyDigit, OfTheClockAndHumidityGroupIsNoError) {
    try_every_digit(span_8f);
}
TEST_F(AnyDigit, OfTheTemperatureGroupIsNoError) {
    try_every_digit(span_9f);
}
TEST_F(AnyDigit, OfTheBarometerGroupIsNoError) {
    try_every_digit(span_af);
}
TEST_F(AnyDigit, OfTheRainGroupIsNoError) {
    try_every_digit(span_bf);
}
TEST_F(AnyDigit, OfTheWindGroupIsNoError) {
    try_every_digit(span_cf);
}

TEST_F(AnyDigit, OfALoneWindGroupIsNoError) {
    train();
    const std::vector<std::string> before = present();
    for (int place = 3; place <= 52; ++place) {
        for (int value = 0; value <= 15; ++value) {
            SCOPED_TRACE(testing::Message() << "digit " << place << " is " << value);
            Bytes bytes = write_lone_wind(station);
            set_digit(bytes, 0xCF, place, value);
            seal(bytes);
            ASSERT_NO_THROW(world.frame(bytes));
            ASSERT_NO_THROW(train());
            ASSERT_EQ(present(), before) << "the next good train brings everything back";
        }
    }
}

TEST_F(AnyDigit, OneValueInAllPlacesIsNoError) {
    train();
    const std::vector<std::string> before = present();
    for (int value = 1; value <= 15; ++value) {
        SCOPED_TRACE(value);
        for (const GroupSpan& span : train_spans) {
            Bytes bytes = write_train(station);
            // The clock's own digits stay: without a date nothing of the train is decoded.
            for (int place = span.tag == 0x8F ? 13 : 3; place <= static_cast<int>(2 * span.length) - 2; ++place)
                set_digit(bytes, span.tag, place, value);
            seal(bytes);
            ASSERT_NO_THROW(world.frame(bytes));
            ASSERT_NO_THROW(world.frame(bytes));
            ASSERT_NO_THROW(train());
            ASSERT_EQ(present(), before) << "the next good train brings everything back";
        }
    }
}

TEST_F(AnyDigit, AnExponentInANumberIsANumber) {
    // 1E2 mm per hour, and a counter of 1E99 mm.
    Bytes bytes = write_train(station);
    for (const auto& [place, value] : {std::pair{6, 1}, {3, 14}, {4, 2}, {13, 1}, {14, 14}, {11, 9}, {12, 9}})
        set_digit(bytes, 0xBF, place, value);
    seal(bytes);
    ASSERT_NO_THROW(world.frame(bytes));
    EXPECT_EQ(panel.TxtPeakRain().text, " 100 mm/hour");
}

}  // namespace
}  // namespace nimbry::test
