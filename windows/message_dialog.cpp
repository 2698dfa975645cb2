#include "windows/message_dialog.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>

#include "platform/text_bytes.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {

MessageDialog::MessageDialog(const MessageBox& message, QWidget* parent) : QMessageBox(parent) {
    setObjectName(QStringLiteral("MessageBox"));
    setWindowTitle(platform::unicode(message.title));
    setTextFormat(Qt::PlainText);
    setText(platform::unicode(message.text).remove(u'\r'));
    if (const QString name = notice_picture(platform::unicode(message.icon)); !name.isEmpty()) {
        setIconPixmap(picture(name, 40, devicePixelRatioF()));
    }
    if (!message.detail.empty()) show_detail(message.detail);
    add_buttons(message.choices);
    if (!message.other_choice.empty()) {
        other_ = addButton(platform::unicode(message.other_choice), QMessageBox::ActionRole);
        other_->setObjectName(QStringLiteral("OtherChoice"));
    }
    // A desktop has a picture for some of them only.
    for (QAbstractButton* button : buttons()) button->setIcon({});
    connect(this, &QDialog::finished, this, [this] {
        if (other_ != nullptr && clickedButton() == other_) {
            answer_ = Answer::other;
            return;
        }
        switch (standardButton(clickedButton())) {
            case QMessageBox::Yes: answer_ = Answer::yes; break;
            case QMessageBox::Ok: answer_ = Answer::ok; break;
            case QMessageBox::Retry: answer_ = Answer::retry; break;
            default: break;  // the safe answer stands
        }
    });
}

void MessageDialog::show_detail(const std::string& detail) {
    setInformativeText(platform::unicode(detail));
    // The name of a device may look like a tag.
    auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
    if (label != nullptr) label->setTextFormat(Qt::PlainText);
}

void MessageDialog::add_buttons(Choices choices) {
    switch (choices) {
        case Choices::ok:
            answer_ = Answer::ok;
            setStandardButtons(QMessageBox::Ok);
            setEscapeButton(QMessageBox::Ok);
            return;
        case Choices::ok_cancel:
            answer_ = Answer::cancel;
            setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            setDefaultButton(QMessageBox::Cancel);
            setEscapeButton(QMessageBox::Cancel);
            return;
        case Choices::yes_no:
            answer_ = Answer::no;
            setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            setDefaultButton(QMessageBox::No);
            setEscapeButton(QMessageBox::No);
            return;
        case Choices::retry_cancel:
            answer_ = Answer::cancel;
            setStandardButtons(QMessageBox::Retry | QMessageBox::Cancel);
            setDefaultButton(QMessageBox::Retry);
            setEscapeButton(QMessageBox::Cancel);
            return;
    }
}

}  // namespace nimbry::windows
