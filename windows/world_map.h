#pragma once

#include <QWidget>
#include <optional>

#include "engine/sun/location.h"

namespace nimbry::windows {

/// A map of the world, one degree as wide as it is high, with a marker at a place.
class WorldMap : public QWidget {
    Q_OBJECT

public:
    explicit WorldMap(QWidget* parent = nullptr);

    /// Marks a place, or none. A place beyond the map is none.
    void mark(const std::optional<Location>& place);
    /// For tests.
    [[nodiscard]] const std::optional<Location>& marked() const { return place_; }

    /// The map inside the widget: as large as fits, two to one, centred.
    [[nodiscard]] QRectF map_area() const;
    /// Where a place lies in the widget.
    [[nodiscard]] QPointF point_of(const Location& place) const;

    [[nodiscard]] QSize sizeHint() const override { return {480, 240}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {320, 160}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<Location> place_;
};

}  // namespace nimbry::windows
