#include "tests/windows/screens.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "platform/text_bytes.h"
#include "tests/windows/camera.h"
#include "tests/windows/lived_day.h"
#include "tests/windows/sample_states.h"
#include "windows/about_window.h"
#include "windows/additional_window.h"
#include "windows/alarms_window.h"
#include "windows/almanac_chooser.h"
#include "windows/big_window.h"
#include "windows/comment_window.h"
#include "windows/comms_window.h"
#include "windows/help_window.h"
#include "windows/internet_window.h"
#include "windows/location_window.h"
#include "windows/marquee_window.h"
#include "windows/message_dialog.h"
#include "windows/rain_days_window.h"
#include "windows/sensor_window.h"
#include "windows/splash.h"
#include "windows/status_window.h"
#include "windows/sync_window.h"
#include "windows/text_window.h"
#include "windows/units_window.h"

namespace nimbry::test {
namespace {

/// Windows that stand beside the main one.
void take_small_windows(Camera& camera, const QString& theme) {
    const auto take = [&](QWidget& window, const char* name) {
        window.show();
        window.raise();
        QApplication::processEvents();
        camera.take(window, QStringLiteral("%1-%2").arg(QString::fromLatin1(name), theme));
    };
    auto splash = std::make_unique<windows::Splash>();
    take(*splash, "splash");
    splash.reset();
    windows::SensorWindow sensor;
    take(sensor, "sensor");
    windows::AboutWindow about("Nimbry|202|251003");
    take(about, "about");
    WeatherState state;
    state.settings.WebComment = "The rain gauge was cleaned on Sunday. <b>Frost</b> is expected from Tuesday on.";
    state.records.DaySinceRain = 3;
    state.records.LastRain = 11.5F;
    windows::CommentWindow comment(state, Comment::first, {});
    comment.present();
    take(comment, "comment");
    windows::CommentWindow comment2(state, Comment::second, {});
    comment2.present();
    take(comment2, "comment2");
    windows::RainDaysWindow rain_days(state, {});
    rain_days.present();
    take(rain_days, "rain-days");
    windows::HelpWindow help;
    take(help, "help");
    help.findChild<QLineEdit*>(QStringLiteral("txtFind"))->setText(QStringLiteral("almanac"));
    take(help, "help-search");
    windows::StatusWindow status;
    status.show_text(QStringLiteral("Receiving grafdata.dat"));
    take(status, "status");
    windows::MessageDialog question({.text = "COM Port Error,\r\nPlease check that the selected port exists\r\nClick "
                                             "Retry, or Cancel to Quit.",
                                     .choices = Choices::retry_cancel,
                                     .detail = "The device is /dev/ttyS0",
                                     .other_choice = "Choose &port ..."});
    take(question, "question");
    windows::TextWindow log;
    log.show_text(QStringLiteral("nbyprog.log"),
                  QString(52, u'*') + QStringLiteral("\n05 Oct 2026 14:00:00 (Computer time) Program started\n"
                                                     "05 Oct 2026 14:07:20 A wind sensor error occurred\n"));
    take(log, "log");
    log.show_text(QStringLiteral("FTP debug"),
                  QStringLiteral("220 ftp.example.net ready\n> USER weather\n331 Password required\n> PASS ********\n"
                                 "230 Logged in\n> EPSV\n229 Entering Extended Passive Mode (|||40123|)\n"
                                 "> STOR weather.htm\n150 Opening the data connection\n226 Transfer complete\n"));
    take(log, "ftp-debug");
    windows::SyncWindow sync;
    sync.show_text(
        QStringLiteral("Connecting to 192.168.100.120\nConnected\nReceiving grafdata.dat\n141312 bytes received\n"
                       "Receiving extremes.dat\n"));
    take(sync, "sync");
    const QTemporaryDir folder;
    for (const char* month : {"Aug26", "Sep26", "Oct26"}) {
        QFile almanac(folder.filePath(QStringLiteral("al%1.csv").arg(QString::fromLatin1(month))));
        static_cast<void>(almanac.open(QIODevice::WriteOnly));
    }
    windows::choose_almanac(&log, folder.path().toStdString(), [](const std::string&) {});
    if (auto* chooser = log.findChild<QFileDialog*>()) take(*chooser, "almanac-chooser");
}

/// The windows that show more of the same data: a plain day, the longest texts and trouble, and the large one small and
/// as large as a screen.
void take_displays(Camera& camera, const QString& theme) {
    const auto take = [&](QWidget& window, const char* name) {
        QApplication::processEvents();
        camera.take(window, QStringLiteral("%1-%2").arg(QString::fromLatin1(name), theme));
    };
    WeatherState state;
    fill_with_a_lived_day(state);
    windows::AdditionalWindow additional(state, {});
    additional.present();
    take(additional, "additional");
    // Its menu is one entry that acts.
    additional.menuBar()->setActiveAction(additional.menuBar()->actions().constFirst());
    take(additional, "additional-menu");
    additional.menuBar()->setActiveAction(nullptr);
    fill_with_long_texts(state);
    fill_additional_data_with_long_texts(state);
    additional.refresh();
    take(additional, "additional-long");
    additional.resize(additional.minimumSize());
    take(additional, "additional-smallest");
    show_no_sun(state);
    additional.refresh();
    additional.resize(1040, 620);
    take(additional, "additional-no-sun");

    fill_with_a_lived_day(state);
    turn_marquee(state);
    windows::BigWindow big(state, {});
    big.present();
    take(big, "big");
    QTest::keyClick(&big, Qt::Key_F10, Qt::ShiftModifier);
    if (auto* menu = big.findChild<QMenu*>(QStringLiteral("menu_NimbryBIG"))) {
        camera.take_with(big, *menu, QStringLiteral("big-menu-") + theme);
        menu->close();
    }
    fill_with_trouble(state);
    fill_big_display(state);
    big.refresh();
    big.resize(1280, 720);
    take(big, "big-trouble");
    fill_with_long_texts(state);
    fill_big_display(state);
    big.refresh();
    take(big, "big-long");
    big.resize(big.minimumSizeHint());
    take(big, "big-smallest");
    windows::MarqueeWindow marquee(state, [](const MarqueeDialog&) {});
    marquee.present();
    take(marquee, "marquee");
}

/// The setup windows, in usual units and with the longest texts, large and as small as they get.
void take_setup_windows(Camera& camera, const QString& theme) {
    WeatherState state;
    reset_main_panel(state);
    AlarmsDialog& alarms = state.alarms.frmAlarms;
    alarms.chkAOuTempHi = alarms.chkABarLo = alarms.chkADewCur = alarms.chkASound = true;
    alarms.AWindHi = 17;
    windows::AlarmsWindow window(state, [](const AlarmsDialog&) {});
    window.present();
    QApplication::processEvents();
    camera.take(window, QStringLiteral("alarms-") + theme);
    state.settings.fTempF = state.settings.fBarinhg = state.settings.fRainin = state.settings.AddOneHour = true;
    state.units = units_from(state.settings);
    alarms.ARainAm = 1000;
    window.refresh();
    window.resize(window.minimumSizeHint().width(), 420);
    window.findChild<QWidget*>("hsbATempHi")->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    camera.take(window, QStringLiteral("alarms-other-units-") + theme);
}

/// The communications window: as a newcomer sees it, as a server's, and locked in a client.
void take_communications(Camera& camera, const QString& theme) {
    WeatherState state;
    windows::CommsWindow::Actions actions;
    actions.serial_devices = [] { return std::vector<std::string>{"/dev/ttyS0", "/dev/ttyUSB0"}; };
    actions.opened = actions.closed = [] {};
    const auto take = [&](const char* name) {
        windows::CommsWindow window(state, actions);
        window.present();
        window.refresh();
        QApplication::processEvents();
        camera.take(window, QStringLiteral("%1-%2").arg(QString::fromLatin1(name), theme));
    };
    take("comms");
    state.settings.SerialPort1 = "/dev/serial/by-id/usb-Prolific_Technology_Inc._USB-Serial_Controller_D-if00-port0";
    state.settings.bcastnet = state.settings.fwrtlog = true;
    state.settings.iplist = {"192.168.100.120", "192.168.100.121", "255.255.255.255"};
    take("comms-server");
    state.settings.fromnet = true;
    state.setup.Form2.caption = "Temporarily Locked";
    state.setup.Form2.enabled = false;
    take("comms-client-locked");
}

/// The windows for the place and the units.
void take_place_and_units(Camera& camera, const QString& theme) {
    WeatherState state;
    state.settings.Latitude = "-33.857100";
    state.settings.Longitude = "151.214900";
    windows::LocationWindow location(state, [](const LocationDialog&) {});
    location.present();
    QApplication::processEvents();
    camera.take(location, QStringLiteral("location-") + theme);
    location.findChild<QAbstractButton*>("Check3")->click();
    QApplication::processEvents();
    camera.take(location, QStringLiteral("location-in-parts-") + theme);
    windows::UnitsWindow units(state, {.opened = [] {}, .closed = [] {}});
    units.present();
    QApplication::processEvents();
    camera.take(units, QStringLiteral("units-") + theme);
}

/// The internet dialog, tab by tab.
void take_internet(Camera& camera, const QString& theme) {
    WeatherState state;
    InternetDialog& settings = state.publish.NimbryFTPSetup;
    settings.ChkEnableFTP = settings.ChkSendMail = settings.chkWU = true;
    settings.FTPServer = "ftp.example.net";
    settings.FTPRemoteFile = "weather.htm";
    settings.FTPPass = settings.WUpass = "secret";
    settings.MailTo = "somebody@example.net; somebody.else@example.org";
    settings.MailList = {"*CHANGE*", "07:00", "19:30"};
    settings.WUuser = "KTEST1";
    windows::InternetWindow window(state, {.opened = [] {}, .closed = [] {}});
    window.present();
    auto* tabs = window.findChild<QTabWidget*>(QStringLiteral("tabs"));
    for (int n = 0; n < tabs->count(); ++n) {
        tabs->setCurrentIndex(n);
        QApplication::processEvents();
        camera.take(window, QStringLiteral("internet-%1-").arg(n + 1) + theme);
    }
}

}  // namespace

void take_beside_the_main_window(Camera& camera, const QString& theme) {
    take_small_windows(camera, theme);
    take_displays(camera, theme);
    take_setup_windows(camera, theme);
    take_place_and_units(camera, theme);
    take_communications(camera, theme);
    take_internet(camera, theme);
}

}  // namespace nimbry::test
