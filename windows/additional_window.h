#pragma once

#include <QMainWindow>
#include <functional>

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"

namespace nimbry::windows {

/// The window "Nimbry Additional Data" (`NimbryAdditional`): what has no room on the main panel. It shows what the
/// state holds; its button, its menu entry, Escape and the close mark all hide it.
class AdditionalWindow : public QMainWindow {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> to_front{};  ///< it has come to the front
        std::function<void()> hide{};      ///< its menu entry; the window itself stays until the model has it closed
        std::function<void()> closed{};    ///< it has gone in any other way
    };

    /// `state` must outlive the window.
    AdditionalWindow(const WeatherState& state, Actions actions, QWidget* parent = nullptr);
    /// What lies in the window goes before its bindings.
    ~AdditionalWindow() override;

    /// Shows it in front.
    void present();

    /// The state may have changed: shows it if the window is showing, and hides the window that the model has closed.
    void refresh();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void build();

    const WeatherState& state_;
    Actions actions_;
    BoxBinding binding_;
};

}  // namespace nimbry::windows
