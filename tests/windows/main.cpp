#include <gtest/gtest.h>

#include <QtGlobal>

#include <QApplication>
#include <QString>
#include <cstdio>

#include "tests/windows/screens.h"

namespace {

/// The offscreen platform tells of everything that it does not have; none of it matters here.
void drop_platform_talk(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.startsWith(QStringLiteral("This plugin does not support"))) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

}  // namespace

// Runs the window tests, or with `--screens DIR` writes pictures of the windows into a folder.
int main(int argc, char** argv) {
    // Without a screen of its own the tests paint off screen, also where ctest only asks for their names.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(drop_platform_talk);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (const qsizetype place = arguments.indexOf(QStringLiteral("--screens"));
        place > 0 && place + 1 < arguments.size()) {
        std::printf("%d pictures in %s\n", nimbry::test::write_screens(arguments[place + 1]),
                    qPrintable(arguments[place + 1]));
        return 0;
    }
    return RUN_ALL_TESTS();
}
