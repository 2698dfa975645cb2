#pragma once

#include <QWidget>
#include <array>

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"

namespace nimbry::windows {

class CardGroup;

/// The present readings, in four groups side by side: outdoor, wind, rainfall, barometer and indoor.
class ConditionsRow : public QWidget {
public:
    /// Binds its widgets to `state`, which must outlive `binding`.
    ConditionsRow(const WeatherState& state, BoxBinding& binding, QWidget* parent = nullptr);

    /// The groups, from left to right.
    [[nodiscard]] const std::array<CardGroup*, 4>& groups() const { return groups_; }

private:
    std::array<CardGroup*, 4> groups_{};
};

}  // namespace nimbry::windows
