#include "tests/windows/screens.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "engine/displays/box_list.h"
#include "engine/graphs/graph_view.h"
#include "tests/windows/camera.h"
#include "tests/windows/font_scale.h"
#include "tests/windows/lived_day.h"
#include "tests/windows/sample_states.h"
#include "windows/balloon_tip.h"
#include "windows/conversion_tip.h"
#include "windows/form1.h"
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
                         {"day", fill_with_a_lived_day},
                         {"long",
                          [](WeatherState& state) {
                              fill_with_long_texts(state);
                              open_menus(state);
                          }},
                         {"trouble",
                          [](WeatherState& state) {
                              fill_with_trouble(state);
                              open_menus(state);
                          }},
                         {"client", [](WeatherState& state) {
                              fill_with_a_plain_day(state);
                              open_menus(state);
                              set_menu_for_role(state.menu, true, true);
                              state.panel.lblStatus.text = "Receiving data from server";
                              for (Box& button : state.menu.fmb) {
                                  button.enabled = false;
                                  button.fore = colours::red;
                              }
                          }}};

/// Every entry acts, as in the program.
windows::Form1::Actions all_actions() {
    windows::Form1::Actions actions;
    const WeatherState names;
    for (const NamedConstBox& entry : named_boxes(names))
        if (entry.kind == BoxKind::menu_entry)
            actions.menu[std::string(entry.name.substr(entry.name.find('.') + 1))] = [] {};
    return actions;
}

void take_main_window(Camera& camera, const QString& theme) {
    for (const Scene& scene : scenes) {
        WeatherState state;
        scene.fill(state);
        windows::Form1 window(state, all_actions());
        window.show();
        for (const QSize size : {QSize(1180, 800), QSize(980, 660)}) {
            window.resize(size);
            QApplication::processEvents();
            window.refresh();
            camera.take(window,
                        QStringLiteral("main-%1-%2-%3").arg(QString::fromLatin1(scene.name), theme).arg(size.width()));
        }
    }
    for (const int percent : {150, 200}) {
        const FontScale letters(percent / 100.0);
        WeatherState state;
        fill_with_long_texts(state);
        open_menus(state);
        windows::Form1 window(state, all_actions());
        window.resize(1180, 800);
        window.show();
        camera.take(window, QStringLiteral("main-letters-%1-%2").arg(percent).arg(theme));
    }
}

/// The six graphs of a day with a front passing, each in the main pane of a large window, and with something read off;
/// the smallest window with the pointer on the graph, and with drawing switched off.
void take_graphs(Camera& camera, const QString& theme) {
    WeatherState state;
    fill_with_a_plain_day(state);
    open_menus(state);
    windows::Form1 window(state, all_actions());
    window.resize(1500, 950);
    window.show();
    const auto take = [&](const QString& name) {
        window.refresh();
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

/// The main window with what opens over it: notices, the pop-up and the tip of a box, each menu, the tray's menu.
void take_what_opens(Camera& camera, const QString& theme) {
    WeatherState state;
    fill_with_trouble(state);
    open_menus(state);
    windows::Form1 window(state, all_actions());
    window.resize(1180, 800);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    const auto take_with = [&](QWidget& over, const QString& name) {
        camera.take_with(window, over, name + u'-' + theme);
    };

    const Balloon balloons[]{
        {.title = "Comms Error",
         .text = "No data is being received from the weather station\r\nor the data being received is faulty.",
         .icon = "!"},
        {.title = "Email Report", .text = "Mail sent successfully", .icon = "i"},
        {.title = "Network Error",
         .text = "Network error. Unable to send data to Nimbry client(s) Network is unreachable (101)",
         .icon = "x",
         .closes_after = Milliseconds{0}}};
    windows::BalloonTip notice(&window);
    const QWidget* anchor = window.widget_of("TxtWindChill");
    for (const Balloon& balloon : balloons) {
        notice.show_at(balloon, QRect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size()));
        take_with(notice,
                  QStringLiteral("notice-") + QString::fromStdString(balloon.title).section(u' ', 0, 0).toLower());
    }
    notice.hide();

    // One below its box, and one above.
    auto* conversion = window.findChild<windows::ConversionTip*>();
    for (const char* name : {"Text2_6", "TxtWindHiG"}) {
        auto* box = window.findChild<windows::ValueBox*>(QString::fromLatin1(name));
        box->setFocus(Qt::TabFocusReason);
        QTest::keyClick(box, Qt::Key_Space);
        take_with(*conversion, QStringLiteral("conversion-") + QString::fromLatin1(name));
        conversion->hide();
    }
    auto* label = window.findChild<QWidget*>(QStringLiteral("lblRainY"));
    label->setFocus(Qt::TabFocusReason);
    QTest::keyClick(label, Qt::Key_Space);
    for (QWidget* over : QApplication::topLevelWidgets())
        if (over->inherits("QTipLabel") && over->isVisible()) take_with(*over, QStringLiteral("tip"));
    QTest::keyClick(label, Qt::Key_Escape);

    for (QAction* entry : window.menuBar()->actions()) {
        if (entry->menu() == nullptr) continue;
        entry->menu()->popup(window.menuBar()->mapToGlobal(window.menuBar()->actionGeometry(entry).bottomLeft()));
        take_with(*entry->menu(), QStringLiteral("menu-") + entry->objectName());
        entry->menu()->close();
    }
    for (QObject* holder : window.findChild<QAction*>(QStringLiteral("mnuRestore"))->associatedObjects()) {
        auto* menu = qobject_cast<QMenu*>(holder);
        if (menu == nullptr) continue;
        menu->popup(window.mapToGlobal(window.rect().center()));
        take_with(*menu, QStringLiteral("menu-tray"));
        menu->close();
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

namespace {

void take_all(Camera& camera, const QString& theme) {
    take_main_window(camera, theme);
    take_graphs(camera, theme);
    take_what_opens(camera, theme);
    take_beside_the_main_window(camera, theme);
}

/// The pictures that the manual and the README show, and their names there.
const std::map<QString, QString> pictures_of_the_manual{
    {"main-day-light-1180", "main-light"},
    {"main-day-dark-1180", "main-dark"},
    {"conversion-Text2_6-light", "conversion"},
    {"notice-comms-light", "notice"},
    {"graph-wind-light", "graphs"},
    {"sensor-light", "sensor"},
    {"comment-light", "comment"},
    {"rain-days-light", "rain-days"},
    {"additional-light", "additional"},
    {"big-light", "big"},
    {"marquee-light", "marquee"},
    {"alarms-light", "alarms"},
    {"location-light", "location"},
    {"units-light", "units"},
    {"comms-server-light", "comms"},
    {"internet-1-light", "internet-ftp"},
    {"internet-2-light", "internet-email"},
    {"internet-3-light", "internet-services"},
    {"internet-4-light", "internet-local"},
    {"internet-5-light", "internet-connection"},
};

}  // namespace

int write_screens(const QString& folder) {
    Camera camera(folder);
    const QPalette light = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? dark_palette() : light);
        take_all(camera, dark ? QStringLiteral("dark") : QStringLiteral("light"));
    }
    QApplication::setPalette(light);
    return camera.taken();
}

int write_manual_pictures(const QString& folder) {
    Camera camera(folder, pictures_of_the_manual);
    take_all(camera, QStringLiteral("light"));
    const QPalette light = QApplication::palette();
    QApplication::setPalette(dark_palette());
    take_main_window(camera, QStringLiteral("dark"));
    QApplication::setPalette(light);
    return camera.taken();
}

}  // namespace nimbry::test
