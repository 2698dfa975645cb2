#include "windows/location_window.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/text_bytes.h"
#include "windows/palette_colours.h"
#include "windows/world_map.h"

namespace nimbry::windows {
namespace {

/// The label behind a box that says what is counted in it.
QString mark_of(const QString& box) {
    return QStringLiteral("lbl") + box;
}

}  // namespace

LocationWindow::LocationWindow(const WeatherState& state, std::function<void(const LocationDialog&)> accepted,
                               QWidget* parent)
    : SetupDialog("NimbryLatlong", QStringLiteral("Nimbry Location"), parent),
      state_(state),
      accepted_(std::move(accepted)),
      refusal_(new QLabel),
      map_(new WorldMap) {
    auto* decimal = new QCheckBox(QStringLiteral("&Decimal degrees"));
    decimal->setObjectName(QStringLiteral("Check3"));
    auto* boxes = new QGridLayout;
    boxes->setVerticalSpacing(8);
    boxes->setHorizontalSpacing(6);
    add_coordinate(*boxes, "&Latitude", {"Text7", "Text3", "Text4"}, "Check1", "&South");
    add_coordinate(*boxes, "Lon&gitude", {"Text8", "Text5", "Text6"}, "Check2", "&East");
    refusal_->setObjectName(QStringLiteral("lblRefusal"));
    refusal_->setTextFormat(Qt::PlainText);
    refusal_->setForegroundRole(QPalette::Link);

    auto* input = new QVBoxLayout;
    input->setSpacing(8);
    input->addWidget(decimal);
    input->addSpacing(8);
    input->addLayout(boxes);
    input->addWidget(refusal_);
    input->addStretch();
    auto* row = new QHBoxLayout;
    row->setSpacing(20);
    row->addLayout(input);
    row->addWidget(map_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 12);
    column->setSpacing(12);
    column->addLayout(row, 1);
    column->addLayout(button_row(QStringLiteral("OK")));

    // The way of input is no value of its own: it changes what the boxes hold.
    std::vector<DialogControl> controls = dialog_controls(values_);
    std::erase_if(controls, [](const DialogControl& control) { return control.name == "Check3"; });
    bind(controls);
    connect(decimal, &QCheckBox::clicked, this, [this] {
        change_way_of_input(values_);
        show_values();
        show_way_of_input();
    });
    load();
}

void LocationWindow::add_coordinate(QGridLayout& grid, const char* caption, std::initializer_list<const char*> boxes,
                                    const char* hemisphere_box, const char* hemisphere) {
    const int row = grid.rowCount();
    auto* label = new QLabel(QString::fromLatin1(caption));
    grid.addWidget(label, row, 0);
    int column = 1;
    const char* const marks[] = {"\u00B0", "\u2032", "\u2033"};  // degrees, minutes, seconds
    const char* const* mark = marks;
    for (const char* name : boxes) {
        auto* box = new QLineEdit;
        box->setObjectName(QString::fromLatin1(name));
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("151.214900 ")));
        if (column == 1) label->setBuddy(box);
        grid.addWidget(box, row, column++);
        auto* unit = new QLabel(QString::fromUtf8(*mark++));
        unit->setObjectName(mark_of(box->objectName()));
        grid.addWidget(unit, row, column++);
    }
    auto* check = new QCheckBox(QString::fromLatin1(hemisphere));
    check->setObjectName(QString::fromLatin1(hemisphere_box));
    grid.addWidget(check, row, column);
}

void LocationWindow::load() {
    values_ = location_dialog(state_.settings.Latitude, state_.settings.Longitude);
    show_values();
    show_way_of_input();
    refusal_->clear();
    show_place();
}

void LocationWindow::edited() {
    refusal_->clear();
    show_place();
}

bool LocationWindow::commit() {
    LocationTexts texts;
    if (const auto refusal = read_location(values_, texts)) {
        refusal_->setText(platform::unicode(refusal->message));
        auto* box = findChild<QLineEdit*>(platform::unicode(refusal->control));
        box->setFocus(Qt::OtherFocusReason);
        box->selectAll();
        return false;
    }
    accepted_(values_);
    return true;
}

void LocationWindow::show_way_of_input() {
    findChild<QCheckBox*>(QStringLiteral("Check3"))->setChecked(values_.Check3);
    for (QLineEdit* box : findChildren<QLineEdit*>()) {
        const std::string name = box->objectName().toStdString();
        const QString hint = platform::unicode(location_hint(values_, name));
        box->setPlaceholderText(QStringLiteral("0"));
        box->setToolTip(hint);
        box->setAccessibleName(hint);
        const bool used = !values_.Check3 || name == "Text7" || name == "Text8";
        box->setVisible(used);
        findChild<QLabel*>(mark_of(box->objectName()))->setVisible(used);
    }
}

void LocationWindow::show_place() {
    LocationTexts texts;
    if (read_location(values_, texts)) return map_->mark({});
    map_->mark(entered_location(texts.latitude, texts.longitude));
}

}  // namespace nimbry::windows
