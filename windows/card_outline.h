#pragma once

#include <QPainterPath>
#include <QRegion>
#include <QWidget>

namespace nimbry::windows {

// The cards that stand over the other windows, notices and pop-ups, in the colours of the tool tips.

inline constexpr double card_radius = 8;

/// What is inside an outline, as a window's mask: where nothing blends windows, the rest would be black.
[[nodiscard]] QRegion inside_of(const QPainterPath& outline);

/// Paints a card inside an outline, with a line along it.
void paint_card(QWidget& card, const QPainterPath& outline);

}  // namespace nimbry::windows
