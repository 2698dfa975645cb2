#include "windows/location_window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <optional>

#include "windows/world_map.h"

namespace nimbry::test {
namespace {

using windows::LocationWindow;
using windows::WorldMap;

struct LocationDialogWindow : testing::Test {
    WeatherState state;
    std::optional<LocationDialog> accepted;
    LocationWindow window{state, [this](const LocationDialog& values) { accepted = values; }};

    void open(const char* latitude, const char* longitude) {
        state.settings.Latitude = latitude;
        state.settings.Longitude = longitude;
        window.present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QLineEdit* box(const char* name) { return window.findChild<QLineEdit*>(QString::fromLatin1(name)); }
    QCheckBox* check(const char* name) { return window.findChild<QCheckBox*>(QString::fromLatin1(name)); }
    void type(const char* name, const QString& text) {
        box(name)->selectAll();
        QTest::keyClicks(box(name), text);
    }
    QString refusal() { return window.findChild<QLabel*>(QStringLiteral("lblRefusal"))->text(); }
    const std::optional<Location>& marked() { return window.findChild<WorldMap*>()->marked(); }
    void accept() { window.findChild<QPushButton*>(QStringLiteral("Command1"))->click(); }
};

TEST_F(LocationDialogWindow, OpensWithThePlaceInForceAndMarksIt) {
    open("-33.857100", "151.214900");
    EXPECT_TRUE(check("Check3")->isChecked());
    EXPECT_EQ(box("Text7")->text(), "33.8571");
    EXPECT_EQ(box("Text8")->text(), "151.2149");
    EXPECT_TRUE(check("Check1")->isChecked());
    EXPECT_TRUE(check("Check2")->isChecked());
    EXPECT_FALSE(box("Text3")->isVisible()) << "decimal degrees have no minutes";
    EXPECT_FALSE(window.findChild<QLabel*>(QStringLiteral("lblText3"))->isVisible());
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("lblText7"))->text(), QString(QChar(0xB0)));
    ASSERT_TRUE(marked());
    EXPECT_EQ(marked()->latitude, -33.8571);
    EXPECT_EQ(marked()->longitude, 151.2149);
}

TEST_F(LocationDialogWindow, TheOtherWayOfInputShowsTheSamePlaceWithItsHints) {
    open("-33.857100", "151.214900");
    EXPECT_EQ(box("Text7")->toolTip(), "Enter your latitude in degrees and decimal degrees (DD.ddddd)");
    check("Check3")->click();
    EXPECT_TRUE(box("Text4")->isVisible());
    EXPECT_EQ(box("Text7")->text(), "33");
    EXPECT_EQ(box("Text3")->text(), "51");
    EXPECT_EQ(box("Text4")->text(), "25.56");
    EXPECT_EQ(box("Text8")->text(), "151");
    EXPECT_EQ(box("Text5")->text(), "12");
    EXPECT_EQ(box("Text6")->text(), "53.64");
    EXPECT_EQ(box("Text7")->toolTip(), "Enter the degrees part of your latitude (0 to 90)");
    EXPECT_EQ(box("Text6")->accessibleName(), "Enter the seconds part of your longitude (0 to 60)");
    ASSERT_TRUE(marked());
    EXPECT_NEAR(marked()->latitude, -33.8571, 1e-6);
}

TEST_F(LocationDialogWindow, TheMarkerFollowsWhatIsTyped) {
    open("999", "999");
    type("Text7", "10");
    EXPECT_EQ(marked()->latitude, 10);
    check("Check1")->click();
    EXPECT_EQ(marked()->latitude, -10);
    type("Text8", "abc");
    EXPECT_FALSE(marked());
}

TEST_F(LocationDialogWindow, AnAcceptedPlaceIsHandedOverAndTheWindowCloses) {
    open("999", "999");
    type("Text7", "51.5");
    type("Text8", "0.25");
    check("Check2")->click();
    accept();
    ASSERT_TRUE(accepted);
    EXPECT_EQ(accepted->Text7, "51.5");
    EXPECT_EQ(accepted->Text8, "0.25");
    EXPECT_FALSE(accepted->Check2);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(LocationDialogWindow, WhatCannotBeTakenIsToldAtItsBoxAndTheWindowStays) {
    open("1", "2");
    type("Text8", "181");
    accept();
    EXPECT_FALSE(accepted);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(refusal(), "Input needs to be between 0 and 180.");
    EXPECT_TRUE(box("Text8")->hasFocus());
    type("Text8", "180");
    EXPECT_EQ(refusal(), "") << "as soon as somebody goes on typing";
}

TEST_F(LocationDialogWindow, EscapeDropsWhatWasTyped) {
    open("1.000000", "2.000000");
    type("Text7", "50");
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(accepted);
    open("1.000000", "2.000000");
    EXPECT_EQ(box("Text7")->text(), "1");
}

TEST(WorldMap, PutsAPlaceWhereItLies) {
    WorldMap map;
    map.resize(400, 180);
    EXPECT_EQ(map.map_area(), QRectF(20, 0, 360, 180)) << "two to one, in the middle";
    EXPECT_EQ(map.point_of({0, 0}), QPointF(200, 90));
    EXPECT_EQ(map.point_of({90, -180}), QPointF(20, 0));
    EXPECT_EQ(map.point_of({-45, 90}), QPointF(290, 135));
    map.mark(Location{91, 0});
    EXPECT_FALSE(map.marked()) << "beyond the pole";
}

}  // namespace
}  // namespace nimbry::test
