#include "windows/tray_icon.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>

namespace nimbry::test {
namespace {

using windows::TrayIcon;

TEST(TrayIcon, NamesTheProgramAndItsVersion) {
    const TrayIcon icon([] {}, [] {}, nullptr);
    EXPECT_EQ(icon.tip(), "Nimbry version 2.02");
}

TEST(TrayIcon, OffersTheOneEntryThatMakesSense) {
    int hidden = 0;
    int restored = 0;
    TrayIcon icon([&] { ++hidden; }, [&] { ++restored; }, nullptr);
    const QList<QAction*> entries = icon.menu().actions();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0]->text(), "Hide");
    EXPECT_EQ(entries[1]->text(), "Restore Nimbry");
    EXPECT_TRUE(entries[0]->isEnabled());
    EXPECT_FALSE(entries[1]->isEnabled());
    entries[0]->trigger();
    icon.window_is_hidden(true);
    EXPECT_FALSE(entries[0]->isEnabled());
    EXPECT_TRUE(entries[1]->isEnabled());
    entries[1]->trigger();
    EXPECT_EQ(hidden, 1);
    EXPECT_EQ(restored, 1);
}

}  // namespace
}  // namespace nimbry::test
