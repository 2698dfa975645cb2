#include <gtest/gtest.h>

#include <QtGlobal>

#include <QApplication>
#include <QString>
#include <cstdio>

#include "tests/windows/screens.h"
#include "windows/field_style.h"

namespace {

/// The offscreen platform tells of everything that it does not have; none of it matters here.
void drop_platform_talk(QtMsgType, const QMessageLogContext&, const QString& message) {
    for (const char* known : {"This plugin does not support", "QObject::connect: No such signal QPlatformNative"}) {
        if (message.startsWith(QLatin1String(known))) return;
    }
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

}  // namespace

// Runs the window tests; with `--screens DIR` or `--manual-pictures DIR` writes pictures of the windows into a folder.
int main(int argc, char** argv) {
    // Without a screen of its own the tests paint off screen, also where ctest only asks for their names.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(drop_platform_talk);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new nimbry::windows::FieldStyle);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3) {
        const QString& folder = arguments[2];
        int written = 0;
        if (arguments[1] == QStringLiteral("--screens")) written = nimbry::test::write_screens(folder);
        if (arguments[1] == QStringLiteral("--manual-pictures")) written = nimbry::test::write_manual_pictures(folder);
        std::printf("%d pictures in %s\n", written, qPrintable(folder));
        return written > 0 ? 0 : 1;
    }
    return RUN_ALL_TESTS();
}
