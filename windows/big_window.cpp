#include "windows/big_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <string>
#include <utility>

#include "engine/displays/box_list.h"
#include "windows/accessibility.h"
#include "windows/area_keys.h"
#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
#include "windows/card_group.h"
#include "windows/reading_card.h"
#include "windows/screen_room.h"
#include "windows/svg_pictures.h"
#include "windows/tabular_text.h"

namespace nimbry::windows {
namespace {

constexpr QSize usual_size(760, 620);
constexpr int gap = 8;

/// One sample for all cards: their type is then of one size, as they are themselves.
const QString longest_reading = QStringLiteral("-104.8 km/h");

QString spoken_name(const BigReading& reading) {
    QString caption = caption_text(std::string(reading.of).c_str());
    if (reading.name == "txtDisWGD") return caption + QStringLiteral(", gust");
    if (reading.name == "txtWAD") return caption + QStringLiteral(", average");
    return caption;
}

}  // namespace

BigWindow::BigWindow(const WeatherState& state, Actions actions, QWidget* parent)
    : QWidget(parent, Qt::Window), state_(state), actions_(std::move(actions)) {
    setObjectName(QStringLiteral("NimbryBIG"));
    setWindowTitle(QStringLiteral("Nimbry Large Text"));
    setWindowIcon(application_icon());
    install_accessibility();

    ValueBox* clock = bound_box(binding_, state_.big.txtDisTimDat, "txtDisTimDat", ValueBox::Style::banner,
                                QStringLiteral("00:00:00  Sep  30"));
    clock->set_label(QStringLiteral("Time and date"));
    auto* head = new QWidget;
    auto* head_row = new QHBoxLayout(head);
    head_row->setContentsMargins(0, 0, 0, 0);
    head_row->addWidget(clock);
    auto* readings = new QWidget;
    auto* grid = new QGridLayout(readings);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(gap);
    add_readings(*grid);
    QWidget* line = marquee_line();

    auto* opens = new QPushButton(QStringLiteral("Marquee..."));
    opens->setObjectName(QStringLiteral("cmdMarquee"));
    connect(opens, &QPushButton::clicked, this, [this] {
        if (actions_.marquee) actions_.marquee();
    });
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new CaptionLabel(QStringLiteral("F11 full screen, Esc closes")));
    row->addStretch();
    row->addWidget(opens);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 8);
    column->setSpacing(gap);
    column->addWidget(head, 3);
    column->addWidget(readings, 20);
    column->addWidget(line, 4);
    column->addWidget(buttons);
    add_actions();
    new AreaKeys(*this, {head, readings, line, buttons});
    resize(size_on_screen(usual_size, *this));
    binding_.refresh();
}

void BigWindow::add_readings(QGridLayout& grid) {
    int place = 0;
    for (const BigReading& reading : big_readings()) {
        const std::string of(reading.of), name(reading.name);
        const Box& box = *find_box(state_, of);
        ValueBox* shown = bound_box(binding_, box, name.c_str(), ValueBox::Style::large, longest_reading);
        shown->set_label(spoken_name(reading));
        if (name == "txtDisBarTrend") bind_trend_picture(binding_, box, shown);
        auto* caption = new CaptionLabel(caption_text(of.c_str()));
        captions_.push_back(caption);
        grid.addWidget(new ReadingCard(caption, {shown}), place / 2, place % 2);
        grid.setRowStretch(place / 2, 1);
        ++place;
    }
    grid.setColumnStretch(0, 1);
    grid.setColumnStretch(1, 1);
}

QWidget* BigWindow::marquee_line() {
    auto* label = bound_box(binding_, state_.big.Label9, "Label9", ValueBox::Style::banner,
                            QStringLiteral("Maximum wind gust in last hour"));
    auto* value = bound_box(binding_, state_.big.Label10, "Label10", ValueBox::Style::banner, longest_reading);
    label->set_label(QStringLiteral("Reading"));
    binding_.bind(state_.big.Label10, [label, value](const Box& box) {
        value->setVisible(!box.text.empty());
        value->set_label(label->text().trimmed());
    });

    auto* panel = new CardGroup(QString());
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(12, 4, 12, 4);
    row->setSpacing(gap + 2 * 12);  // the value begins where those of the right column do
    row->addWidget(label, 1);
    row->addWidget(value, 1);
    return panel;
}

void BigWindow::add_actions() {
    const auto add = [this](const char* name, const char* caption, const QKeySequence& key, auto act) {
        auto* action = new QAction(QString::fromLatin1(caption), this);
        action->setObjectName(QString::fromLatin1(name));
        if (!key.isEmpty()) action->setShortcut(key);
        connect(action, &QAction::triggered, this, act);
        addAction(action);
    };
    add("actMarquee", "&Marquee...", {}, [this] {
        if (actions_.marquee) actions_.marquee();
    });
    add("actFullScreen", "&Full Screen", Qt::Key_F11, [this] { toggle_full_screen(); });
    add("actClose", "&Close", Qt::Key_Escape, [this] { close(); });
    // Not every window system makes the menu's key of it.
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), this), &QShortcut::activated, this, [this] {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, rect().center(), mapToGlobal(rect().center()));
        contextMenuEvent(&event);
    });
}

void BigWindow::present() {
    binding_.refresh();
    show();
    raise();
    activateWindow();
}

void BigWindow::refresh() {
    if (isVisible()) binding_.refresh();
}

void BigWindow::toggle_full_screen() {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void BigWindow::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    setWindowState(windowState() & ~Qt::WindowFullScreen);
    if (actions_.closed) actions_.closed();
}

void BigWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const double grown = std::min(width() / static_cast<double>(usual_size.width()),
                                  height() / static_cast<double>(usual_size.height()));
    for (CaptionLabel* caption : captions_) caption->setFont(scaled(font(), std::max(1.0, 1.2 * grown)));
}

void BigWindow::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menu_NimbryBIG"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    menu->popup(event->globalPos());
}

}  // namespace nimbry::windows
