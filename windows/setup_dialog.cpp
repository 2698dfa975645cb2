#include "windows/setup_dialog.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <variant>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/setting_bar.h"

namespace nimbry::windows {

SetupDialog::SetupDialog(const char* name, const QString& title, QWidget* parent) : QDialog(parent) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(title);
    connect(this, &QDialog::finished, this, [this] { closed(); });
}

void SetupDialog::present() {
    const bool opens = !isVisible();
    if (opens) load();
    show();
    raise();
    activateWindow();
    if (opens) opened();
}

void SetupDialog::bind(const std::vector<DialogControl>& controls) {
    for (const DialogControl& control : controls) {
        const QString name = QString::fromStdString(object_name(control.name));
        if (bool* const* flag = std::get_if<bool*>(&control.value)) bind_flag(name, *flag);
        if (float* const* number = std::get_if<float*>(&control.value)) bind_number(name, *number);
        if (std::string* const* text = std::get_if<std::string*>(&control.value)) bind_text(name, *text);
    }
}

void SetupDialog::bind_flag(const QString& name, bool* value) {
    auto* button = findChild<QAbstractButton*>(name);
    Q_ASSERT(button != nullptr);
    connect(button, &QAbstractButton::toggled, this, [this, value](bool on) {
        *value = on;
        edited();
    });
    shows_.push_back([button, value] {
        const QSignalBlocker silent(button);
        button->setChecked(*value);
    });
}

void SetupDialog::bind_number(const QString& name, float* value) {
    auto* bar = findChild<SettingBar*>(name);
    Q_ASSERT(bar != nullptr);
    connect(bar, &SettingBar::moved, this, [this, value](float now) {
        *value = now;
        edited();
    });
    shows_.push_back([bar, value] { bar->show_value(*value); });
}

void SetupDialog::bind_text(const QString& name, std::string* value) {
    auto* line = findChild<QLineEdit*>(name);
    Q_ASSERT(line != nullptr);
    connect(line, &QLineEdit::textEdited, this, [this, value](const QString& text) {
        *value = platform::engine_text(text);
        edited();
    });
    shows_.push_back([line, value] {
        // Its cursor stays where a person is typing.
        if (const QString text = platform::unicode(*value); line->text() != text) line->setText(text);
    });
}

void SetupDialog::show_values() {
    for (const auto& show : shows_) show();
}

QBoxLayout* SetupDialog::button_row(const QString& accept_caption) {
    auto* accepts = new QPushButton(accept_caption);
    accepts->setObjectName(QStringLiteral("Command1"));
    accepts->setDefault(true);
    connect(accepts, &QPushButton::clicked, this, [this] {
        if (commit()) accept();
    });
    auto* cancels = new QPushButton(QStringLiteral("Cancel"));
    cancels->setObjectName(QStringLiteral("cmdCancel"));
    cancels->setAutoDefault(false);
    connect(cancels, &QPushButton::clicked, this, &QDialog::reject);

    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(accepts);
    row->addWidget(cancels);
    return row;
}

}  // namespace nimbry::windows
