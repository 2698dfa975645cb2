#pragma once

#include <functional>

#include "engine/core/weather_state.h"
#include "engine/sun/location_dialog.h"
#include "windows/setup_dialog.h"

class QGridLayout;
class QLabel;

namespace nimbry::windows {

class WorldMap;

/// The location dialog (`NimbryLatlong`): latitude and longitude, in decimal degrees or in degrees, minutes and
/// seconds, beside a map of the world that follows what is typed. What cannot be taken is told under the boxes
/// (`lblRefusal`), with the cursor in the box, and the window stays.
class LocationWindow final : public SetupDialog {
    Q_OBJECT

public:
    /// `accepted` gets values that can be taken. `state` must outlive the window.
    LocationWindow(const WeatherState& state, std::function<void(const LocationDialog&)> accepted,
                   QWidget* parent = nullptr);

protected:
    void load() override;
    void edited() override;
    bool commit() override;

private:
    void add_coordinate(QGridLayout& grid, const char* caption, std::initializer_list<const char*> boxes,
                        const char* hemisphere_box, const char* hemisphere);
    void show_way_of_input();
    void show_place();

    const WeatherState& state_;
    std::function<void(const LocationDialog&)> accepted_;
    LocationDialog values_;
    QLabel* refusal_;
    WorldMap* map_;
};

}  // namespace nimbry::windows
