#include "windows/comms_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "engine/derived/number_text.h"
#include "platform/text_bytes.h"
#include "windows/content_scroll.h"
#include "windows/screen_room.h"
#include "windows/setting_bar.h"

namespace nimbry::windows {
namespace {

template <class Widget>
Widget* named(Widget* widget, const char* name, const QString& spoken = {}) {
    widget->setObjectName(QString::fromLatin1(name));
    if (!spoken.isEmpty()) widget->setAccessibleName(spoken);
    return widget;
}

QString port_caption(int number) {
    return QStringLiteral("COM%1").arg(number);
}

QPushButton* small_button(const char* name, const QString& caption) {
    auto* button = named(new QPushButton(caption), name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

CommsWindow::CommsWindow(const WeatherState& state, Actions actions, QWidget* parent)
    : SetupDialog("Form2", platform::unicode(state.setup.Form2.caption), parent),
      state_(state),
      actions_(std::move(actions)),
      draft_(comms_dialog(state.settings)),
      minutes_bar_(new SettingBar(least_log_minutes, most_log_minutes, 1)) {
    auto* content = new QWidget;
    auto* groups = new QVBoxLayout(content);
    groups->setContentsMargins(16, 16, 16, 0);
    groups->setSpacing(12);
    groups->addWidget(port_group());
    groups->addWidget(network_group(), 1);
    groups->addWidget(log_group());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 12);
    column->setSpacing(12);
    column->addWidget(new ContentScroll(content));
    QBoxLayout* buttons = button_row(QStringLiteral("OK"));
    buttons->setContentsMargins(16, 0, 16, 0);
    column->addLayout(buttons);

    embolden_heads();
    bind(dialog_controls(draft_.values));
    connect_role("Check1", &CommsDialog::Check1);
    connect_role("Check2", &CommsDialog::Check2);
    set_tab_order();
    load();
    resize(size_on_screen(sizeHint(), *this));
}

QGroupBox* CommsWindow::port_group() {
    auto* group = new QGroupBox(QStringLiteral("Serial port"));
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(1, 1);
    for (int number = 1; number <= 4; ++number) {
        auto* option = new QRadioButton(QStringLiteral("COM&%1").arg(number));
        option->setObjectName(QStringLiteral("Option%1").arg(number));
        auto* device = new QComboBox;
        device->setObjectName(QStringLiteral("SerialPort%1").arg(number));
        device->setAccessibleName(QStringLiteral("Device of ") + port_caption(number));
        device->setEditable(true);
        device->setInsertPolicy(QComboBox::NoInsert);
        device->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        device->setMinimumContentsLength(48);
        grid->addWidget(option, number - 1, 0);
        grid->addWidget(device, number - 1, 1);
    }
    return group;
}

QGroupBox* CommsWindow::network_group() {
    auto* group = new QGroupBox(QStringLiteral("Network"));
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(0, 1);
    grid->addWidget(named(new QCheckBox(QStringLiteral("&Send data to these addresses on the network")), "Check1"), 0,
                    0, 1, 3);
    auto* list = named(new QListWidget, "IPList", QStringLiteral("Addresses that data is sent to"));
    list->setMinimumHeight(7 * list->fontMetrics().height());
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    list->setTabKeyNavigation(false);
    list->installEventFilter(this);
    grid->addWidget(list, 1, 0, 3, 1);
    auto* address = named(new QLineEdit, "txtIP", QStringLiteral("Address to add"));
    address->setPlaceholderText(QStringLiteral("nnn.nnn.nnn.nnn"));
    address->setMinimumWidth(address->fontMetrics().horizontalAdvance(QStringLiteral("255.255.255.2550000")));
    address->installEventFilter(this);
    grid->addWidget(address, 1, 1);
    auto* add = small_button("Command2", QStringLiteral("&Add"));
    connect(add, &QPushButton::clicked, this, &CommsWindow::add_address);
    grid->addWidget(add, 1, 2);
    auto* remove = small_button("Command3", QStringLiteral("&Remove"));
    connect(remove, &QPushButton::clicked, this, &CommsWindow::remove_address);
    grid->addWidget(remove, 2, 2);
    grid->setRowStretch(3, 1);
    grid->addWidget(named(new QCheckBox(QStringLiteral("&Get data from the network")), "Check2"), 4, 0, 1, 3);
    return group;
}

QGroupBox* CommsWindow::log_group() {
    auto* group = new QGroupBox(QStringLiteral("Log"));
    auto* row = new QHBoxLayout(group);
    row->addWidget(named(new QCheckBox(QStringLiteral("&Write a data log file at")), "Check3"));
    const QString spoken = QStringLiteral("Minutes between two lines of the data log");
    auto* minutes = named(new QLineEdit, "TxtLogMins", spoken);
    minutes->setFixedWidth(minutes->fontMetrics().horizontalAdvance(QStringLiteral("000000")));
    row->addWidget(minutes);
    row->addWidget(named(minutes_bar_, "hsbLogMins", spoken), 1);
    row->addWidget(new QLabel(QStringLiteral("minutes")));
    connect(minutes_bar_, &SettingBar::moved, this, [this](float value) {
        draft_.values.TxtLogMins = numtext(value);
        show_values();
    });
    return group;
}

void CommsWindow::connect_role(const char* name, bool CommsDialog::*role) {
    connect(findChild<QCheckBox*>(QString::fromLatin1(name)), &QCheckBox::clicked, this, [this, role](bool on) {
        if (on) actions_.ticked_role(draft_.values.*role);
        show_all();
    });
}

void CommsWindow::set_tab_order() {
    QWidget* before = nullptr;
    for (const char* name : {"Option1", "SerialPort1", "Option2", "SerialPort2", "Option3", "SerialPort3", "Option4",
                             "SerialPort4", "Check1", "IPList", "txtIP", "Command2", "Command3", "Check2", "Check3",
                             "TxtLogMins", "hsbLogMins", "Command1", "cmdCancel"}) {
        auto* widget = findChild<QWidget*>(QString::fromLatin1(name));
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
}

void CommsWindow::load() {
    draft_ = DialogDraft<CommsDialog>(comms_dialog(state_.settings));
    QStringList devices;
    for (const std::string& device : actions_.serial_devices()) devices.append(platform::unicode(device));
    for (int number = 1; number <= 4; ++number) {
        auto* box = findChild<QComboBox*>(QStringLiteral("SerialPort%1").arg(number));
        const QSignalBlocker silent(box);
        box->clear();
        box->addItems(devices);
    }
    show_all();
}

bool CommsWindow::commit() {
    if (actions_.accepted(draft_.values)) return true;
    show_all();
    return false;
}

void CommsWindow::refresh() {
    if (!isVisible()) return;
    if (draft_.follow(comms_dialog(state_.settings))) show_all();
    show_window(state_.setup.Form2);
}

bool CommsWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool enters = key == Qt::Key_Return || key == Qt::Key_Enter;
        // With an address in the field Enter adds it; accepting a half-made list is not what is meant.
        if (watched->objectName() == QStringLiteral("txtIP") && enters && !draft_.values.txtIP.empty()) {
            add_address();
            return true;
        }
        if (watched->objectName() == QStringLiteral("IPList") && key == Qt::Key_Delete) {
            remove_address();
            return true;
        }
    }
    return SetupDialog::eventFilter(watched, event);
}

void CommsWindow::show_all() {
    show_values();
    show_what_follows();
}

void CommsWindow::show_what_follows() {
    minutes_bar_->show_value(static_cast<float>(whole_number(draft_.values.TxtLogMins)));
    for (QWidget* widget : findChildren<QWidget*>()) {
        const std::string name = widget->objectName().toStdString();
        if (!name.empty() && name.rfind("qt_", 0) != 0) widget->setEnabled(is_enabled(draft_.values, name));
    }
}

void CommsWindow::add_address() {
    actions_.add_address(draft_.values);
    show_all();
    findChild<QWidget*>(QStringLiteral("txtIP"))->setFocus();
}

void CommsWindow::remove_address() {
    nimbry::remove_address(draft_.values, findChild<QListWidget*>(QStringLiteral("IPList"))->currentRow());
    show_all();
}

}  // namespace nimbry::windows
