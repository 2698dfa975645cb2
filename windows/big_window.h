#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>
#include <vector>

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"

class QGridLayout;

namespace nimbry::windows {

class CaptionLabel;

/// The large-type window (`NimbryBIG`), for a look from across the room: its type grows with it. F11 goes to the full
/// screen and back, Escape closes it, Shift+F10 or the right button opens its menu.
class BigWindow : public QWidget {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> closed{};   ///< the person has closed it
        std::function<void()> marquee{};  ///< the button "Marquee...", or the entry of its menu
    };

    /// `state` must outlive the window.
    BigWindow(const WeatherState& state, Actions actions, QWidget* parent = nullptr);

    /// Shows it in front.
    void present();

    /// The state may have changed.
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void add_readings(QGridLayout& grid);
    QWidget* marquee_line();
    void add_actions();
    void toggle_full_screen();

    const WeatherState& state_;
    Actions actions_;
    BoxBinding binding_;
    std::vector<CaptionLabel*> captions_;  ///< their type grows with the window
};

}  // namespace nimbry::windows
