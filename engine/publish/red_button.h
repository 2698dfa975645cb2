#pragma once

#include "engine/displays/box.h"

namespace nimbry {

/// A button of the panel in red while what it stands for goes out, for as long as this lives.
class RedButton {
public:
    explicit RedButton(Box& button) : button_(button), before_(button.fore) { button_.fore = colours::red; }
    ~RedButton() { button_.fore = before_; }
    RedButton(const RedButton&) = delete;
    RedButton& operator=(const RedButton&) = delete;

private:
    Box& button_;
    Colour before_;
};

}  // namespace nimbry
