#pragma once

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <vector>

#include "engine/core/weather_state.h"
#include "engine/ports/notices.h"
#include "windows/box_binding.h"
#include "windows/graph_pane.h"
#include "windows/main_menu_bar.h"
#include "windows/palette_colours.h"

namespace nimbry::windows {

class ConversionTip;
class TrayIcon;

/// The main window, `Form1`. It shows what the state holds and decides nothing: a click calls one of its actions, and
/// every box is painted from the display model.
class Form1 : public QMainWindow {
    Q_OBJECT

public:
    /// What the person's wishes lead to.
    struct Actions {
        MenuActions menu;   ///< by control name; each sounds its own click; `mnuHideNow` is the window's own
        MenuActions opens;  ///< the entries that only open a window: `click` sounds for them, and then they do
        std::function<void()> click;  ///< the sound of a menu entry
        std::function<void()> close;  ///< the window's close mark; the window itself stays until the program goes
        GraphActions graphs;
        /// The person has minimised the window, hidden it in the tray, or brought it back: the model is to follow.
        std::function<void(bool minimised, bool in_tray)> moved;
    };

    /// `state` must outlive the window. `has_tray` tells whether the system has a tray at this moment; without it the
    /// system itself is asked.
    Form1(const WeatherState& state, Actions actions, std::function<bool()> has_tray = {});
    ~Form1() override;

    /// The state may have changed: what differs from the screen is painted with the next frame. Cheap; to be called
    /// after every event of the engine.
    void state_changed();

    /// Paints what has changed now. Returns how many pieces of the window that were.
    int refresh();

    /// Back from the tray or the task bar, in front.
    void restore();
    /// To the tray, or where there is none, to the task bar.
    void hide_now();

    /// A notice by the tray's own means, where there is a tray and the window is hidden or minimised.
    void tell_in_tray(const Balloon& balloon);

    /// Paints every box in the model's own colour numbers, or in the tints that suit the theme. The program keeps to
    /// the tints: the numbers by themselves are not legible enough, and are there to be compared with.
    void use_colours(ColourTable table);

    /// The widget of a box ("TxtWindChill"), for a notice to stand at; nothing for an unknown name.
    [[nodiscard]] QWidget* widget_of(const std::string& box_name) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] std::function<void()> with_click(std::function<void()> act) const;
    void build();
    void add_shortcuts();
    void add_conversions();
    void take_place(bool minimised, bool in_tray);
    void note_place(bool minimised, bool in_tray);
    void go_to_tray_if_asked();

    const WeatherState& state_;
    Actions actions_;
    BoxBinding binding_;
    QTimer frame_;
    TrayIcon* tray_ = nullptr;
    ConversionTip* conversions_ = nullptr;
    bool in_tray_ = false;
};

}  // namespace nimbry::windows
