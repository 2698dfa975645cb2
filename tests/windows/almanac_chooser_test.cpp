#include "windows/almanac_chooser.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QWidget>
#include <optional>

#include "tests/support/temporary_folder.h"

namespace nimbry::windows::test {
namespace {

class AlmanacChooserTest : public testing::Test {
protected:
    AlmanacChooserTest() {
        folder.put("alOct26.csv", "almanac\r\n");
        choose_almanac(&parent, folder.path(), [this](const std::string& path) { chosen = path; });
        dialog = parent.findChild<QFileDialog*>("dlgAlMonth");
    }
    QWidget parent;
    platform::test::TemporaryFolder folder;
    std::optional<std::string> chosen;
    QFileDialog* dialog = nullptr;
};

TEST_F(AlmanacChooserTest, OffersTheAlmanacsOfTheFolder) {
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->nameFilters(), QStringList{QStringLiteral("Almanacs (al*.csv)")});
    EXPECT_EQ(dialog->directory().absolutePath().toStdString(), folder.path());
    EXPECT_EQ(dialog->defaultSuffix(), QStringLiteral("csv"));
}

TEST_F(AlmanacChooserTest, GivesThePathThatWasChosen) {
    ASSERT_NE(dialog, nullptr);
    dialog->selectFile(QString::fromStdString(folder.path("alOct26.csv")));
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_EQ(chosen, folder.path("alOct26.csv"));
}

TEST_F(AlmanacChooserTest, GivesNothingWhenItIsGivenUp) {
    ASSERT_NE(dialog, nullptr);
    dialog->reject();
    EXPECT_EQ(chosen, std::nullopt);
}

}  // namespace
}  // namespace nimbry::windows::test
