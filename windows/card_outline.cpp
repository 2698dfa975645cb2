#include "windows/card_outline.h"

#include <QPainter>

namespace nimbry::windows {

QRegion inside_of(const QPainterPath& outline) {
    return QRegion(outline.toFillPolygon().toPolygon());
}

void paint_card(QWidget& card, const QPainterPath& outline) {
    QPainter painter(&card);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(card.palette().color(QPalette::ToolTipText), 1));
    painter.setBrush(card.palette().color(QPalette::ToolTipBase));
    painter.drawPath(outline);
}

}  // namespace nimbry::windows
