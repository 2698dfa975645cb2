#pragma once

#include "engine/ports/desktop.h"

namespace nimbry::platform {

/// Starts programs of the system's as processes of their own, which outlive this one.
class SystemDesktop : public Desktop {
public:
    void run_batch(const std::string& path) override;
    void hang_up_modem() override {}
};

}  // namespace nimbry::platform
