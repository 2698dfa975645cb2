#pragma once

#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QString>

namespace nimbry::windows {

// Figures of equal width, whatever the font: a value that changes stays where it is.

/// The font, larger or smaller by a factor.
[[nodiscard]] QFont scaled(QFont font, double factor);

/// How wide draw_tabular() draws a text.
[[nodiscard]] double tabular_width(const QFont& font, const QString& text);

/// Draws a text in the painter's font with its base line's left end at `start`. Every figure stands in the middle of a
/// cell that is as wide as the font's widest figure.
void draw_tabular(QPainter& painter, QPointF start, const QString& text);

}  // namespace nimbry::windows
