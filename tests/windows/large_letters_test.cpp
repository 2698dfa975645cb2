#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "tests/windows/font_scale.h"
#include "tests/windows/room_for_words.h"
#include "tests/windows/sample_states.h"
#include "windows/about_window.h"
#include "windows/big_window.h"
#include "windows/comment_window.h"
#include "windows/marquee_window.h"
#include "windows/rain_days_window.h"
#include "windows/sensor_window.h"
#include "windows/splash.h"
#include "windows/status_window.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

struct WindowCase {
    const char* window;
    std::function<std::unique_ptr<QWidget>(const WeatherState&)> make;
};

const WindowCase window_cases[]{
    {"NimbryBIG", [](const WeatherState& state) { return std::make_unique<BigWindow>(state, BigWindow::Actions{}); }},
    {"FrmMarquee",
     [](const WeatherState& state) { return std::make_unique<MarqueeWindow>(state, [](const MarqueeDialog&) {}); }},
    {"frmAbout", [](const WeatherState&) { return std::make_unique<AboutWindow>("Nimbry|202|251003"); }},
    {"NimbrySensor", [](const WeatherState&) { return std::make_unique<SensorWindow>(); }},
    {"frmStart", [](const WeatherState&) { return std::make_unique<Splash>(); }},
    {"NimbryComment",
     [](const WeatherState& state) {
         return std::make_unique<CommentWindow>(state, Comment::first, [](const CommentDialog&) {});
     }},
    {"NimbryEditDSR",
     [](const WeatherState& state) { return std::make_unique<RainDaysWindow>(state, [](const RainDaysDialog&) {}); }},
};

// A window that is shown at its own size has room for what it says, however large the letters are.
TEST(LargeLetters, AreNotCutInTheSmallWindows) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const FontScale letters(scale);
        WeatherState state;
        fill_with_long_texts(state);
        fill_big_display(state);
        for (const WindowCase& c : window_cases) {
            SCOPED_TRACE(testing::Message() << c.window << " at " << scale);
            const std::unique_ptr<QWidget> window = c.make(state);
            EXPECT_EQ(window->objectName(), c.window);
            window->show();
            QApplication::processEvents();
            expect_room_for_words(*window);
            for (const auto* box : window->findChildren<ValueBox*>())
                EXPECT_LE(box->text_width(), box->room_for_text() + 0.5) << box->objectName().toStdString();
        }
    }
}

}  // namespace
}  // namespace nimbry::test
