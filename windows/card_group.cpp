#include "windows/card_group.h"

#include <QEvent>
#include <QFontMetrics>
#include <QLayout>
#include <QPainter>

#include "windows/palette_colours.h"

namespace nimbry::windows {
namespace {

constexpr int side = 8;

}  // namespace

CardGroup::CardGroup(const QString& title, QWidget* parent) : QWidget(parent), title_(title) {
    setAccessibleName(title);
}

QFont CardGroup::head_font() const {
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

QMargins CardGroup::inner_margins() const {
    return {side, QFontMetrics(head_font()).height() + 7, side, 5};
}

QSize CardGroup::minimumSizeHint() const {
    return QWidget::minimumSizeHint().expandedTo(
        {QFontMetrics(head_font()).horizontalAdvance(title_) + 2 * side, inner_margins().top()});
}

void CardGroup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(panel_line(palette()), 1));
    painter.setBrush(panel_back(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);

    painter.setFont(head_font());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QPointF(side, 4 + QFontMetricsF(head_font()).ascent()), title_);
}

void CardGroup::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange && layout() != nullptr && !title_.isEmpty())
        layout()->setContentsMargins(inner_margins());
    QWidget::changeEvent(event);
}

}  // namespace nimbry::windows
