#pragma once

#include <span>
#include <string_view>

#include "engine/core/main_settings.h"
#include "engine/displays/main_menu.h"

namespace nimbry {

struct Copy;

/// The sound of every click on a menu entry.
inline constexpr std::string_view click_sound = "click.WAV";

/// A menu entry with a check mark, and the setting of section `Main` that it shows.
struct Switch {
    std::string_view name;  ///< of the entry, "mnuHide"
    Box MainMenu::*entry;
    bool MainSettings::*setting;  ///< nullptr for a switch of this run only
};

/// All switches of the menu, in its order.
[[nodiscard]] std::span<const Switch> switches();

/// The switch of this name; nullptr when there is none.
[[nodiscard]] const Switch* switch_named(std::string_view name);

/// The key of a switch in section `Main`; "" for a switch of this run only.
[[nodiscard]] std::string_view key_of(const Switch& which);

/// Somebody clicked the entry: the click sounds, the check mark flips, the setting follows, and its key is written at
/// once. A write that fails changes nothing of that. The graphs follow their two switches; what else hangs on a setting
/// is the caller's.
void click_switch(Copy& copy, const Switch& which);

}  // namespace nimbry
