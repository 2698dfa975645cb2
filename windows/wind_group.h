#pragma once

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"
#include "windows/card_group.h"
#include "windows/wind_rose.h"

namespace nimbry::windows {

/// The wind: the rose, and beside it gust, gauge, average, directions and the last hour's highest gust.
class WindGroup : public CardGroup {
public:
    /// Binds its widgets to `state`, which must outlive `binding`.
    WindGroup(const WeatherState& state, BoxBinding& binding, QWidget* parent = nullptr);
};

/// What the rose shows for a state: the needle only for an average that is neither calm nor faulty, the mark for a gust
/// of that kind.
[[nodiscard]] WindRose::Wind wind_of(const WeatherState& state);

}  // namespace nimbry::windows
