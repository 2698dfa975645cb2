#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QToolButton>
#include <QWidget>

namespace nimbry::test {

/// Every label and button of a window that is to be seen has the room that its words ask for.
inline void expect_room_for_words(const QWidget& window) {
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (!button->isVisible() || button->text().isEmpty()) continue;
        EXPECT_LE(button->sizeHint().width(), button->width()) << button->objectName().toStdString();
        EXPECT_LE(button->sizeHint().height(), button->height()) << button->objectName().toStdString();
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty()) continue;
        const std::string name = label->objectName().toStdString() + ": " + label->text().toStdString();
        EXPECT_LE(label->minimumSizeHint().width(), label->width()) << name;
        if (label->wordWrap())
            EXPECT_LE(label->heightForWidth(label->width()), label->height()) << name;
        else
            EXPECT_LE(label->minimumSizeHint().height(), label->height()) << name;
    }
}

}  // namespace nimbry::test
