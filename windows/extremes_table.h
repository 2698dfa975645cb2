#pragma once

#include "engine/displays/main_panel.h"
#include "windows/box_binding.h"
#include "windows/card_group.h"

namespace nimbry::windows {

/// The extremes in eight rows and three columns: today, yesterday, and since the station's last reset.
class ExtremesTable : public CardGroup {
public:
    /// Binds its widgets to `panel`, which must outlive `binding`.
    ExtremesTable(const MainPanel& panel, BoxBinding& binding, QWidget* parent = nullptr);
};

}  // namespace nimbry::windows
