#include "tests/windows/screens.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QTabWidget>
#include <QTest>

#include "engine/graphs/graph_view.h"
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
#include "windows/message_dialog.h"
#include "windows/rain_days_window.h"
#include "windows/sensor_window.h"
#include "windows/splash.h"
#include "windows/status_window.h"
#include "windows/text_window.h"
#include "windows/units_window.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

struct Scene {
    const char* name;
    void (*fill)(WeatherState&);
};

constexpr Scene scenes[]{{"start",
                          [](WeatherState& state) {
                              reset_main_panel(state);
                              set_changeover_captions(state.panel, state.settings);
                          }},
                         {"day", fill_with_a_plain_day},
                         {"long", fill_with_long_texts},
                         {"trouble", fill_with_trouble}};

class Camera {
public:
    explicit Camera(const QString& folder) : folder_(folder) { QDir().mkpath(folder); }

    void take(QWidget& widget, const QString& name) { keep(widget.grab(), name); }
    void keep(const QPixmap& pixmap, const QString& name) {
        const int scale = qRound(qApp->devicePixelRatio() * 100);
        if (pixmap.save(QStringLiteral("%1/%2-%3.png").arg(folder_, name).arg(scale))) ++taken_;
    }
    [[nodiscard]] int taken() const { return taken_; }

private:
    QString folder_;
    int taken_ = 0;
};

windows::Form1::Actions some_actions() {
    windows::Form1::Actions actions;
    for (const char* name : {"mnuExit1", "mnuHide", "mnusystray", "mnuCpop", "mnuProgLog", "mnuAbout"}) {
        actions.menu[name] = [] {};
    }
    return actions;
}

void take_main_window(Camera& camera, const QString& theme) {
    for (const Scene& scene : scenes) {
        WeatherState state;
        scene.fill(state);
        windows::Form1 window(state, some_actions());
        window.show();
        for (const QSize size : {QSize(1180, 800), QSize(980, 660)}) {
            window.resize(size);
            QApplication::processEvents();
            window.refresh();
            QApplication::processEvents();
            camera.take(window,
                        QStringLiteral("main-%1-%2-%3").arg(QString::fromLatin1(scene.name), theme).arg(size.width()));
        }
    }
}

/// Windows that stand beside the main one.
void take_small_windows(Camera& camera, const QString& theme) {
    const auto take = [&](QWidget& window, const char* name) {
        window.show();
        QApplication::processEvents();
        camera.take(window, QStringLiteral("%1-%2").arg(QString::fromLatin1(name), theme));
    };
    windows::Splash splash;
    take(splash, "splash");
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
                                     .choices = Choices::retry_cancel});
    take(question, "question");
    windows::TextWindow log;
    log.show_text(QStringLiteral("nbyprog.log"),
                  QString(52, u'*') + QStringLiteral("\n05 Oct 2026 14:00:00 (Computer time) Program started\n"
                                                     "05 Oct 2026 14:07:20 A wind sensor error occurred\n"));
    take(log, "log");
}

/// The windows that show more of the same data: a plain day, the longest texts and trouble, and the large one small and
/// as large as a screen.
void take_displays(Camera& camera, const QString& theme) {
    const auto take = [&](QWidget& window, const char* name) {
        QApplication::processEvents();
        camera.take(window, QStringLiteral("%1-%2").arg(QString::fromLatin1(name), theme));
    };
    WeatherState state;
    fill_with_a_plain_day(state);
    fill_additional_data(state);
    windows::AdditionalWindow additional(state, {});
    additional.present();
    take(additional, "additional");
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

    fill_with_a_plain_day(state);
    turn_marquee(state);
    windows::BigWindow big(state, {});
    big.present();
    take(big, "big");
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

/// The six graphs of a day with a front passing, each in the main pane of a large window, and with something read off;
/// the smallest window with the pointer on the graph, and with drawing switched off.
void take_graphs(Camera& camera, const QString& theme) {
    WeatherState state;
    fill_with_a_plain_day(state);
    windows::Form1 window(state, some_actions());
    window.resize(1500, 950);
    window.show();
    const auto take = [&](const QString& name) {
        window.refresh();
        QApplication::processEvents();
        camera.take(window, QStringLiteral("graph-%1-%2").arg(name, theme));
    };
    for (int n = 0; n < graph_count; ++n) {
        const auto kind = static_cast<GraphKind>(n);
        if (n > 0) click_graph(state, 1);
        if (n % 2 == 0) read_graph_row(state, 960 + 60 * n);
        take(QString::fromLatin1(graph_name(kind).data()));
    }
    click_graph(state, 1);
    window.resize(980, 660);
    read_graph_row(state, 200);
    take(QStringLiteral("read"));
    leave_graph(state);
    state.menu.mnuDisableGraphs.checked = true;
    show_graph_labels(state);
    take(QStringLiteral("off"));
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

/// The main window with a notice on it, and with each menu open.
void take_what_opens(Camera& camera, const QString& theme) {
    WeatherState state;
    fill_with_trouble(state);
    windows::Form1 window(state, some_actions());
    window.show();
    QApplication::processEvents();
    const auto take_with = [&](QWidget& other, const QString& name) {
        QPixmap whole = window.grab();
        QPainter painter(&whole);
        painter.drawPixmap(window.mapFromGlobal(other.pos()), other.grab());
        painter.end();
        camera.keep(whole, name);
    };
    windows::BalloonTip tip(&window);
    const QWidget* anchor = window.widget_of("TxtWindChill");
    tip.show_at({.title = "Comms Error",
                 .text = "No data is being received from the weather station\r\nor the data being received is faulty.",
                 .icon = "!"},
                QRect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size()));
    QApplication::processEvents();
    take_with(tip, QStringLiteral("notice-") + theme);
    tip.hide();
    // One below its box, and one above.
    auto* conversion = window.findChild<windows::ConversionTip*>();
    for (const char* name : {"Text2_6", "TxtWindHiG"}) {
        auto* box = window.findChild<windows::ValueBox*>(QString::fromLatin1(name));
        box->setFocus(Qt::TabFocusReason);
        QTest::keyClick(box, Qt::Key_Space);
        QApplication::processEvents();
        take_with(*conversion, QStringLiteral("conversion-%1-%2").arg(QString::fromLatin1(name), theme));
        conversion->hide();
    }
    for (QAction* entry : window.menuBar()->actions()) {
        if (entry->menu() == nullptr) continue;
        entry->menu()->popup(window.menuBar()->mapToGlobal(window.menuBar()->actionGeometry(entry).bottomLeft()));
        QApplication::processEvents();
        take_with(*entry->menu(), QStringLiteral("menu-%1-%2").arg(entry->objectName(), theme));
        entry->menu()->close();
    }
}

}  // namespace

QPalette dark_palette() {
    QPalette palette(QColor(0x2B, 0x2F, 0x33), QColor(0x1D, 0x20, 0x23));
    palette.setColor(QPalette::Base, QColor(0x16, 0x19, 0x1C));
    palette.setColor(QPalette::AlternateBase, QColor(0x22, 0x26, 0x2A));
    palette.setColor(QPalette::WindowText, QColor(0xF0, 0xF2, 0xF4));
    palette.setColor(QPalette::Text, QColor(0xF0, 0xF2, 0xF4));
    palette.setColor(QPalette::ButtonText, QColor(0xF0, 0xF2, 0xF4));
    palette.setColor(QPalette::ToolTipBase, QColor(0x33, 0x38, 0x3D));
    palette.setColor(QPalette::ToolTipText, QColor(0xF0, 0xF2, 0xF4));
    palette.setColor(QPalette::Highlight, QColor(0x3D, 0x8B, 0xDB));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x80, 0x88, 0x90));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x80, 0x88, 0x90));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x80, 0x88, 0x90));
    return palette;
}

int write_screens(const QString& folder) {
    Camera camera(folder);
    const QPalette light = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? dark_palette() : light);
        const QString theme = dark ? QStringLiteral("dark") : QStringLiteral("light");
        take_main_window(camera, theme);
        take_graphs(camera, theme);
        take_what_opens(camera, theme);
        take_small_windows(camera, theme);
        take_displays(camera, theme);
        take_setup_windows(camera, theme);
        take_place_and_units(camera, theme);
        take_communications(camera, theme);
        take_internet(camera, theme);
    }
    QApplication::setPalette(light);
    return camera.taken();
}

}  // namespace nimbry::test
