#include "tests/windows/screens.h"

#include <QApplication>
#include <QDir>
#include <QMenu>

#include "tests/windows/sample_states.h"
#include "windows/form1.h"

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

    void take(QWidget& widget, const QString& name) {
        const int scale = qRound(qApp->devicePixelRatio() * 100);
        if (widget.grab().save(QStringLiteral("%1/%2-%3.png").arg(folder_, name).arg(scale))) ++taken_;
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
    take_main_window(camera, QStringLiteral("light"));
    QApplication::setPalette(dark_palette());
    take_main_window(camera, QStringLiteral("dark"));
    QApplication::setPalette(light);
    return camera.taken();
}

}  // namespace nimbry::test
