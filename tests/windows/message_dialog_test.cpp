#include "windows/message_dialog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>

namespace nimbry::test {
namespace {

TEST(MessageDialog, ShowsItsChoicesInWordsAlone) {
    for (const Choices choices : {Choices::ok, Choices::ok_cancel, Choices::yes_no, Choices::retry_cancel}) {
        const windows::MessageDialog dialog({.text = "COM Port Error", .choices = choices, .other_choice = "&More"});
        EXPECT_FALSE(dialog.buttons().isEmpty());
        for (const QAbstractButton* button : dialog.buttons()) {
            EXPECT_TRUE(button->icon().isNull()) << button->text().toStdString();
            EXPECT_NE(button->text(), QString());
        }
    }
}

TEST(MessageDialog, HasOneMoreChoiceAndADetailWhereTheBoxAsksForThem) {
    windows::MessageDialog dialog({.text = "COM Port Error",
                                   .choices = Choices::retry_cancel,
                                   .detail = "The device is <b>",
                                   .other_choice = "Choose &port ..."});
    EXPECT_EQ(dialog.informativeText(), "The device is <b>");
    EXPECT_EQ(dialog.findChild<QLabel*>("qt_msgbox_informativelabel")->textFormat(), Qt::PlainText);
    EXPECT_EQ(dialog.buttons().size(), 3);
    auto* other = dialog.findChild<QAbstractButton*>("OtherChoice");
    EXPECT_EQ(other->text(), "Choose &port ...");
    dialog.show();
    other->click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.answer(), Answer::other);
    dialog.show();
    dialog.button(QMessageBox::Retry)->click();
    EXPECT_EQ(dialog.answer(), Answer::retry);
}

TEST(MessageDialog, IsPlainWithoutThem) {
    const windows::MessageDialog dialog({.text = "COM Port Error", .choices = Choices::ok});
    EXPECT_EQ(dialog.informativeText(), "");
    EXPECT_EQ(dialog.buttons().size(), 1);
}

}  // namespace
}  // namespace nimbry::test
