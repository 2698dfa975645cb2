#include "windows/message_dialog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>

namespace nimbry::test {
namespace {

TEST(MessageDialog, ShowsItsChoicesInWordsAlone) {
    for (const Choices choices : {Choices::ok, Choices::ok_cancel, Choices::yes_no, Choices::retry_cancel}) {
        const windows::MessageDialog dialog({.text = "COM Port Error", .choices = choices});
        EXPECT_FALSE(dialog.buttons().isEmpty());
        for (const QAbstractButton* button : dialog.buttons()) {
            EXPECT_TRUE(button->icon().isNull()) << button->text().toStdString();
            EXPECT_NE(button->text(), QString());
        }
    }
}

}  // namespace
}  // namespace nimbry::test
