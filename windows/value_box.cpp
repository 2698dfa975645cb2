#include "windows/value_box.h"

#include <QApplication>
#include <QClipboard>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/accessibility.h"
#include "windows/middle_blank.h"
#include "windows/svg_pictures.h"
#include "windows/tabular_text.h"
#include "windows/tip_keys.h"

namespace nimbry::windows {
namespace {

/// Sizes of a table's type, in points where the application's font has 9, and the smaller line that tells the time.
constexpr std::array table_points{10.0, 9.5, 9.0, 8.5, 8.0, 7.5};
constexpr double usual_points = 9;
constexpr double time_line = 0.88;

/// A text in one line, or in two: before " at ", else before the blank nearest to its middle, if it is long.
QStringList lines_of(const QString& text, bool two_lines) {
    constexpr qsizetype short_text = 14;
    qsizetype cut = two_lines ? text.indexOf(QStringLiteral(" at ")) : -1;
    if (two_lines && cut < 0 && text.size() > short_text) cut = middle_blank(text);
    if (cut < 0) return {text};
    return {text.left(cut), text.mid(cut + 1)};
}

QFont line_font(const QFont& font, const QString& line) {
    return line.startsWith(QStringLiteral("at ")) ? scaled(font, time_line) : font;
}

QSizeF size_of(const QFont& font, const QStringList& lines) {
    QSizeF size;
    for (const QString& line : lines) {
        const QFont own = line_font(font, line);
        size = {std::max(size.width(), tabular_width(own, line)), size.height() + QFontMetricsF(own).height()};
    }
    return size;
}

double font_factor(ValueBox::Style style) {
    switch (style) {
        case ValueBox::Style::card: return 14.0 / 9;
        case ValueBox::Style::clock: return 20.0 / 9;
        case ValueBox::Style::table:
        case ValueBox::Style::plain:
        case ValueBox::Style::large:
        case ValueBox::Style::banner: break;
    }
    return 10.0 / 9;
}

}  // namespace

QString full_tip(const Box& box) {
    QString tip = platform::unicode(box.tip);
    if (!box.balloon.empty()) {
        if (!tip.isEmpty()) tip += u'\n';
        tip += platform::unicode(box.balloon).remove(u'\r');
    }
    return tip;
}

ValueBox::ValueBox(const char* name, Style style, const QString& sample, QWidget* parent)
    : QWidget(parent), style_(style), sample_(sample) {
    setObjectName(QString::fromStdString(object_name(name)));
    setFocusPolicy(Qt::ClickFocus);
    const bool fills_its_place = style == Style::card || style == Style::table || fills_its_room();
    setSizePolicy(fills_its_place ? QSizePolicy::Expanding : QSizePolicy::Preferred,
                  style == Style::card ? QSizePolicy::Preferred
                  : fills_its_room()   ? QSizePolicy::Expanding
                                       : QSizePolicy::Minimum);
}

QString ValueBox::text() const {
    return platform::unicode(box_.text);
}

QString ValueBox::drawn_text() const {
    return text().trimmed();
}

void ValueBox::show_box(const Box& box) {
    const Box before = std::exchange(box_, box);
    if (before.back != box.back) {
        setting_.reset();
        updateGeometry();
    }
    const QString tip = full_tip(box);
    setToolTip(tip);
    setAccessibleDescription(tip);
    setVisible(box.visible);
    update();
    announce_if_serious(before);
}

// A screen reader is told of a fault and of an alarm; a value that merely moves on stays silent.
void ValueBox::announce_if_serious(const Box& before) {
    const BoxMark mark = looks().mark;
    if (mark == BoxMark::none || mark == box_colours(before, palette(), table_).mark) return;
    announce(*this);
}

void ValueBox::use_colours(ColourTable table) {
    table_ = table;
    update();
}

void ValueBox::set_picture(const QString& name) {
    picture_ = name;
    update();
}

const ValueBox::Setting& ValueBox::setting() const {
    if (!setting_) setting_ = best_setting();
    return *setting_;
}

ValueBox::Setting ValueBox::best_setting() const {
    if (fills_its_room()) return {filling_factor(), false};
    if (style_ != Style::table) return {font_factor(style_), false};
    for (const double points : table_points) {
        for (const bool two_lines : {false, true}) {
            const QSizeF needed = size_of(scaled(font(), points / usual_points), lines_of(sample_, two_lines));
            if (needed.width() <= width() - 2 * padding() && needed.height() <= height()) {
                return {points / usual_points, two_lines};
            }
        }
    }
    return {table_points.back() / usual_points, true};
}

/// Room for a mark is left, so that an alarm does not make the type smaller, and boxes with and without an alarm have
/// the same.
double ValueBox::filling_factor() const {
    constexpr double air = 0.86;  // of the height
    const double usual = font_factor(style_);
    const auto fit = [this](double factor) {
        const QFont font = scaled(this->font(), factor);
        const double mark = style_ == Style::large ? QFontMetricsF(font).ascent() + 4 : 0;
        const double wide = (width() - 2 * padding()) / (tabular_width(font, sample_) + mark);
        return std::min(wide, air * height() / QFontMetricsF(font).height());
    };
    double factor = usual * std::max(1.0, fit(usual));
    // A font does not grow in exact proportion.
    if (factor > usual) factor = std::max(usual, factor * std::min(1.0, fit(factor) * 0.995));
    return factor;
}

bool ValueBox::can_alarm() const {
    return box_.back != nimbry::Box{}.back;
}

QFont ValueBox::value_font() const {
    return scaled(font(), setting().factor);
}

QStringList ValueBox::drawn_lines() const {
    return lines_of(drawn_text(), setting().two_lines);
}

bool ValueBox::has_background() const {
    return style_ == Style::card || style_ == Style::table || style_ == Style::large || looks().mark != BoxMark::none;
}

int ValueBox::padding() const {
    if (style_ == Style::large) return 12;
    return style_ == Style::card || style_ == Style::table ? 6 : 0;
}

int ValueBox::mark_size() const {
    return QFontMetrics(value_font()).ascent();
}

int ValueBox::marks_width() const {
    const int shown = (picture_.isEmpty() ? 0 : 1) + (looks().mark == BoxMark::none ? 0 : 1);
    return shown * (mark_size() + 4);
}

double ValueBox::room_for_text() const {
    return width() - 2 * padding() - marks_width();
}

double ValueBox::text_width() const {
    return size_of(value_font(), drawn_lines()).width();
}

QSize ValueBox::minimumSizeHint() const {
    if (style_ == Style::table) {
        const QSizeF least = size_of(scaled(font(), table_points.back() / usual_points), lines_of(sample_, true));
        return {static_cast<int>(std::ceil(least.width())) + 2 * padding(),
                static_cast<int>(std::ceil(least.height()))};
    }
    const QFont font = fills_its_room() ? scaled(this->font(), font_factor(style_)) : value_font();
    const int text = static_cast<int>(std::ceil(tabular_width(font, sample_)));
    // Room for the mark of an alarm is kept where there can be one, so that an alarm does not make the window grow.
    const int mark = can_alarm() || style_ == Style::large ? QFontMetrics(font).ascent() + 4 : 0;
    return {text + 2 * padding() + mark, QFontMetrics(font).height() + 2};
}

QSize ValueBox::sizeHint() const {
    const QSize least = minimumSizeHint();
    return {least.width(), least.height() + (style_ == Style::card ? 8 : 4)};
}

void ValueBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const BoxColours colours = looks();

    if (has_background()) {
        const double line = colours.bold_border ? 2 : 1;
        painter.setPen(QPen(colours.border, line));
        painter.setBrush(colours.back);
        painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2), 4, 4);
    }
    if (hasFocus() && shows_focus_) draw_focus_ring(painter, *this);

    int right = width() - padding();
    const auto draw_picture = [&](const QString& name, const QColor& colour) {
        const int size = mark_size();
        right -= size;
        painter.drawPixmap(right, (height() - size) / 2, tinted_picture(name, size, devicePixelRatioF(), colour));
        right -= 4;
    };
    if (colours.mark == BoxMark::fault) draw_picture(QStringLiteral("mark-fault"), colours.text);
    if (colours.mark == BoxMark::alarm) draw_picture(QStringLiteral("mark-alarm"), colours.border);
    if (!picture_.isEmpty()) draw_picture(picture_, muted_text(palette()));

    QFont font = value_font();
    const double wide = text_width(), room = room_for_text();
    if (wide > room && wide > 0) font = scaled(font, std::max(room, 1.0) / wide);
    const bool on_panel = !has_background();
    painter.setPen(on_panel ? palette().color(QPalette::WindowText) : colours.text);
    const QStringList lines = drawn_lines();
    double top = (height() - size_of(font, lines).height()) / 2;
    for (const QString& line : lines) {
        painter.setFont(line_font(font, line));
        const QFontMetricsF metrics(painter.font());
        draw_tabular(painter, {static_cast<double>(padding()), top + metrics.ascent()}, line);
        top += metrics.height();
    }
}

bool ValueBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        show_tip(static_cast<QHelpEvent*>(event)->globalPos());
        return true;
    }
    return QWidget::event(event);
}

void ValueBox::show_tip(const QPoint& global) {
    if (!open_popup_ || !open_popup_()) show_plain_tip(global, toolTip(), *this);
}

void ValueBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setText(text());
    } else if (event->key() == Qt::Key_Space) {
        show_tip(mapToGlobal(QPoint(width() / 2, height())));
    } else if (event->key() == Qt::Key_Escape && QToolTip::isVisible()) {
        QToolTip::hideText();
    } else {
        QWidget::keyPressEvent(event);
    }
}

// A window that is merely opened does not ring its first box.
void ValueBox::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason) shows_focus_ = true;
    QWidget::focusInEvent(event);
}

void ValueBox::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason) shows_focus_ = false;
    QWidget::focusOutEvent(event);
}

void ValueBox::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        setting_.reset();
        updateGeometry();
    }
    QWidget::changeEvent(event);
}

void ValueBox::resizeEvent(QResizeEvent* event) {
    setting_.reset();
    QWidget::resizeEvent(event);
}

}  // namespace nimbry::windows
