// The program with a window as a whole, on the offscreen platform, with a pseudo-terminal as its station.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QSessionManager>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstddef>
#include <string>

#include "engine/station/train_writer.h"
#include "programs/nimbry/other_instance.h"
#include "programs/nimbry/window_program.h"
#include "tests/windows/running_program.h"
#include "windows/additional_window.h"
#include "windows/alarms_window.h"
#include "windows/big_window.h"
#include "windows/comment_window.h"
#include "windows/comms_window.h"
#include "windows/form1.h"
#include "windows/help_window.h"
#include "windows/location_window.h"
#include "windows/marquee_window.h"
#include "windows/message_dialog.h"
#include "windows/rain_days_window.h"
#include "windows/splash.h"
#include "windows/units_window.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

TEST(Program, ShowsTheSplashThenTheWindowThenTheStation) {
    const Folder folder;
    const PseudoTerminal station;
    const Bytes train = write_train(StationReadings{});
    int sent = 0;
    Onlooker onlooker;
    onlooker.when([] { return visible_window<windows::Splash>() != nullptr; }, [] {});
    onlooker.when(
        [] { return visible_window<windows::Form1>() != nullptr && visible_window<windows::Splash>() == nullptr; },
        [] {});
    // The first train only primes the cycle.
    const auto is_shown = [] {
        return visible_window<windows::Form1>()->findChild<windows::ValueBox*>("Text2_0")->text() != QString();
    };
    QTimer play;
    QObject::connect(&play, &QTimer::timeout, &onlooker, [&] {
        if (visible_window<windows::Form1>() == nullptr) return;
        station.send(train);
        ++sent;
    });
    play.start(250);
    onlooker.when(is_shown, [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuExit1")->trigger(); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_GE(sent, 2);
    EXPECT_NE(contents(folder, "nbyprog.log").find("Program stopped, normal exit"), std::string::npos);
}

TEST(Program, TakesACommentAndTheDaysSinceRainFromTheirEditors) {
    const Folder folder;
    const PseudoTerminal station;
    const Bytes train = write_train(StationReadings{});
    const auto trigger = [](const char* entry) {
        visible_window<windows::Form1>()->findChild<QAction*>(QString::fromLatin1(entry))->trigger();
    };
    QTimer play;
    Onlooker onlooker;
    // A shortcut is heard by the active window only.
    const auto is_active = [] {
        const auto* form = visible_window<windows::Form1>();
        return form != nullptr && form->isActiveWindow();
    };
    onlooker.when(is_active, [&] {
        EXPECT_FALSE(visible_window<windows::Form1>()->findChild<QAction*>("mnuEditDSR")->isEnabled())
            << "before the first train";
        QTest::keyClick(visible_window<windows::Form1>(), Qt::Key_F1);
    });
    onlooker.when([] { return visible_window<windows::HelpWindow>() != nullptr; },
                  [&] {
                      visible_window<windows::HelpWindow>()->close();
                      play.start(250);
                  });
    onlooker.when([] { return visible_window<windows::Form1>()->findChild<QAction*>("mnuEditComment2")->isEnabled(); },
                  [&] { trigger("mnuEditComment2"); });
    onlooker.when([] { return visible_window<windows::CommentWindow>() != nullptr; },
                  [&] {
                      auto* editor = visible_window<windows::CommentWindow>();
                      QTest::keyClicks(editor->findChild<QLineEdit*>("txtComment"), QStringLiteral("fog <i>again</i>"));
                      editor->findChild<QAbstractButton*>("Command2")->click();
                      trigger("mnuEditDSR");
                  });
    onlooker.when([] { return visible_window<windows::RainDaysWindow>() != nullptr; },
                  [&] {
                      auto* editor = visible_window<windows::RainDaysWindow>();
                      editor->findChild<QLineEdit*>("txtEDSR")->selectAll();
                      QTest::keyClicks(editor->findChild<QLineEdit*>("txtEDSR"), QStringLiteral("17"));
                      editor->findChild<QAbstractButton*>("cmdDone")->click();
                      trigger("mnuEditDSR");
                  });
    onlooker.when([] { return visible_window<windows::RainDaysWindow>() != nullptr; },
                  [&] {
                      EXPECT_EQ(visible_window<windows::RainDaysWindow>()->findChild<QLineEdit*>("txtEDSR")->text(),
                                "17");
                      trigger("mnuExit1");
                  });
    QObject::connect(&play, &QTimer::timeout, &onlooker, [&] { station.send(train); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_NE(contents(folder, "Nimbry.ini").find("WebComment2=fog <i>again</i>\r\n"), std::string::npos);
}

TEST(Program, ShowsANewcomerTheSetupWindowAndGoesOnWithWhatIsAccepted) {
    const QTemporaryDir folder;
    const PseudoTerminal station;
    Onlooker onlooker;
    onlooker.when(
        [] { return visible_window<windows::CommsWindow>() != nullptr; },
        [&] {
            EXPECT_EQ(visible_window<windows::Form1>(), nullptr);
            EXPECT_EQ(contents(folder, "Nimbry.ini").find("HasRun=True"), std::string::npos);
            auto* dialog = visible_window<windows::CommsWindow>();
            dialog->findChild<QComboBox*>("SerialPort1")->setEditText(QString::fromStdString(station.device()));
            dialog->findChild<QAbstractButton*>("Command1")->click();
        });
    onlooker.when([] { return visible_window<windows::Form1>() != nullptr; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("SetupComms")->trigger(); });
    onlooker.when([] { return visible_window<windows::CommsWindow>() != nullptr; },
                  [&] {
                      auto* dialog = visible_window<windows::CommsWindow>();
                      EXPECT_EQ(dialog->findChild<QComboBox*>("SerialPort1")->currentText().toStdString(),
                                station.device());
                      dialog->findChild<QAbstractButton*>("Check3")->click();
                      dialog->findChild<QAbstractButton*>("Command1")->click();
                  });
    onlooker.when([&folder] { return contents(folder, "Nimbry.ini").find("fwrtlog=True") != std::string::npos; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuExit1")->trigger(); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), "", false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    const std::string settings = contents(folder, "Nimbry.ini");
    EXPECT_NE(settings.find("HasRun=True"), std::string::npos);
    EXPECT_NE(settings.find("SerialPort1=" + station.device()), std::string::npos);
}

TEST(Program, ASetupWindowThatANewcomerClosesLeavesTheDefaults) {
    const QTemporaryDir folder;
    const PseudoTerminal station;
    Onlooker onlooker;
    onlooker.when([] { return visible_window<windows::CommsWindow>() != nullptr; },
                  [] { visible_window<windows::CommsWindow>()->close(); });
    onlooker.when([] { return visible_window<windows::Form1>() != nullptr; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuExit1")->trigger(); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_NE(contents(folder, "Nimbry.ini").find("HasRun=True"), std::string::npos);
    EXPECT_EQ(contents(folder, "Nimbry.ini").find("numofentries"), std::string::npos) << "nothing was accepted";
}

TEST(Program, LeavesAtTheSessionsEndAsByTheWindowsClose) {
    const Folder folder;
    const PseudoTerminal station;
    Onlooker onlooker;
    onlooker.when([&] { return contents(folder, "nbyprog.log").find("Program started") != std::string::npos; },
                  [] {
                      // Only a session manager can make its own object; nobody looks into this one.
                      alignas(QSessionManager) static std::byte room[sizeof(QSessionManager)];
                      Q_EMIT qGuiApp->commitDataRequest(reinterpret_cast<QSessionManager&>(room));
                  });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_NE(contents(folder, "nbyprog.log").find("Program stopped, forced exit (Windows closing)"),
              std::string::npos);
}

TEST(Program, TakesTheAlarmDialogsValuesIntoForce) {
    const Folder folder;
    const PseudoTerminal station;
    Onlooker onlooker;
    onlooker.when([] { return visible_window<windows::Form1>() != nullptr; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuAlarms")->trigger(); });
    onlooker.when([] { return visible_window<windows::AlarmsWindow>() != nullptr; },
                  [] {
                      auto* dialog = visible_window<windows::AlarmsWindow>();
                      dialog->findChild<QAbstractButton*>("chkAWindHi")->click();
                      dialog->findChild<QAbstractButton*>("Command1")->click();
                  });
    onlooker.when([&folder] { return contents(folder, "Nimbry.ini").find("fAWindHi=True") != std::string::npos; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuExit1")->trigger(); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_NE(contents(folder, "Nimbry.ini").find("ATempHi=37.8\r\n"), std::string::npos) << "all keys are written";
}

TEST(Program, DoesWhatIsChosenInTheUnitsAndTheLocationWindow) {
    const Folder folder;
    QFile almanac(folder.filePath(QStringLiteral("nbextreme.log")));
    ASSERT_TRUE(almanac.open(QIODevice::WriteOnly));
    almanac.close();
    const PseudoTerminal station;
    Onlooker onlooker;
    const auto option = [](const char* name) {
        return visible_window<windows::UnitsWindow>()->findChild<QAbstractButton*>(QString::fromLatin1(name));
    };
    const auto told = [](const char* beginning) {
        return [beginning] {
            const auto* box = visible_window<windows::MessageDialog>();
            return box != nullptr && box->text().startsWith(QString::fromLatin1(beginning));
        };
    };
    const auto stored = [&folder](const char* line) {
        return [&folder, line] { return contents(folder, "Nimbry.ini").find(line) != std::string::npos; };
    };
    const auto answer_ok = [] { visible_window<windows::MessageDialog>()->button(QMessageBox::Ok)->click(); };
    onlooker.when([] { return visible_window<windows::Form1>() != nullptr; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("SetupUnits")->trigger(); });
    onlooker.when(told("Changing the units will affect your almanac."), answer_ok);
    onlooker.when([] { return visible_window<windows::MessageDialog>() == nullptr; },
                  [option] { option("optonehour")->click(); });
    onlooker.when(told("Please ensure you understand the implications"), answer_ok);
    onlooker.when(stored("AddOneHour=True"), [option] { option("optMidnight")->click(); });
    onlooker.when(told("Changing this setting will reset the graphs"), answer_ok);
    onlooker.when([option] { return option("optMidnight")->isChecked(); },
                  [option, stored] {
                      EXPECT_TRUE(stored("tmidnight=True")()) << "written before anything is accepted";
                      EXPECT_FALSE(stored("fTempF=True")());
                      option("OptLast")->click();
                      option("optTempF")->click();
                      option("Command1")->click();
                  });
    onlooker.when(stored("fTempF=True"), [stored] {
        EXPECT_TRUE(stored("alRoll=905")());
        visible_window<windows::Form1>()->findChild<QAction*>("mnuLatLong")->trigger();
    });
    onlooker.when([] { return visible_window<windows::LocationWindow>() != nullptr; },
                  [] {
                      auto* dialog = visible_window<windows::LocationWindow>();
                      auto* latitude = dialog->findChild<QLineEdit*>("Text7");
                      latitude->selectAll();
                      QTest::keyClicks(latitude, "51.5");
                      dialog->findChild<QAbstractButton*>("Command1")->click();
                  });
    onlooker.when(stored("Latitude=51.500000"),
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuExit1")->trigger(); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
}

TEST(Program, OpensItsFurtherDisplaysAndTakesTheMarqueeIntoForce) {
    const Folder folder;
    const PseudoTerminal station;
    Onlooker onlooker;
    const auto main = [] { return visible_window<windows::Form1>(); };
    const auto entry = [main](const char* name) { return main()->findChild<QAction*>(QString::fromLatin1(name)); };
    onlooker.when([main] { return main() != nullptr; }, [entry] { entry("mnuAdditional")->trigger(); });
    onlooker.when(
        [entry] {
            return visible_window<windows::AdditionalWindow>() != nullptr && !entry("mnuAdditional")->isEnabled();
        },
        [] { visible_window<windows::AdditionalWindow>()->findChild<QAction*>("mnuHide")->trigger(); });
    onlooker.when(
        [entry] {
            return visible_window<windows::AdditionalWindow>() == nullptr && entry("mnuAdditional")->isEnabled();
        },
        [entry] { entry("mnuBIG")->trigger(); });
    onlooker.when([] { return visible_window<windows::BigWindow>() != nullptr; },
                  [] {
                      auto* big = visible_window<windows::BigWindow>();
                      EXPECT_EQ(big->findChild<windows::ValueBox*>("Label9")->text(), "**  Nimbry  **");
                      big->findChild<QAbstractButton*>("cmdMarquee")->click();
                  });
    onlooker.when([] { return visible_window<windows::MarqueeWindow>() != nullptr; },
                  [] {
                      auto* dialog = visible_window<windows::MarqueeWindow>();
                      dialog->findChild<QAbstractButton*>("chkDew")->click();
                      dialog->findChild<QAbstractButton*>("Command1")->click();
                  });
    onlooker.when(
        [] {
            return visible_window<windows::BigWindow>()->findChild<windows::ValueBox*>("Label9")->text() == "Dew Point";
        },
        [entry] {
            visible_window<windows::BigWindow>()->close();
            entry("mnuExit1")->trigger();
        });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_NE(contents(folder, "Nimbry.ini").find("DisDew=True"), std::string::npos);
}

TEST(Program, AsksAboutAPortThatIsNotThere) {
    const Folder folder;
    Onlooker onlooker;
    QString text, detail;
    onlooker.when([] { return visible_window<windows::MessageDialog>() != nullptr; },
                  [&] {
                      auto* dialog = visible_window<windows::MessageDialog>();
                      text = dialog->text();
                      detail = dialog->informativeText();
                      dialog->button(QMessageBox::Cancel)->click();
                  });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), "/dev/no-such-port", false), 0);
    EXPECT_EQ(text, "COM Port Error,\nPlease check that the selected port exists\nClick Retry, or Cancel to Quit.");
    EXPECT_EQ(detail, "The device is /dev/no-such-port");
    const std::string log = contents(folder, "nbyprog.log");
    EXPECT_EQ(log.find("Program stopped"), std::string::npos) << "it ends at once";
    EXPECT_NE(log.find("selected port exists (/dev/no-such-port): cancelled"), std::string::npos) << log;
}

TEST(Program, LetsAnotherPortBeChosenForTheOneThatIsNotThere) {
    const Folder folder;
    const PseudoTerminal station;
    Onlooker onlooker;
    onlooker.when([] { return visible_window<windows::MessageDialog>() != nullptr; },
                  [] {
                      auto* dialog = visible_window<windows::MessageDialog>();
                      dialog->findChild<QAbstractButton*>(QStringLiteral("OtherChoice"))->click();
                  });
    onlooker.when([] { return visible_window<windows::CommsWindow>() != nullptr; },
                  [&station] {
                      auto* dialog = visible_window<windows::CommsWindow>();
                      dialog->findChild<QComboBox*>(QStringLiteral("SerialPort1"))
                          ->setEditText(QString::fromStdString(station.device()));
                      dialog->findChild<QAbstractButton*>(QStringLiteral("Command1"))->click();
                  });
    onlooker.when([] { return visible_window<windows::Form1>() != nullptr; },
                  [] { visible_window<windows::Form1>()->findChild<QAction*>("mnuExit1")->trigger(); });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), "/dev/no-such-port", false), 0);
    EXPECT_TRUE(onlooker.saw_all());
    EXPECT_NE(contents(folder, "Nimbry.ini").find("SerialPort1=" + station.device()), std::string::npos);
    EXPECT_EQ(contents(folder, "nbyprog.log").find("COM Port Error"), std::string::npos);
}

TEST(Program, SaysThatAnotherCopyRuns) {
    Onlooker onlooker;
    QString title, text, detail;
    onlooker.when([] { return visible_window<windows::MessageDialog>() != nullptr; },
                  [&] {
                      auto* dialog = visible_window<windows::MessageDialog>();
                      title = dialog->windowTitle();
                      text = dialog->text();
                      detail = dialog->informativeText();
                      dialog->close();
                  });
    EXPECT_EQ(tell_of_other_instance("Another copy of Nimbry (process 7) has the folder /home/m\xC3\xBC/weather"), 3);
    EXPECT_EQ(title, "Nimbry");
    EXPECT_EQ(detail, QStringLiteral("Another copy of Nimbry (process 7) has the folder /home/mü/weather"));
    EXPECT_EQ(text,
              "Nimbry is already running on this computer,\nYou can not run more than one instance of the program");
}

struct CommandCase {
    const char* law;
    QStringList arguments;
    int status;
    const char* output;  ///< the beginning of standard output
};

TEST(Program, AnswersItsCommandLine) {
    const CommandCase cases[]{
        {"its version", {"--version"}, 0, "nimbry 2.02"},
        {"its help", {"--help"}, 0, "Usage: nimbry"},
        {"an unknown option", {"--nonsense"}, 2, ""},
        {"a folder without a name", {"--dir"}, 2, ""},
    };
    for (const CommandCase& c : cases) {
        SCOPED_TRACE(c.law);
        QProcess process;
        process.start(NIMBRY, c.arguments);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), c.status);
        const std::string output = process.readAllStandardOutput().toStdString();
        EXPECT_EQ(output.substr(0, std::string(c.output).size()), c.output);
        EXPECT_EQ(output.empty(), c.status != 0);
        EXPECT_EQ(process.readAllStandardError().isEmpty(), c.status == 0);
    }
}

}  // namespace
}  // namespace nimbry::test
