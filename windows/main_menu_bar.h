#pragma once

#include <QMenuBar>
#include <functional>
#include <map>
#include <string>

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"

namespace nimbry::windows {

/// What the entries of the main window do, by control name. An entry without an action is disabled.
using MenuActions = std::map<std::string, std::function<void()>, std::less<>>;

/// The main window's menu bar. Each entry is a QAction whose objectName is the control name; caption, check mark and
/// whether it is enabled follow the model.
class MainMenuBar : public QMenuBar {
public:
    /// `state` must outlive `binding`; the actions are copied.
    MainMenuBar(const WeatherState& state, const MenuActions& actions, BoxBinding& binding, QWidget* parent = nullptr);

    /// The menu of a bar entry ("mnuLogs"); nothing for an entry that acts at once.
    [[nodiscard]] QMenu* menu_of(const QString& bar_entry) const;

private:
    QAction* bound_action(const WeatherState& state, const char* name, bool is_switch, const MenuActions& actions,
                          BoxBinding& binding);
};

}  // namespace nimbry::windows
