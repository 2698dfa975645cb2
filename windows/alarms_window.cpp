#include "windows/alarms_window.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>
#include <utility>

#include "platform/text_bytes.h"
#include "windows/content_scroll.h"
#include "windows/screen_room.h"
#include "windows/setting_bar.h"

namespace nimbry::windows {
namespace {

QString label_name(const AlarmRow& row) {
    return QStringLiteral("lbl") + platform::unicode(row.key);
}

/// A caption as it is spoken: without the mark of its letter and the dots that stand for the bar.
QString spoken(QString caption) {
    return caption.remove(u'&').remove(QStringLiteral(" ..."));
}

}  // namespace

AlarmsWindow::AlarmsWindow(const WeatherState& state, std::function<void(const AlarmsDialog&)> accepted,
                           QWidget* parent)
    : SetupDialog("frmAlarms", QStringLiteral("Nimbry Alarms Setup"), parent),
      state_(state),
      accepted_(std::move(accepted)),
      draft_(state.alarms.frmAlarms) {
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    add_rows(*grid);

    // On a screen that is too small for all rows they scroll; the buttons stay.
    auto* scroll = new ContentScroll(content);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 12);
    column->addWidget(scroll);
    QBoxLayout* buttons = button_row(QStringLiteral("OK"));
    buttons->setContentsMargins(16, 0, 16, 0);
    column->addLayout(buttons);

    bind(dialog_controls(draft_.values));
    load();
    // Other units and another changeover have somewhat longer texts.
    const QSize rows = content->sizeHint() + QSize(4 * fontMetrics().averageCharWidth(), 0);
    scroll->setMinimumWidth(rows.width() + scroll->verticalScrollBar()->sizeHint().width());
    resize(size_on_screen({scroll->minimumWidth() + 60, rows.height() + buttons->sizeHint().height() + 24}, *this));
}

void AlarmsWindow::add_rows(QGridLayout& grid) {
    add_heading(grid, "Outdoor");
    for (const AlarmId id : {AlarmId::ATempHi, AlarmId::ATempLo, AlarmId::AHumHi, AlarmId::AHumLo}) add_row(grid, id);
    add_heading(grid, "Barometer");
    for (const AlarmId id : {AlarmId::ABarHi, AlarmId::ABarLo}) add_row(grid, id);
    add_heading(grid, "Wind");
    add_row(grid, AlarmId::AWindHi);
    add_heading(grid, "Rain");
    for (const AlarmId id : {AlarmId::ARainHi, AlarmId::ARainAm}) add_row(grid, id);
    add_heading(grid, "Dew point");
    for (const AlarmId id : {AlarmId::ADewHi, AlarmId::ADewLo}) add_row(grid, id);
    add_switch(grid, "chkADewCur", "Alarm if Dew Point r&eaches the Outdoor Temperature");
    add_heading(grid, "Indoor");
    for (const AlarmId id : {AlarmId::AItempHi, AlarmId::AItempLo}) add_row(grid, id);
    add_heading(grid, "On an alarm");
    add_switch(grid, "chkASound", "Play the alarm &sound");
    add_switch(grid, "chkAlarmMail", "Send the alarm e&mail");
    grid.setRowStretch(grid.rowCount(), 1);
}

void AlarmsWindow::add_heading(QGridLayout& grid, const char* text) {
    const int row = grid.rowCount();
    auto* heading = new QLabel(QString::fromLatin1(text));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    if (row > 1) heading->setContentsMargins(0, 8, 0, 0);
    grid.addWidget(heading, row, 0, 1, 3);
}

void AlarmsWindow::add_row(QGridLayout& grid, AlarmId id) {
    const AlarmRow& alarm = alarm_row(id);
    const AlarmRange range = range_of(alarm.quantity);
    auto* check = new QCheckBox;
    check->setObjectName(platform::unicode(alarm.check_box));
    auto* bar = new SettingBar(range.first, range.last, range.steps_per_unit);
    bar->setObjectName(platform::unicode(alarm.scroll_bar));
    bar->setMinimumWidth(160);
    auto* value = new QLabel;
    value->setObjectName(label_name(alarm));
    value->setTextFormat(Qt::PlainText);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("39.37 In./Hr")));

    const int row = grid.rowCount();
    grid.addWidget(check, row, 0);
    grid.addWidget(bar, row, 1, Qt::AlignVCenter);
    grid.addWidget(value, row, 2);
}

void AlarmsWindow::add_switch(QGridLayout& grid, const char* name, const char* caption) {
    auto* check = new QCheckBox(QString::fromLatin1(caption));
    check->setObjectName(QString::fromLatin1(name));
    grid.addWidget(check, grid.rowCount(), 0, 1, 3);
}

void AlarmsWindow::load() {
    draft_ = DialogDraft<AlarmsDialog>(state_.alarms.frmAlarms);
    show_values();
    show_texts();
}

void AlarmsWindow::refresh() {
    if (!isVisible()) return;
    if (draft_.follow(state_.alarms.frmAlarms)) show_values();
    show_texts();
}

void AlarmsWindow::show_texts() {
    int n = 0;
    for (const AlarmRow& row : alarm_rows()) {
        const QString caption = platform::unicode(alarm_caption(static_cast<AlarmId>(n++), state_.settings));
        const QString value =
            platform::unicode(threshold_text(row.quantity, draft_.values.*row.threshold, state_.units));
        findChild<QCheckBox*>(platform::unicode(row.check_box))->setText(caption);
        findChild<QLabel*>(label_name(row))->setText(value);
        auto* bar = findChild<SettingBar*>(platform::unicode(row.scroll_bar));
        bar->setAccessibleName(spoken(caption));
        bar->setAccessibleDescription(value);
    }
}

}  // namespace nimbry::windows
