#include "windows/display_windows.h"

#include <utility>

#include "windows/big_window.h"
#include "windows/marquee_window.h"

namespace nimbry::windows {

DisplayWindows::DisplayWindows(const WeatherState& state, Actions actions, QWidget* parent)
    : state_(state), actions_(std::move(actions)), parent_(parent) {}

DisplayWindows::~DisplayWindows() = default;

void DisplayWindows::show_additional() {
    if (!state_.additional.Additional_Open) return;
    if (additional_ == nullptr) additional_ = new AdditionalWindow(state_, actions_.additional, parent_);
    additional_->present();
}

void DisplayWindows::show_big() {
    if (!state_.big.open) return;
    if (big_ == nullptr) {
        big_ = std::make_unique<BigWindow>(
            state_, BigWindow::Actions{.closed = actions_.big_closed, .marquee = [this] { show_marquee(); }});
    }
    big_->present();
}

void DisplayWindows::show_marquee() {
    if (marquee_ == nullptr) marquee_ = new MarqueeWindow(state_, actions_.accept_marquee, big_.get());
    marquee_->present();
}

void DisplayWindows::refresh() {
    if (additional_ != nullptr) additional_->refresh();
    if (big_ != nullptr) big_->refresh();
    if (marquee_ != nullptr) marquee_->refresh();
}

}  // namespace nimbry::windows
