#pragma once

#include <QWidget>

#include "engine/displays/main_panel.h"
#include "windows/box_binding.h"

namespace nimbry::windows {

/// The top of the main window: the station's time and date, the activity lamp with the status label, the low battery
/// warning, and the outlook as a picture and in words.
class StatusHeader : public QWidget {
public:
    /// Binds its widgets to `panel`, which must outlive `binding`.
    StatusHeader(const MainPanel& panel, BoxBinding& binding, QWidget* parent = nullptr);
};

}  // namespace nimbry::windows
