#include "windows/value_box.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/svg_pictures.h"
#include "windows/tabular_text.h"

namespace nimbry::windows {
namespace {

double font_factor(ValueBox::Style style) {
    switch (style) {
        case ValueBox::Style::card: return 14.0 / 9;
        case ValueBox::Style::clock: return 20.0 / 9;
        case ValueBox::Style::table:
        case ValueBox::Style::plain: break;
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
    const bool fills_its_place = style == Style::card || style == Style::table;
    setSizePolicy(fills_its_place ? QSizePolicy::Expanding : QSizePolicy::Preferred,
                  style == Style::card ? QSizePolicy::Preferred : QSizePolicy::Minimum);
}

QString ValueBox::text() const {
    return platform::unicode(box_.text);
}

QString ValueBox::drawn_text() const {
    return text().trimmed();
}

void ValueBox::show_box(const Box& box) {
    const Box before = std::exchange(box_, box);
    if (before.back != box.back) updateGeometry();
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
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ValueBox::use_colours(ColourTable table) {
    table_ = table;
    update();
}

void ValueBox::set_picture(const QString& name) {
    picture_ = name;
    update();
}

QFont ValueBox::value_font() const {
    return scaled(font(), font_factor(style_));
}

bool ValueBox::has_background() const {
    return style_ == Style::card || style_ == Style::table || looks().mark != BoxMark::none;
}

int ValueBox::padding() const {
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
    return tabular_width(value_font(), drawn_text());
}

QSize ValueBox::minimumSizeHint() const {
    const QFont font = value_font();
    const int text = static_cast<int>(std::ceil(tabular_width(font, sample_)));
    // Room for the mark of an alarm is kept where there can be one, so that an alarm does not make the window grow.
    const bool can_alarm = box_.back != nimbry::Box{}.back;
    return {text + 2 * padding() + (can_alarm ? mark_size() + 4 : 0),
            QFontMetrics(font).height() + (style_ == Style::card ? 4 : 2)};
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
    if (hasFocus() && shows_focus_) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }

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
    painter.setFont(font);
    const bool on_panel = !has_background();
    painter.setPen(on_panel ? palette().color(QPalette::WindowText) : colours.text);
    const QFontMetricsF metrics(font);
    draw_tabular(painter, {static_cast<double>(padding()), (height() + metrics.ascent() - metrics.descent()) / 2},
                 drawn_text());
}

bool ValueBox::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        show_tip(static_cast<QHelpEvent*>(event)->globalPos());
        return true;
    }
    return QWidget::event(event);
}

// Tips are plain text: one that begins like markup ("<!--empty-->") is shown as it stands.
void ValueBox::show_tip(const QPoint& global) {
    QString tip = toolTip();
    if (Qt::mightBeRichText(tip)) tip = tip.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
    QToolTip::showText(global, tip, this);
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
    if (event->type() == QEvent::FontChange) updateGeometry();
    QWidget::changeEvent(event);
}

}  // namespace nimbry::windows
