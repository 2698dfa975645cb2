#include "windows/world_map.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "windows/svg_pictures.h"

namespace nimbry::windows {
namespace {

constexpr double world_width = 360;   // degrees
constexpr double world_height = 180;  // degrees
constexpr double marker_radius = 5;   // logical pixels

bool on_map(const Location& place) {
    return std::abs(place.latitude) <= world_height / 2 && std::abs(place.longitude) <= world_width / 2;
}

}  // namespace

WorldMap::WorldMap(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Picture1"));
    setAccessibleName(QStringLiteral("World map"));
}

void WorldMap::mark(const std::optional<Location>& place) {
    place_ = place && on_map(*place) ? place : std::nullopt;
    setAccessibleDescription(
        place_ ? QStringLiteral("latitude %1, longitude %2").arg(place_->latitude).arg(place_->longitude)
               : QStringLiteral("no place"));
    update();
}

QRectF WorldMap::map_area() const {
    const double scale = std::min(width() / world_width, height() / world_height);
    const QSizeF size(world_width * scale, world_height * scale);
    return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

QPointF WorldMap::point_of(const Location& place) const {
    const QRectF map = map_area();
    return {map.left() + (place.longitude + world_width / 2) / world_width * map.width(),
            map.top() + (world_height / 2 - place.latitude) / world_height * map.height()};
}

void WorldMap::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF map = map_area();
    vector_picture(QStringLiteral("world-map"))->render(&painter, map);
    if (!place_) return;

    painter.setClipRect(map);
    const QPointF point = point_of(*place_);
    painter.setPen(QPen(QColor(255, 255, 255, 160), 1));
    painter.drawLine(QPointF(map.left(), point.y()), QPointF(map.right(), point.y()));
    painter.drawLine(QPointF(point.x(), map.top()), QPointF(point.x(), map.bottom()));
    painter.setPen(QPen(Qt::white, 2));
    painter.setBrush(QColor(0xC6, 0x28, 0x28));
    painter.drawEllipse(point, marker_radius, marker_radius);
}

}  // namespace nimbry::windows
