#include "windows/setup_dialogs.h"

#include <utility>

#include "windows/alarms_window.h"

namespace nimbry::windows {

SetupDialogs::SetupDialogs(const WeatherState& state, Actions actions, QWidget* parent)
    : state_(state), actions_(std::move(actions)), parent_(parent) {}

void SetupDialogs::show_alarms() {
    if (alarms_ == nullptr) alarms_ = new AlarmsWindow(state_, actions_.accept_alarms, parent_);
    alarms_->present();
}

void SetupDialogs::refresh() {
    if (alarms_ != nullptr) alarms_->refresh();
}

}  // namespace nimbry::windows
