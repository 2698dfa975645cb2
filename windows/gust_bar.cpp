#include "windows/gust_bar.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "windows/palette_colours.h"

namespace nimbry::windows {

GustBar::GustBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Gauge1"));
    setAccessibleName(QStringLiteral("Wind Speed Gust on its scale"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void GustBar::show_value(double value, double maximum) {
    value_ = value;
    maximum_ = maximum;
    setAccessibleDescription(QStringLiteral("%1 of %2").arg(value).arg(maximum));
    update();
}

void GustBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bar = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const bool dark = is_dark(palette());

    QPainterPath outline;
    outline.addRoundedRect(bar, bar.height() / 2, bar.height() / 2);
    painter.fillPath(outline, dark ? QColor(0x30, 0x35, 0x3A) : QColor(0xEC, 0xEF, 0xF2));
    const double share = maximum_ > 0 ? std::clamp(value_ / maximum_, 0.0, 1.0) : 0;
    painter.save();
    painter.setClipPath(outline);
    painter.fillRect(QRectF(bar.left(), bar.top(), bar.width() * share, bar.height()),
                     dark ? QColor(0xFF, 0xA7, 0x4D) : QColor(0xD9, 0x6A, 0x00));
    painter.restore();

    painter.setPen(QPen(panel_line(palette()), 1));
    for (int quarter = 1; quarter < 4; ++quarter) {
        const double x = bar.left() + bar.width() * quarter / 4;
        painter.drawLine(QPointF(x, bar.top()), QPointF(x, bar.bottom()));
    }
    painter.setPen(QPen(muted_text(palette()), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);
}

}  // namespace nimbry::windows
