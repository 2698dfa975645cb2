#include "windows/wind_rose.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "windows/palette_colours.h"
#include "windows/tabular_text.h"

namespace nimbry::windows {
namespace {

/// The point at a distance from the middle, in a compass direction.
QPointF at(double degrees, double radius) {
    const double angle = degrees * std::numbers::pi / 180;
    return {radius * std::sin(angle), -radius * std::cos(angle)};
}

void draw_centred(QPainter& painter, QPointF centre, const QString& text) {
    const QFontMetricsF metrics(painter.font());
    painter.drawText(centre + QPointF(-metrics.horizontalAdvance(text) / 2, (metrics.ascent() - metrics.descent()) / 2),
                     text);
}

/// How far inside the rim the letters stand, and where they end.
double letters_inset(const QFont& font) {
    return std::max(17.0, 1.15 * QFontMetricsF(font).height());
}
double letters_end(const QFont& font) {
    return std::max(27.0, 1.8 * QFontMetricsF(font).height());
}

void draw_dial(QPainter& painter, const QPalette& palette, const QFont& font, double radius) {
    const QColor line = muted_text(palette);
    painter.setBrush(is_dark(palette) ? QColor(0x2F, 0x35, 0x3A) : QColor(0xF3, 0xF5, 0xF7));
    painter.setPen(QPen(panel_line(palette), 1.5));
    painter.drawEllipse(QPointF(0, 0), radius, radius);
    for (int degrees = 0; degrees < 360; degrees += 15) {
        const bool main = degrees % 45 == 0;
        painter.setPen(QPen(line, main ? 1.8 : 1));
        painter.drawLine(at(degrees, radius - 1), at(degrees, radius - (main ? 7 : 4)));
    }
    constexpr std::array words{"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    for (std::size_t n = 0; n < words.size(); ++n) {
        const bool cardinal = n % 2 == 0;
        QFont letters = scaled(font, cardinal ? 1.1 : 0.85);
        letters.setBold(cardinal);
        painter.setFont(letters);
        painter.setPen(cardinal ? palette.color(QPalette::WindowText) : line);
        draw_centred(painter, at(45.0 * static_cast<double>(n), radius - letters_inset(font)),
                     QString::fromLatin1(words[n]));
    }
}

void draw_needle(QPainter& painter, double degrees, double point, double tail, const QColor& colour) {
    QPainterPath needle;
    needle.moveTo(at(degrees, point));
    needle.lineTo(at(degrees + 90, 7.5));
    needle.lineTo(at(degrees + 180, tail));
    needle.lineTo(at(degrees - 90, 7.5));
    needle.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPath(needle);
}

void draw_gust_mark(QPainter& painter, double degrees, double radius, const QColor& colour, const QColor& edge) {
    QPainterPath mark;
    mark.moveTo(at(degrees, radius - 11));
    mark.lineTo(at(degrees - 5.5, radius + 3));
    mark.lineTo(at(degrees + 5.5, radius + 3));
    mark.closeSubpath();
    painter.setPen(QPen(edge, 1));
    painter.setBrush(colour);
    painter.drawPath(mark);
}

}  // namespace

WindRose::WindRose(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("WindPic"));
    setAccessibleName(QStringLiteral("Wind Direction"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize WindRose::minimumSizeHint() const {
    const int side = std::max(168, 10 * QFontMetrics(font()).height());
    return {side, side};
}

void WindRose::show_wind(const Wind& wind) {
    wind_ = wind;
    QString words = wind.word;
    if (wind.shows_average) words += QStringLiteral("\nAverage %1\u00B0").arg(wind.average_degrees);
    if (wind.shows_gust) words += QStringLiteral("\nGust %1\u00B0").arg(wind.gust_degrees);
    setToolTip(words);
    setAccessibleDescription(words);
    update();
}

void WindRose::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    const double radius = std::min({width(), height(), std::max(260, minimumSizeHint().width())}) / 2.0 - 5;
    const bool dark = is_dark(palette());

    draw_dial(painter, palette(), font(), radius);
    if (wind_.shows_gust) {
        draw_gust_mark(painter, wind_.gust_degrees, radius, dark ? QColor(0xFF, 0xA7, 0x4D) : QColor(0xD9, 0x6A, 0x00),
                       panel_back(palette()));
    }
    if (wind_.shows_average) {
        draw_needle(painter, wind_.average_degrees, radius - letters_end(font()), radius * 0.34,
                    dark ? QColor(0x6C, 0xB6, 0xFF) : QColor(0x1A, 0x63, 0xAE));
    }
    if (wind_.word.isEmpty()) return;

    QFont letters = scaled(font(), wind_.word.size() > 2 ? 1.05 : 1.3);
    letters.setBold(true);
    painter.setFont(letters);
    const double hub = std::max(QFontMetricsF(letters).horizontalAdvance(wind_.word) / 2 + 6, 19.0);
    painter.setPen(QPen(panel_line(palette()), 1.5));
    painter.setBrush(panel_back(palette()));
    painter.drawEllipse(QPointF(0, 0), hub, hub);
    painter.setPen(palette().color(QPalette::WindowText));
    draw_centred(painter, {0, 0}, wind_.word);
}

}  // namespace nimbry::windows
