#include "windows/setup_dialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <algorithm>
#include <variant>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/setting_bar.h"

namespace nimbry::windows {

namespace {

/// Tab comes to a group of options at the chosen one; Qt would come to the first, whatever is chosen.
void tab_to_chosen_options(const QWidget& window) {
    for (QRadioButton* option : window.findChildren<QRadioButton*>())
        option->setFocusPolicy(option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

}  // namespace

SetupDialog::SetupDialog(const char* name, const QString& title, QWidget* parent) : QDialog(parent) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(title);
    connect(this, &QDialog::finished, this, [this] { closed(); });
}

void SetupDialog::present() {
    const bool opens = !isVisible();
    if (opens) {
        load();
        tab_to_chosen_options(*this);
    }
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
        if (auto* const* list = std::get_if<std::vector<std::string>*>(&control.value)) bind_list(name, *list);
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
    const auto typed = [this, value](const QString& text) {
        *value = platform::engine_text(text);
        edited();
    };
    if (auto* choice = findChild<QComboBox*>(name); choice != nullptr) {
        connect(choice, &QComboBox::editTextChanged, this, typed);
        shows_.push_back([choice, value] {
            const QSignalBlocker silent(choice);
            const QString text = platform::unicode(*value);
            if (choice->currentText() == text) return;
            choice->setEditText(text);
            choice->lineEdit()->setCursorPosition(0);  // of a long text the beginning is shown
        });
        return;
    }
    auto* line = findChild<QLineEdit*>(name);
    Q_ASSERT(line != nullptr);
    connect(line, &QLineEdit::textEdited, this, typed);
    shows_.push_back([line, value] {
        // Its cursor stays where a person is typing.
        if (const QString text = platform::unicode(*value); line->text() != text) line->setText(text);
    });
}

void SetupDialog::bind_list(const QString& name, const std::vector<std::string>* value) {
    auto* list = findChild<QListWidget*>(name);
    Q_ASSERT(list != nullptr);
    shows_.push_back([list, value] {
        QStringList entries;
        for (const std::string& entry : *value) entries.append(platform::unicode(entry));
        QStringList shown;
        for (int row = 0; row < list->count(); ++row) shown.append(list->item(row)->text());
        if (entries == shown) return;
        const int selected = list->currentRow();
        list->clear();
        list->addItems(entries);
        list->setCurrentRow(std::min(selected, list->count() - 1));
    });
}

void SetupDialog::embolden_heads() {
    for (QGroupBox* group : findChildren<QGroupBox*>()) {
        for (QWidget* child : group->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            QFont font = child->font();
            font.setWeight(QFont::Normal);  // said outright, or it would be that of the group
            child->setFont(font);
        }
        QFont bold = group->font();
        bold.setBold(true);
        group->setFont(bold);
    }
}

void SetupDialog::show_window(const SetupWindow& window) {
    setWindowTitle(platform::unicode(window.caption));
    setEnabled(window.enabled);
}

void SetupDialog::show_values() {
    for (const auto& show : shows_) show();
}

QBoxLayout* SetupDialog::button_row(const QString& accept_caption, const char* accept_name) {
    auto* accepts = new QPushButton(accept_caption);
    accepts->setObjectName(QString::fromLatin1(accept_name));
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
