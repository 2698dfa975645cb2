#include "windows/form1.h"

#include <QAction>
#include <QCloseEvent>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "engine/displays/box_list.h"
#include "engine/displays/conversion_popup.h"
#include "platform/text_bytes.h"
#include "windows/accessibility.h"
#include "windows/area_keys.h"
#include "windows/button_row.h"
#include "windows/card_group.h"
#include "windows/conditions_row.h"
#include "windows/conversion_tip.h"
#include "windows/extremes_table.h"
#include "windows/graphs_group.h"
#include "windows/screen_room.h"
#include "windows/status_header.h"
#include "windows/status_pill.h"
#include "windows/svg_pictures.h"
#include "windows/tray_icon.h"
#include "windows/value_box.h"

namespace nimbry::windows {
namespace {

constexpr QSize ideal_size(1180, 800);
constexpr int frame_ms = 16;
constexpr int extremes_share = 55, graphs_share = 45;

QSplitter* lower_row(ExtremesTable* extremes, GraphsGroup* graphs) {
    auto* row = new QSplitter(Qt::Horizontal);
    row->setObjectName(QStringLiteral("lower_row"));
    row->setChildrenCollapsible(false);
    row->setHandleWidth(8);
    row->addWidget(extremes);
    row->addWidget(graphs);
    row->setStretchFactor(0, extremes_share);
    row->setStretchFactor(1, graphs_share);
    row->setSizes({extremes_share * 10, graphs_share * 10});
    return row;
}

}  // namespace

Form1::Form1(const WeatherState& state, Actions actions, std::function<bool()> has_tray)
    : state_(state), actions_(std::move(actions)) {
    setObjectName(QStringLiteral("Form1"));
    setWindowIcon(application_icon());
    install_accessibility();
    const auto hide = with_click([this] { hide_now(); });
    actions_.menu["mnuHideNow"] = hide;
    for (const auto& [name, open] : actions_.opens) actions_.menu[name] = with_click(open);
    tray_ = new TrayIcon(state_.menu, binding_,
                         {.hide = hide, .restore = with_click([this] { restore(); }), .clicked = [this] { restore(); }},
                         std::move(has_tray), this);

    build();
    add_shortcuts();
    add_conversions();
    binding_.bind(state_.window.caption, [this](const std::string& text) { setWindowTitle(platform::unicode(text)); });
    binding_.bind_result([this] { return std::pair(state_.window.minimised, state_.window.in_tray); },
                         [this](const std::pair<bool, bool>& place) {
                             if (isVisible() || in_tray_) take_place(place.first, place.second);
                         });
    frame_.setSingleShot(true);
    frame_.setInterval(frame_ms);
    connect(&frame_, &QTimer::timeout, this, &Form1::refresh);
    resize(size_on_screen(ideal_size, *this));
    refresh();
}

// What lies in the window refers to its actions and goes before them.
Form1::~Form1() {
    delete takeCentralWidget();
}

std::function<void()> Form1::with_click(std::function<void()> act) const {
    return [this, act = std::move(act)] {
        if (actions_.click) actions_.click();
        act();
    };
}

void Form1::build() {
    auto* bar = new MainMenuBar(state_, actions_.menu, binding_, this);
    setMenuBar(bar);

    auto* header = new StatusHeader(state_.panel, binding_);
    auto* conditions = new ConditionsRow(state_, binding_);
    auto* extremes = new ExtremesTable(state_.panel, binding_);
    auto* graphs = new GraphsGroup(state_, actions_.graphs, binding_);
    auto* buttons = new ButtonRow(state_.menu, *bar, binding_);

    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(8, 4, 8, 8);
    column->setSpacing(6);
    column->addWidget(header);
    column->addWidget(conditions, 5);
    column->addWidget(lower_row(extremes, graphs), 7);
    column->addWidget(buttons);

    auto* scroll = new QScrollArea;
    scroll_in(*scroll, content);
    setCentralWidget(scroll);

    std::vector<QWidget*> areas{header};
    for (CardGroup* group : conditions->groups()) areas.push_back(group);
    areas.push_back(extremes);
    areas.push_back(graphs);
    areas.push_back(buttons);
    new AreaKeys(*this, areas);
}

void Form1::add_shortcuts() {
    connect(new QShortcut(QKeySequence(Qt::Key_F10), this), &QShortcut::activated, this, [this] {
        menuBar()->setFocus(Qt::MenuBarFocusReason);
        menuBar()->setActiveAction(menuBar()->actions().constFirst());
    });
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
            [this] { menuBar()->findChild<QAction*>(QStringLiteral("mnuFHelp"))->trigger(); });
}

void Form1::add_conversions() {
    conversions_ = new ConversionTip(this);
    for (const NamedConstBox& each : named_boxes(state_)) {
        auto* box = findChild<ValueBox*>(QString::fromStdString(object_name(each.name)));
        if (box == nullptr) continue;
        const auto read = [this, name = std::string(each.name)] {
            return state_.menu.mnuCpop.checked ? conversion_popup(state_, name) : std::nullopt;
        };
        box->set_popup([this, box, read] { return conversions_->show_at(*box, read); });
    }
}

void Form1::state_changed() {
    if (!frame_.isActive()) frame_.start();
}

int Form1::refresh() {
    // The tray has gone, and with it the way back.
    if (in_tray_ && !tray_->is_there()) hide_now();
    const int shown = binding_.refresh();
    conversions_->refresh();
    return shown;
}

// The model says how the window is to be: the first cycle minimises it where that is asked for.
void Form1::take_place(bool minimised, bool in_tray) {
    if (!minimised) {
        if (isMinimized() || in_tray_) restore();
    } else if (in_tray) {
        hide_now();
    } else if (!isMinimized()) {
        showMinimized();
    }
}

void Form1::note_place(bool minimised, bool in_tray) {
    in_tray_ = in_tray;
    if (actions_.moved) actions_.moved(minimised, in_tray);
    state_changed();
}

void Form1::restore() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    note_place(false, false);
}

void Form1::hide_now() {
    if (!tray_->is_there()) {
        showMinimized();
        note_place(true, false);
        return;
    }
    hide();
    note_place(true, true);
}

void Form1::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || in_tray_) return;
    note_place(isMinimized(), false);
    // Not from inside the window system's own event.
    if (isMinimized()) QTimer::singleShot(0, this, &Form1::go_to_tray_if_asked);
}

void Form1::go_to_tray_if_asked() {
    if (isMinimized() && state_.menu.mnusystray.checked && tray_->is_there()) hide_now();
}

void Form1::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (actions_.close) actions_.close();
}

void Form1::use_colours(ColourTable table) {
    for (ValueBox* box : findChildren<ValueBox*>()) box->use_colours(table);
    for (StatusPill* pill : findChildren<StatusPill*>()) pill->use_colours(table);
}

void Form1::tell_in_tray(const Balloon& balloon) {
    if ((!isVisible() || isMinimized()) && tray_->is_there()) tray_->message(balloon);
}

QWidget* Form1::widget_of(const std::string& box_name) const {
    return findChild<QWidget*>(QString::fromStdString(object_name(box_name)));
}

}  // namespace nimbry::windows
