#include <gtest/gtest.h>

#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/displays/main_panel.h"
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

TEST(EveryWindow, HasItsNameAndTitle) {
    WeatherState state;
    reset_main_panel(state);
    CommsWindow::Actions comms;
    comms.serial_devices = [] { return std::vector<std::string>(); };
    const WindowCase cases[]{
        {"Form1", "Nimbry 2.02 - WM-918 Weather Monitoring", [&] { return new Form1(state, {}); }},
        {"frmStart", nullptr, [] { return new Splash; }},
        {"frmTip", nullptr, [] { return new BalloonTip(nullptr); }},
        {"Nimbryconv", nullptr, [] { return new ConversionTip(nullptr); }},
        {"NimbryDisplay", "Nimbry Status Message", [] { return new StatusWindow; }},
        {"NimbrySensor", "Nimbry Sensor Error Message", [] { return new SensorWindow; }},
        {"frmAbout", "Nimbry About...", [] { return new AboutWindow("Nimbry|202|251003"); }},
        {"NimbryHelp", "Nimbry Help", [] { return new HelpWindow; }},
        {"TextWindow", nullptr, [] { return new TextWindow; }},
        {"frmSync", "Nimbry Client/Server Synchronization", [] { return new windows::SyncWindow; }},
        {"NimbryAdditional", "Nimbry Additional Data", [&] { return new AdditionalWindow(state, {}); }},
        {"NimbryBIG", "Nimbry Large Text", [&] { return new BigWindow(state, {}); }},
        {"FrmMarquee", "Nimbry Marquee", [&] { return new MarqueeWindow(state, {}); }},
        {"Form2", "Nimbry Setup", [&] { return new CommsWindow(state, comms); }},
        {"frmSetupUnits", "Nimbry Units Setup", [&] { return new UnitsWindow(state, {}); }},
        {"frmAlarms", "Nimbry Alarms Setup", [&] { return new AlarmsWindow(state, {}); }},
        {"NimbryFTPSetup", "Nimbry FTP / Email Setup", [&] { return new InternetWindow(state, {}); }},
        {"NimbryLatlong", "Nimbry Location", [&] { return new LocationWindow(state, {}); }},
        {"NimbryComment", "Nimbry Comment", [&] { return new CommentWindow(state, Comment::first, {}); }},
        {"NimbryComment2", "Nimbry Comment 2", [&] { return new CommentWindow(state, Comment::second, {}); }},
        {"NimbryEditDSR", "Nimbry Edit Days Since rain", [&] { return new RainDaysWindow(state, {}); }},
    };
    for (const WindowCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<QWidget> window(c.make());
        EXPECT_EQ(window->objectName(), QString::fromLatin1(c.name));
        if (c.title != nullptr) {
            EXPECT_EQ(window->windowTitle(), QString::fromLatin1(c.title));
        }
    }
}

}  // namespace
}  // namespace nimbry::test
