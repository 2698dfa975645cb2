#include "windows/form1.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "tests/windows/comes_about.h"
#include "tests/windows/form1_widgets.h"
#include "tests/windows/sample_states.h"
#include "tests/world/stream_player.h"
#include "tests/world/world.h"
#include "windows/caption_label.h"
#include "windows/card_group.h"
#include "windows/gust_bar.h"
#include "windows/lamp.h"
#include "windows/picture_box.h"
#include "windows/status_pill.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

using windows::Form1;
using windows::PictureBox;
using windows::StatusPill;
using windows::ValueBox;

/// The boxes of the main window, each once and under the name that its widget bears.
std::vector<NamedConstBox> boxes_of_main_window(const WeatherState& state) {
    std::vector<NamedConstBox> boxes;
    for (const NamedConstBox& entry : named_boxes(state)) {
        if (entry.name == "txtWetBulb") break;  // the first of the additional window
        if (entry.name != "TxtPeakRain") boxes.push_back(entry);
    }
    return boxes;
}

void expect_shown(const Form1& form, const NamedConstBox& entry) {
    const QString text = platform::unicode(entry.box->text);
    switch (entry.kind) {
        case BoxKind::reading: {
            const auto* box = widget<ValueBox>(form, entry.name);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), text);
            EXPECT_EQ(box->toolTip(), windows::full_tip(*entry.box));
            EXPECT_EQ(box->accessibleDescription(), windows::full_tip(*entry.box));
            EXPECT_NE(box->accessibleName(), QString());
            EXPECT_EQ(box->shown().fore, entry.box->fore);
            EXPECT_EQ(box->shown().back, entry.box->back);
            EXPECT_EQ(box->isHidden(), !entry.box->visible);
            return;
        }
        case BoxKind::label: {
            const auto* label = widget<QLabel>(form, entry.name);
            ASSERT_NE(label, nullptr);
            EXPECT_EQ(label->text(), text);
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            EXPECT_EQ(label->toolTip(), windows::full_tip(*entry.box));
            EXPECT_EQ(label->isHidden(), !entry.box->visible);
            EXPECT_EQ(label->buddy(), nullptr) << "an & in its text stands for itself";
            if (const auto* pill = widget<StatusPill>(form, entry.name)) {
                EXPECT_EQ(pill->shown().fore, entry.box->fore);
            }
            return;
        }
        case BoxKind::picture: {
            const auto* picture = widget<QWidget>(form, entry.name);
            ASSERT_NE(picture, nullptr);
            EXPECT_EQ(picture->isHidden(), !entry.box->visible);
            return;
        }
        case BoxKind::button: {
            const auto* button = widget<QAbstractButton>(form, entry.name);
            ASSERT_NE(button, nullptr);
            EXPECT_EQ(button->text(), text);
            return;
        }
        case BoxKind::menu_entry: {
            const auto* action = widget<QAction>(form, entry.name);
            ASSERT_NE(action, nullptr);
            EXPECT_EQ(action->text(), text);
            return;
        }
    }
}

void expect_all_shown(const Form1& form, const WeatherState& state) {
    for (const NamedConstBox& entry : boxes_of_main_window(state)) {
        SCOPED_TRACE(std::string(entry.name));
        expect_shown(form, entry);
    }
}

TEST(Form1, ShowsEveryBoxOfTheModelUnderItsName) {
    WeatherState state;
    fill_with_a_plain_day(state);
    const Form1 form(state, {});
    expect_all_shown(form, state);
}

TEST(Form1, FollowsATrainFromTheStation) {
    World world;
    world.start();
    Form1 form(world.state(), {});
    const QString before = widget<ValueBox>(form, "Text2(0)")->text();
    world.send_trains(3);
    EXPECT_NE(world.panel().Text2[0].text, "");
    EXPECT_GT(form.refresh(), 0);
    EXPECT_NE(widget<ValueBox>(form, "Text2(0)")->text(), before);
    expect_all_shown(form, world.state());
    EXPECT_EQ(form.refresh(), 0) << "nothing has changed since";
}

/// The bytes of a file; none of one that is not there.
std::string contents(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::filesystem::path> streams() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(NIMBRY_STREAMS))
        if (entry.path().extension() == ".stream") paths.push_back(entry.path());
    return paths;
}

/// What a stream's answer says of the boxes is what the window shows: after every event, and not only at the end.
TEST(Form1, FollowsEveryRecordedStream) {
    using namespace std::chrono_literals;
    const std::vector<std::filesystem::path> all = streams();
    ASSERT_FALSE(all.empty());
    for (const std::filesystem::path& path : all) {
        SCOPED_TRACE(path.stem().string());
        const StreamReading reading = read_stream(contents(path));
        ASSERT_TRUE(reading.stream) << reading.error;
        World world(reading.stream->clock - 2s);
        std::filesystem::path settings = path;
        settings.replace_extension(".ini");
        world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n" + contents(settings));
        world.start();
        Form1 form(world.state(), {});
        play(world, *reading.stream, [&] {
            if (form.refresh() > 0) expect_all_shown(form, world.state());
        });
        EXPECT_NE(world.panel().TxtTime.text, "") << "each has a train";
    }
}

TEST(Form1, FollowsTroubleAndItsEnd) {
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    fill_with_trouble(state);
    form.refresh();
    expect_all_shown(form, state);
    EXPECT_EQ(widget<ValueBox>(form, "Text2(0)")->looks().mark, windows::BoxMark::fault) << "its text reads Error";
    EXPECT_EQ(widget<ValueBox>(form, "Text2(6)")->looks().mark, windows::BoxMark::alarm);
    fill_with_a_plain_day(state);
    form.refresh();
    expect_all_shown(form, state);
    EXPECT_EQ(widget<ValueBox>(form, "Text2(0)")->looks().mark, windows::BoxMark::none);
}

TEST(FullTip, IsTheTipAndBelowItTheBalloon) {
    Box box;
    EXPECT_EQ(windows::full_tip(box), QString());
    box.tip = "The current outdoor temperature";
    EXPECT_EQ(windows::full_tip(box), "The current outdoor temperature");
    box.balloon = "Temperature -0 \260C";
    EXPECT_EQ(windows::full_tip(box), QStringLiteral("The current outdoor temperature\nTemperature -0 \u00B0C"));
    box.tip.clear();
    EXPECT_EQ(windows::full_tip(box), QStringLiteral("Temperature -0 \u00B0C"));
}

TEST(Form1, PaintsExactModelColoursWhenAsked) {
    WeatherState state;
    fill_with_trouble(state);
    state.panel.Text2[3].fore = colours::red;
    Form1 form(state, {});
    form.use_colours(windows::ColourTable::as_printed);
    EXPECT_EQ(widget<ValueBox>(form, "Text2(0)")->looks().back, QColor(128, 255, 128));
    EXPECT_EQ(widget<ValueBox>(form, "Text2(4)")->looks().back, QColor(255, 192, 192));
    EXPECT_EQ(widget<ValueBox>(form, "Text2(3)")->looks().text, QColor(255, 0, 0));
    EXPECT_EQ(widget<StatusPill>(form, "lblStatus")->text_colour(), QColor(0, 0, 255));
}

TEST(Form1, ShowsOneOfSixWeatherPictures) {
    WeatherState state;
    reset_main_panel(state);
    Form1 form(state, {});
    const auto shown = [&form] {
        std::string names;
        for (const PictureBox* picture : form.findChildren<PictureBox*>()) {
            if (!picture->isHidden()) names += picture->objectName().toStdString() + " ";
        }
        return names;
    };
    EXPECT_EQ(shown(), "") << "none before the first outlook";
    state.panel.PicSnow.visible = true;
    form.refresh();
    EXPECT_EQ(shown(), "PicSnow ");
}

TEST(Form1, PutsTheGaugeAtItsValue) {
    WeatherState state;
    fill_with_trouble(state);
    Form1 form(state, {});
    const auto* gauge = form.findChild<windows::GustBar*>("Gauge1");
    ASSERT_NE(gauge, nullptr);
    EXPECT_EQ(gauge->value(), 97.2);
    EXPECT_EQ(gauge->maximum(), 98);
}

TEST(Form1, TellsTheLampInWords) {
    WeatherState state;
    reset_main_panel(state);
    Form1 form(state, {});
    const auto* lamp = form.findChild<windows::Lamp*>("Picture2_2");
    ASSERT_NE(lamp, nullptr);
    EXPECT_FALSE(lamp->is_lit());
    EXPECT_EQ(lamp->accessibleDescription(), "idle");
    EXPECT_EQ(lamp->toolTip(), "Indicates data is being received");
    state.panel.Lamp.fore = 255;
    form.refresh();
    EXPECT_TRUE(lamp->is_lit());
    EXPECT_EQ(lamp->accessibleDescription(), "receiving");
}

TEST(Form1, NamesEachExtremeWithItsColumn) {
    WeatherState state;
    reset_main_panel(state);
    const Form1 form(state, {});
    EXPECT_EQ(widget<ValueBox>(form, "TxtYTempMax")->accessibleName(), "Yesterday, Maximum Temperature");
    EXPECT_EQ(widget<ValueBox>(form, "TxtBarMin")->accessibleName(), "Today, Barometer Minimum");
    EXPECT_EQ(widget<ValueBox>(form, "TxtWindHiG")->accessibleName(),
              "Since the last station reset, Maximum Wind Speed");
    EXPECT_EQ(widget<ValueBox>(form, "Text2(2)")->accessibleName(), "Outdoor Humidity");
}

struct CaptionCase {
    const char* caption;
    int times;
};

TEST(Form1, HasItsGroupsAndItsCaptions) {
    const CaptionCase captions[]{{"Forecast", 1},
                                 {"Outdoor Temp.", 1},
                                 {"Outdoor Humidity", 1},
                                 {"Dew Point", 1},
                                 {"Wind Chill", 1},
                                 {"Heat Index", 1},
                                 {"Wind Speed Gust", 1},
                                 {"Wind Speed Avg.", 1},
                                 {"Wind Direction", 1},
                                 {"Maximum wind gust in the last hour", 1},
                                 {"Peak Rain Rate", 1},
                                 {"Rainfall in the last hour", 1},
                                 {"Total Rainfall", 1},
                                 {"Barometer", 2},  // the reading's, and its graph's
                                 {"Barometer Trend", 1},
                                 {"Indoor Temp.", 1},
                                 {"Indoor Humidity", 1},
                                 {"Since the last station reset", 1},
                                 {"Maximum Temperature", 1},
                                 {"Minimum Temperature", 1},
                                 {"Maximum Humidity", 1},
                                 {"Minimum Humidity", 1},
                                 {"Maximum Wind Speed", 1},
                                 {"Max. Peak Rain Rate", 1},
                                 {"Barometer Maximum", 1},
                                 {"Barometer Minimum", 1},
                                 {"Since 9:00 am", 2},  // the rain's, and the column's
                                 {"24 Hours prior to 9:00 am", 2},
                                 {"Humidity", 1},
                                 {"Wind", 1},
                                 {"Rainfall", 1},
                                 {"Direction", 1}};
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    form.show();
    QApplication::processEvents();
    int listed = 0, shown = 0;
    for (const CaptionCase& c : captions) {
        int found = 0;
        for (const auto* label : form.findChildren<windows::CaptionLabel*>())
            found += label->isVisible() && label->text() == QString::fromLatin1(c.caption) ? 1 : 0;
        EXPECT_EQ(found, c.times) << c.caption;
        listed += c.times;
    }
    for (const auto* label : form.findChildren<windows::CaptionLabel*>()) shown += label->isVisible() ? 1 : 0;
    EXPECT_EQ(shown, listed + 1) << "the scale of the gust bar is the only other";

    std::multiset<std::string> groups;
    for (const auto* group : form.findChildren<windows::CardGroup*>())
        groups.insert(group->accessibleName().toStdString());
    EXPECT_EQ(groups, (std::multiset<std::string>{"Outdoor", "Wind", "Rainfall", "Barometer and indoor",
                                                  "Extreme Conditions", "Graphs"}));
}

TEST(Form1, PaintsSeveralChangesInOneFrame) {
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    form.show();
    QApplication::processEvents();
    auto* box = widget<ValueBox>(form, "Text2(0)");
    state.panel.Text2[0].text = "+1 \260C";
    form.state_changed();
    EXPECT_EQ(box->text(), QStringLiteral("+12.6 \u00B0C")) << "not from inside the event";
    state.panel.Text2[0].text = "+2 \260C";
    form.state_changed();
    EXPECT_TRUE(comes_about([&] { return box->text() == QStringLiteral("+2 \u00B0C"); }));
    EXPECT_EQ(form.refresh(), 0);
}

}  // namespace
}  // namespace nimbry::test
