// Every entry of the menu in the running program: there, heard, and leading to what it says.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "engine/core/switches.h"
#include "engine/station/train_writer.h"
#include "programs/nimbry/window_program.h"
#include "tests/windows/menu_names.h"
#include "tests/windows/running_program.h"
#include "tests/world/recording_ports.h"
#include "windows/about_window.h"
#include "windows/additional_window.h"
#include "windows/alarms_window.h"
#include "windows/balloon_tip.h"
#include "windows/big_window.h"
#include "windows/comment_window.h"
#include "windows/comms_window.h"
#include "windows/form1.h"
#include "windows/help_window.h"
#include "windows/internet_window.h"
#include "windows/location_window.h"
#include "windows/message_dialog.h"
#include "windows/rain_days_window.h"
#include "windows/text_window.h"
#include "windows/units_window.h"

namespace nimbry::test {
namespace {

/// An entry, what is to be seen once it has acted, and what puts that away.
struct EntryCase {
    std::string name;
    std::function<bool()> seen;
    std::function<void()> put_away;
};

windows::Form1* form() {
    return visible_window<windows::Form1>();
}

QAction* entry(const std::string& name) {
    return form()->menuBar()->findChild<QAction*>(QString::fromStdString(name));
}

template <class Window>
EntryCase opens(const char* name, const char* title) {
    return {name,
            [title] {
                const auto* window = visible_window<Window>();
                return window != nullptr && window->windowTitle() == QString::fromLatin1(title);
            },
            [] { visible_window<Window>()->close(); }};
}

EntryCase tells(const char* name, const char* title) {
    return {name,
            [title] {
                const auto* tip = visible_window<windows::BalloonTip>();
                return tip != nullptr && tip->findChild<QLabel*>("lblTitle")->text() == QString::fromLatin1(title);
            },
            [] { visible_window<windows::BalloonTip>()->HideBalloon(); }};
}

EntryCase asks(const char* name, const char* beginning) {
    return {name,
            [beginning] {
                const auto* box = visible_window<windows::MessageDialog>();
                return box != nullptr && box->text().startsWith(QString::fromLatin1(beginning));
            },
            [] { visible_window<windows::MessageDialog>()->button(QMessageBox::No)->click(); }};
}

/// All but `mnuExit1`, which ends the program, and the switches.
std::vector<EntryCase> acting_entries() {
    return {opens<windows::CommsWindow>("SetupComms", "Nimbry Setup"),
            opens<windows::UnitsWindow>("SetupUnits", "Nimbry Units Setup"),
            opens<windows::AlarmsWindow>("mnuAlarms", "Nimbry Alarms Setup"),
            opens<windows::InternetWindow>("mnuInternet", "Nimbry FTP / Email Setup"),
            opens<windows::LocationWindow>("mnuLatLong", "Nimbry Location"),
            opens<windows::CommentWindow>("mnuEditComment", "Nimbry Comment"),
            opens<windows::CommentWindow>("mnuEditComment2", "Nimbry Comment 2"),
            opens<windows::RainDaysWindow>("mnuEditDSR", "Nimbry Edit Days Since rain"),
            tells("mnuDisplayLog", "Log File Error"),
            tells("mnuDisplayAlmanac", "Almanac File Error"),
            opens<windows::TextWindow>("mnuProgLog", "nbyprog.log"),
            asks("mnuClearProgLog", "Are you sure you want to clear all but"),
            asks("mnuResetGraphs", "Are you sure you want to completely reset the graphs?"),
            opens<windows::BigWindow>("mnuBIG", "Nimbry Large Text"),
            opens<windows::AdditionalWindow>("mnuAdditional", "Nimbry Additional Data"),
            opens<QFileDialog>("mnuAlMonth", "Monthly Summary"),
            tells("mnuAutoReport", "Almanac Error"),
            opens<windows::HelpWindow>("mnuFHelp", "Nimbry Help"),
            opens<windows::AboutWindow>("mnuAbout", "Nimbry About..."),
            {"mnuHideNow", [] { return form()->isMinimized(); }, [] { form()->restore(); }}};
}

/// The names of all entries of the bar that act.
std::vector<std::string> names_of_the_bar() {
    std::vector<std::string> names{"mnuAdditional", "mnuHideNow"};
    for (const MenuCase& menu : menus) names.insert(names.end(), menu.entries.begin(), menu.entries.end());
    return names;
}

TEST(ProgramMenu, HasEveryEntryActWithOneClick) {
    const Folder folder;
    const PseudoTerminal station;
    const Bytes train = write_train(StationReadings{});
    RecordingSounds sounds;
    const auto clicks = [&sounds] { return std::count(sounds.played.begin(), sounds.played.end(), "click.WAV"); };
    bool was_checked = false;
    std::vector<EntryCase> cases = acting_entries();
    for (const Switch& which : switches()) {
        const std::string name(which.name), key(key_of(which));
        cases.push_back({name,
                         [name, key, &was_checked, &folder] {
                             const bool checked = entry(name)->isChecked();
                             const std::string line = key + (checked ? "=True\r\n" : "=False\r\n");
                             return checked != was_checked &&
                                    (key.empty() || contents(folder, "Nimbry.ini").find(line) != std::string::npos);
                         },
                         [] {}});
    }
    std::vector<std::string> tried{"mnuExit1"};
    for (const EntryCase& c : cases) tried.push_back(c.name);
    std::vector<std::string> all = names_of_the_bar();
    std::sort(tried.begin(), tried.end());
    std::sort(all.begin(), all.end());
    ASSERT_EQ(tried, all);

    QTimer play;
    Onlooker onlooker;
    QObject::connect(&play, &QTimer::timeout, &onlooker, [&] { station.send(train); });
    onlooker.when([] { return form() != nullptr; }, [&play] { play.start(250); });
    onlooker.when([] { return entry("mnuInternet")->isEnabled() && entry("mnuDisplayLog")->isEnabled(); },
                  [&] {
                      play.stop();
                      std::vector<std::string> off;
                      for (const std::string& name : all)
                          if (!entry(name)->isEnabled()) off.push_back(name);
                      EXPECT_EQ(off, std::vector<std::string>());
                      if (!off.empty()) form()->close();
                  });
    std::ptrdiff_t before = 0;
    for (const EntryCase& c : cases) {
        onlooker.when([] { return true; },
                      [&, name = c.name] {
                          before = clicks();
                          was_checked = entry(name)->isChecked();
                          entry(name)->trigger();
                      });
        onlooker.when(c.seen, [&, c] {
            EXPECT_EQ(clicks(), before + 1) << c.name;
            c.put_away();
        });
    }
    onlooker.when([] { return true; },
                  [&] {
                      before = clicks();
                      entry("mnuExit1")->trigger();
                  });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false, &sounds), 0);
    EXPECT_EQ(clicks(), before + 1) << "mnuExit1";
    EXPECT_TRUE(onlooker.saw_all());
}

TEST(ProgramMenu, SoundsTheClickOfTheMonthlySummaryOnceWhateverIsChosen) {
    const Folder folder;
    QFile almanac(folder.filePath(QStringLiteral("alOct26.csv")));
    ASSERT_TRUE(almanac.open(QIODevice::WriteOnly));
    almanac.write("no almanac\r\n");
    almanac.close();
    const PseudoTerminal station;
    RecordingSounds sounds;
    std::size_t before = 0;
    Onlooker onlooker;
    onlooker.when([] { return form() != nullptr; },
                  [&] {
                      before = sounds.played.size();
                      entry("mnuAlMonth")->trigger();
                  });
    onlooker.when([] { return visible_window<QFileDialog>() != nullptr; },
                  [&] {
                      EXPECT_EQ(sounds.played.size(), before + 1) << "before the choice";
                      auto* dialog = visible_window<QFileDialog>();
                      dialog->findChild<QLineEdit*>("fileNameEdit")->setText(QStringLiteral("alOct26.csv"));
                      static_cast<QDialog*>(dialog)->accept();
                  });
    onlooker.when(tells("mnuAlMonth", "Almanac Error").seen, [&] {
        EXPECT_EQ(sounds.played.size(), before + 1);
        form()->close();
    });
    EXPECT_EQ(run_with_window(folder.path().toStdString(), station.device(), false, &sounds), 0);
    EXPECT_TRUE(onlooker.saw_all());
}

}  // namespace
}  // namespace nimbry::test
