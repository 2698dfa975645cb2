#include "windows/setup_dialogs.h"

#include <utility>

#include "windows/alarms_window.h"
#include "windows/comment_window.h"
#include "windows/location_window.h"
#include "windows/rain_days_window.h"

namespace nimbry::windows {

SetupDialogs::SetupDialogs(const WeatherState& state, Actions actions, QWidget* parent)
    : state_(state), actions_(std::move(actions)), parent_(parent) {}

void SetupDialogs::show_alarms() {
    if (alarms_ == nullptr) alarms_ = new AlarmsWindow(state_, actions_.accept_alarms, parent_);
    alarms_->present();
}

void SetupDialogs::show_location() {
    if (location_ == nullptr) location_ = new LocationWindow(state_, actions_.accept_location, parent_);
    location_->present();
}

void SetupDialogs::show_units() {
    if (units_ == nullptr) units_ = new UnitsWindow(state_, actions_.units, parent_);
    units_->present();
}

void SetupDialogs::show_comms() {
    if (comms_ == nullptr) comms_ = new CommsWindow(state_, actions_.comms, parent_);
    comms_->present();
}

void SetupDialogs::show_internet() {
    if (internet_ == nullptr) internet_ = new InternetWindow(state_, actions_.internet, parent_);
    internet_->present();
}

void SetupDialogs::show_comment(Comment which) {
    CommentWindow*& window = which == Comment::first ? comment_ : comment2_;
    if (window == nullptr) {
        const auto accepted = [this, which](const CommentDialog& values) { actions_.accept_comment(which, values); };
        window = new CommentWindow(state_, which, accepted, parent_);
    }
    window->present();
}

void SetupDialogs::show_rain_days() {
    if (rain_days_ == nullptr) rain_days_ = new RainDaysWindow(state_, actions_.accept_rain_days, parent_);
    rain_days_->present();
}

void SetupDialogs::refresh() {
    if (alarms_ != nullptr) alarms_->refresh();
    if (units_ != nullptr) units_->refresh();
    if (comms_ != nullptr) comms_->refresh();
    if (internet_ != nullptr) internet_->refresh();
}

}  // namespace nimbry::windows
