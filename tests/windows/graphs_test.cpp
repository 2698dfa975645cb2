#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPainter>
#include <QSplitter>
#include <QTest>
#include <QToolTip>
#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "engine/derived/dates.h"
#include "engine/graphs/graph_view.h"
#include "tests/windows/sample_states.h"
#include "tests/windows/screens.h"
#include "tests/world/front_day.h"
#include "windows/form1.h"
#include "windows/graph_pane.h"
#include "windows/graphs_group.h"
#include "windows/palette_colours.h"

namespace nimbry::test {
namespace {

using windows::Form1;
using windows::GraphPane;

/// A window whose graphs do what the engine does with each wish, at once.
class Graphs : public testing::Test {
protected:
    Graphs() {
        fill_with_a_plain_day(state);
        Form1::Actions actions;
        actions.graphs.click = [this](int pane) {
            note("click " + std::to_string(pane), [&] { click_graph(state, pane); });
        };
        actions.graphs.move = [this](double x) { note("move", [&] { move_over_graph(state, x); }); };
        actions.graphs.read = [this](int row) {
            note("read " + std::to_string(row), [&] { read_graph_row(state, row); });
        };
        actions.graphs.leave = [this] { note("leave", [&] { leave_graph(state); }); };
        actions.graphs.redraw = [this] { note("redraw", [&] { drawgraph(state); }); };
        form = std::make_unique<Form1>(state, actions);
        form->resize(1180, 800);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        form->refresh();
        wishes.clear();
    }

    template <class Work>
    void note(const std::string& wish, Work work) {
        wishes.push_back(wish);
        work();
        if (form) form->refresh();
    }
    GraphPane* pane(int n) { return form->findChild<GraphPane*>(QStringLiteral("gPicture1_%1").arg(n)); }
    QLabel* label(const char* name) { return form->findChild<QLabel*>(QString::fromLatin1(name)); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }

    /// How many pixels of a picture have nearly this colour.
    static int pixels(const QImage& picture, const QColor& colour) {
        int found = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor at = picture.pixelColor(x, y);
                found += std::abs(at.red() - colour.red()) < 30 && std::abs(at.green() - colour.green()) < 30 &&
                                 std::abs(at.blue() - colour.blue()) < 30
                             ? 1
                             : 0;
            }
        }
        return found;
    }

    WeatherState state;
    std::vector<std::string> wishes;
    std::unique_ptr<Form1> form;
};

TEST_F(Graphs, StandInSixPanesOfTheModel) {
    for (int n = 0; n < 6; ++n) {
        SCOPED_TRACE(n);
        ASSERT_NE(pane(n), nullptr);
        EXPECT_TRUE(pane(n)->isVisible());
        EXPECT_EQ(pane(n)->drawing().kind, static_cast<GraphKind>(n));
        EXPECT_EQ(pane(n)->drawing().main, n == 0);
        EXPECT_EQ(pane(n)->toolTip(),
                  n == 0 ? "Main display graph  -  values are updated every minute" : "Click to display full size");
    }
    EXPECT_EQ(label("gLabel12")->text(), QStringLiteral("Temperature \u00B0C"));
    EXPECT_EQ(label("gLabel13")->text(), "Outdoor");
    EXPECT_EQ(label("gLabel14")->text(), "Dew Point");
    EXPECT_EQ(label("gLabel15")->text(), "Indoor");
}

TEST_F(Graphs, LieAtTheRightOfTheExtremes) {
    const auto* row = form->findChild<QSplitter*>("lower_row");
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->orientation(), Qt::Horizontal);
    form->resize(1800, 1000);
    QApplication::processEvents();
    const double share = static_cast<double>(row->sizes()[1]) / (row->sizes()[0] + row->sizes()[1]);
    EXPECT_NEAR(share, 0.45, 0.03);
    EXPECT_TRUE(row->widget(1)->isAncestorOf(pane(0)));
}

TEST_F(Graphs, HaveRoomAtTheSmallestSize) {
    form->resize(980, 660);
    QApplication::processEvents();
    EXPECT_GE(pane(0)->width(), 440);
    EXPECT_GE(pane(0)->height(), 180);
    for (int n = 1; n < 6; ++n) {
        EXPECT_GE(pane(n)->width(), 84) << n;
        EXPECT_GE(pane(n)->height(), 44) << n;
    }
}

TEST_F(Graphs, AClickOnAPaneOrTheTitleIsTheModels) {
    QTest::mouseClick(pane(3), Qt::LeftButton);
    QTest::mouseClick(pane(0), Qt::LeftButton);
    QTest::mouseClick(label("gLabel12"), Qt::LeftButton);
    std::vector<std::string> clicks;
    for (const std::string& wish : wishes)
        if (wish.starts_with("click")) clicks.push_back(wish);
    EXPECT_EQ(clicks, (std::vector<std::string>{"click 3", "click 0", "click 0"}));
    EXPECT_EQ(label("gLabel12")->text(), QStringLiteral("Wind Direction \u00B0"));
    EXPECT_EQ(pane(0)->drawing().kind, GraphKind::direction);
    EXPECT_TRUE(label("gLabel13")->isHidden()) << "a single series has no legend";
}

TEST_F(Graphs, TheRightButtonAndAReleaseElsewhereAreNoClicks) {
    QTest::mouseClick(pane(2), Qt::RightButton);
    QTest::mousePress(pane(2), Qt::LeftButton);
    QTest::mouseRelease(pane(2), Qt::LeftButton, {}, QPoint(-50, -50));
    for (const std::string& wish : wishes) EXPECT_FALSE(wish.starts_with("click")) << wish;
}

TEST_F(Graphs, ThePointerReadsOffWhatIsUnderIt) {
    const GraphLayout layout = pane(0)->graph_layout();
    const double x = layout.x(row_x(main_plot, 700, 1440));
    QTest::mouseMove(pane(0), QPoint(qRound(x), pane(0)->height() / 2));
    ASSERT_TRUE(state.graphs.marker);
    EXPECT_NEAR(state.graphs.marker->row, 700, 3);
    EXPECT_TRUE(pane(0)->toolTip().startsWith("Outdoor ")) << pane(0)->toolTip().toStdString();
    EXPECT_EQ(pane(0)->accessibleDescription(), pane(0)->toolTip());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(pane(0), &leave);
    EXPECT_EQ(pane(0)->toolTip(), "Main display graph  -  values are updated every minute");
}

TEST_F(Graphs, TheMarkerIsPaintedWithItsText) {
    const QImage before = pane(0)->grab().toImage();
    read_graph_row(state, 400);
    form->refresh();
    const QImage after = pane(0)->grab().toImage();
    EXPECT_NE(before, after);
    const int x = qRound(pane(0)->graph_layout().x(state.graphs.marker->x) * after.devicePixelRatio());
    EXPECT_GT(pixels(after.copy(x - 1, 0, 3, after.height()), Qt::white),
              pixels(before.copy(x - 1, 0, 3, before.height()), Qt::white) + 20);
    read_graph_row(state, 900);
    form->refresh();
    EXPECT_NE(pane(0)->grab().toImage(), after) << "it moves";
    leave_graph(state);
    form->refresh();
    EXPECT_EQ(pane(0)->grab().toImage(), before) << "and goes";
}

struct KeyCase {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* wish;
};

TEST_F(Graphs, AreReadAndTurnedByKeyboard) {
    const KeyCase cases[]{
        {Qt::Key_Left, Qt::NoModifier, "read 1440"},
        {Qt::Key_Left, Qt::NoModifier, "read 1439"},
        {Qt::Key_Right, Qt::NoModifier, "read 1440"},
        {Qt::Key_Home, Qt::NoModifier, "read 1"},
        {Qt::Key_Right, Qt::NoModifier, "read 2"},
        {Qt::Key_End, Qt::NoModifier, "read 1440"},
        {Qt::Key_Escape, Qt::NoModifier, "leave"},
        {Qt::Key_Right, Qt::NoModifier, "read 1440"},
        {Qt::Key_Return, Qt::NoModifier, "click 0"},
        {Qt::Key_Enter, Qt::KeypadModifier, "click 0"},
        {Qt::Key_PageDown, Qt::ControlModifier, "click 0"},
        {Qt::Key_1, Qt::NoModifier, "click 1"},
        {Qt::Key_2, Qt::NoModifier, "click 2"},
        {Qt::Key_3, Qt::NoModifier, "click 3"},
        {Qt::Key_4, Qt::NoModifier, "click 4"},
        {Qt::Key_5, Qt::NoModifier, "click 5"},
    };
    pane(0)->setFocus(Qt::TabFocusReason);
    for (const KeyCase& c : cases) {
        SCOPED_TRACE(c.wish);
        wishes.clear();
        press(c.key, c.modifiers);
        ASSERT_EQ(wishes.size(), 1U);
        EXPECT_EQ(wishes[0], c.wish);
        EXPECT_EQ(QApplication::focusWidget(), pane(0));
    }
}

TEST_F(Graphs, CtrlCCopiesTheReading) {
    pane(0)->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Home);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), pane(0)->toolTip());
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith("at 05 Oct 2026 00:00:33"));
}

TEST_F(Graphs, TheReadingEndsWithTheFocus) {
    pane(0)->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Home);
    press(Qt::Key_F6);
    EXPECT_FALSE(state.graphs.marker);
}

TEST_F(Graphs, AreDrawnAnewForAnotherSizeAndOtherColours) {
    form->resize(form->size() + QSize(60, 40));
    QApplication::processEvents();
    EXPECT_NE(std::find(wishes.begin(), wishes.end(), "redraw"), wishes.end());
    wishes.clear();
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(dark_palette());
    QApplication::processEvents();
    EXPECT_NE(std::find(wishes.begin(), wishes.end(), "redraw"), wishes.end());
    QApplication::setPalette(usual);
    QApplication::processEvents();
}

TEST_F(Graphs, AreDarkInBothThemes) {
    const QPalette usual = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? dark_palette() : usual);
        QApplication::processEvents();
        for (int n = 0; n < 6; ++n) {
            const QImage picture = pane(n)->grab().toImage();
            EXPECT_EQ(picture.pixelColor(picture.width() / 2, 4), windows::exact_colour(graph_ground)) << n;
        }
    }
    QApplication::setPalette(usual);
    QApplication::processEvents();
}

TEST_F(Graphs, AxesAreGreenAndEachSeriesHasItsColour) {
    const QImage picture = pane(0)->grab().toImage();
    EXPECT_GT(pixels(picture, QColor(0, 255, 0)), 300) << "axes";
    EXPECT_GT(pixels(picture, QColor(0, 255, 255)), 50) << "outdoor";
    EXPECT_GT(pixels(picture, QColor(255, 165, 0)), 50) << "dew point";
    EXPECT_GT(pixels(picture, QColor(255, 255, 0)), 50) << "indoor";
}

TEST_F(Graphs, SeriesDifferInDash) {
    EXPECT_EQ(windows::graph_pen(GraphPen::first).style(), Qt::SolidLine);
    EXPECT_EQ(windows::graph_pen(GraphPen::second).dashPattern(), (QList<qreal>{5, 2.5}));
    EXPECT_EQ(windows::graph_pen(GraphPen::indoor).dashPattern(), (QList<qreal>{1, 2}));
    EXPECT_EQ(windows::graph_pen(GraphPen::first).widthF(), 1.5);
}

TEST_F(Graphs, ADashGoesOnThroughAWholeSeries) {
    // A level dew point of the greatest value, so at the top of the axis: 5 parts of line and 2.5 of gap, so two thirds
    // of it are painted.
    for (int r = 1; r <= pmm1; ++r) state.graphs.rows.row(r).set_gdata(series::dew_point, 60);
    drawgraph(state);
    form->refresh();
    const QImage picture = pane(0)->grab().toImage();
    const qreal ratio = picture.devicePixelRatio();
    const GraphLayout layout = pane(0)->graph_layout();
    const int y = qRound(layout.y(double{main_plot.top}) * ratio) - 1;
    const int from = qRound(layout.x(double{main_plot.left}) * ratio) + 4,
              to = qRound(layout.x(double{main_plot.right}) * ratio) - 4;
    int longest = 0, run = 0, changes = 0, painted = 0;
    bool before = false;
    for (int x = from; x < to; ++x) {
        bool on = false;
        for (int dy = 0; dy < 3; ++dy) {
            const QColor at = picture.pixelColor(x, y + dy);
            on = on || (at.red() > 120 && at.blue() < 80);
        }
        changes += on != before ? 1 : 0;
        run = on == before ? run + 1 : 1;
        longest = std::max(longest, run);
        painted += on ? 1 : 0;
        before = on;
    }
    EXPECT_LE(longest, 10 * ratio) << "no two dashes and no two gaps run together";
    EXPECT_NEAR(changes, 2 * (to - from) / (11.25 * ratio), 6);
    EXPECT_NEAR(painted, (to - from) * 2.0 / 3, (to - from) / 8.0);
}

TEST_F(Graphs, AreDrawnForTheScreensOwnPixels) {
    const QSize size = pane(0)->size();
    QImage plain(size, QImage::Format_ARGB32), sharp(size * 2, QImage::Format_ARGB32);
    sharp.setDevicePixelRatio(2);
    for (QImage* picture : {&plain, &sharp}) {
        picture->fill(Qt::transparent);
        pane(0)->render(picture);
    }
    sharp.setDevicePixelRatio(1);
    EXPECT_NE(plain.scaled(size * 2), sharp) << "not a small picture made larger";
    EXPECT_GT(pixels(sharp, QColor(0, 255, 255)), pixels(plain, QColor(0, 255, 255)));
}

class Font {
public:
    explicit Font(double factor) : usual_(QApplication::font()) {
        QFont larger = usual_;
        larger.setPointSizeF(usual_.pointSizeF() * factor);
        QApplication::setFont(larger);
    }
    ~Font() { QApplication::setFont(usual_); }
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

private:
    QFont usual_;
};

TEST(GraphPane, NoTwoLabelsTouchWhateverTheFontAndSize) {
    for (const double factor : {1.0, 1.5, 2.0}) {
        const Font font(factor);
        WeatherState state;
        fill_with_a_plain_day(state);
        for (int n = 0; n < graph_count; ++n) {
            const windows::GraphActions actions{};
            GraphPane pane(0, state.graphs, actions);
            for (const QSize size : {QSize(440, 160), QSize(520, 240), QSize(1400, 800)}) {
                pane.resize(size);
                std::vector<QRectF> places;
                const double high = QFontMetricsF(QApplication::font()).height() * 0.9;
                const GraphLayout layout = pane.graph_layout();
                ASSERT_GE(layout.labels().size(), 4U);
                for (const PlacedLabel& label : layout.labels()) {
                    const QRectF place(label.left, label.middle - high / 2 + 1, label.width, high - 2);
                    EXPECT_TRUE(QRectF(QPointF(0, 0), size).contains(place)) << label.text;
                    for (const QRectF& other : places)
                        EXPECT_FALSE(place.intersects(other)) << label.text << n << factor;
                    places.push_back(place);
                }
            }
            click_graph(state, 1);
        }
    }
}

TEST_F(Graphs, SwitchedOffGiveWayToAWord) {
    state.menu.mnuDisableGraphs.checked = true;
    show_graph_labels(state);
    form->refresh();
    for (int n = 0; n < 6; ++n) EXPECT_FALSE(pane(n)->isVisible()) << n;
    EXPECT_FALSE(label("gLabel12")->isVisible());
    EXPECT_TRUE(label("lblGraphsOff")->isVisible());
    state.menu.mnuDisableGraphs.checked = false;
    show_graph_labels(state);
    form->refresh();
    EXPECT_TRUE(pane(5)->isVisible());
    EXPECT_FALSE(label("lblGraphsOff")->isVisible());
}

TEST_F(Graphs, TellAScreenReaderWhichTheyAre) {
    EXPECT_EQ(pane(0)->accessibleName(), "Temperature");
    EXPECT_EQ(pane(5)->accessibleName(), "Wind Direction");
    EXPECT_EQ(pane(5)->accessibleDescription(), "Click to display full size");
}

TEST_F(Graphs, AreReachedWithTheOtherAreas) {
    form->findChild<QWidget*>("TxtTempMax")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), pane(0));
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "fmb_0");
}

}  // namespace
}  // namespace nimbry::test
