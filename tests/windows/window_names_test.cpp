#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/displays/main_panel.h"
#include "tests/windows/font_scale.h"
#include "tests/windows/sample_states.h"
#include "windows/about_window.h"
#include "windows/additional_window.h"
#include "windows/alarms_window.h"
#include "windows/balloon_tip.h"
#include "windows/big_window.h"
#include "windows/comment_window.h"
#include "windows/comms_window.h"
#include "windows/conversion_tip.h"
#include "windows/form1.h"
#include "windows/help_window.h"
#include "windows/internet_window.h"
#include "windows/location_window.h"
#include "windows/marquee_window.h"
#include "windows/rain_days_window.h"
#include "windows/sensor_window.h"
#include "windows/splash.h"
#include "windows/status_window.h"
#include "windows/sync_window.h"
#include "windows/text_window.h"
#include "windows/units_window.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

struct WindowCase {
    const char* name;
    const char* title;  ///< nullptr: it has none of its own
    std::function<QWidget*()> make;
};

/// Every window of the program, on a state whose boxes are filled as far as it goes.
class EveryWindow : public testing::Test {
protected:
    EveryWindow() {
        reset_main_panel(state_);
        comms_.serial_devices = [] { return std::vector<std::string>(); };
    }

    [[nodiscard]] std::vector<WindowCase> windows() const {
        return {
            {"Form1", "Nimbry 2.02 - WM-918 Weather Monitoring", [&] { return new Form1(state_, {}); }},
            {"frmStart", nullptr, [] { return new Splash; }},
            {"frmTip", nullptr, [] { return new BalloonTip(nullptr); }},
            {"Nimbryconv", nullptr, [] { return new ConversionTip(nullptr); }},
            {"NimbryDisplay", "Nimbry Status Message", [] { return new StatusWindow; }},
            {"NimbrySensor", "Nimbry Sensor Error Message", [] { return new SensorWindow; }},
            {"frmAbout", "Nimbry About...", [] { return new AboutWindow("Nimbry|202|251003"); }},
            {"NimbryHelp", "Nimbry Help", [] { return new HelpWindow; }},
            {"TextWindow", nullptr, [] { return new TextWindow; }},
            {"frmSync", "Nimbry Client/Server Synchronization", [] { return new windows::SyncWindow; }},
            {"NimbryAdditional", "Nimbry Additional Data", [&] { return new AdditionalWindow(state_, {}); }},
            {"NimbryBIG", "Nimbry Large Text", [&] { return new BigWindow(state_, {}); }},
            {"FrmMarquee", "Nimbry Marquee", [&] { return new MarqueeWindow(state_, {}); }},
            {"Form2", "Nimbry Setup", [&] { return new CommsWindow(state_, comms_); }},
            {"frmSetupUnits", "Nimbry Units Setup", [&] { return new UnitsWindow(state_, {}); }},
            {"frmAlarms", "Nimbry Alarms Setup", [&] { return new AlarmsWindow(state_, {}); }},
            {"NimbryFTPSetup", "Nimbry FTP / Email Setup", [&] { return new InternetWindow(state_, {}); }},
            {"NimbryLatlong", "Nimbry Location", [&] { return new LocationWindow(state_, {}); }},
            {"NimbryComment", "Nimbry Comment", [&] { return new CommentWindow(state_, Comment::first, {}); }},
            {"NimbryComment2", "Nimbry Comment 2", [&] { return new CommentWindow(state_, Comment::second, {}); }},
            {"NimbryEditDSR", "Nimbry Edit Days Since rain", [&] { return new RainDaysWindow(state_, {}); }},
        };
    }

    WeatherState state_;
    CommsWindow::Actions comms_;
};

TEST_F(EveryWindow, HasItsNameAndTitle) {
    for (const WindowCase& c : windows()) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<QWidget> window(c.make());
        EXPECT_EQ(window->objectName(), QString::fromLatin1(c.name));
        if (c.title != nullptr) {
            EXPECT_EQ(window->windowTitle(), QString::fromLatin1(c.title));
        }
    }
}

// Run a second time on a screen at 150 %, which has less room (tests/windows/CMakeLists.txt).
TEST_F(EveryWindow, OpensNoLargerThanTheScreen) {
    fill_with_long_texts(state_);
    fill_additional_data_with_long_texts(state_);
    fill_big_display(state_);
    for (const double scale : {1.0, 2.0}) {
        const FontScale letters(scale);
        for (const WindowCase& c : windows()) {
            SCOPED_TRACE(testing::Message() << c.name << " with letters of " << scale);
            const std::unique_ptr<QWidget> window(c.make());
            window->show();
            QApplication::processEvents();
            // What a window needs at least it has in any case; with letters of the usual size that is never too high.
            const QSize screen = window->screen()->availableSize();
            QSize most = screen.expandedTo(window->minimumSizeHint()).expandedTo(window->minimumSize());
            if (scale == 1.0) most.setHeight(screen.height());
            EXPECT_LE(window->width(), most.width());
            EXPECT_LE(window->height(), most.height());
        }
    }
}

}  // namespace
}  // namespace nimbry::test
