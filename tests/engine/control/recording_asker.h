#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/control/asker.h"

namespace nimbry::test {

/// Keeps what a verb prints.
class RecordingAsker : public Asker {
public:
    void print(std::string_view text) override { out += text; }
    void complain(std::string_view line) override { complaints.emplace_back(line); }
    void show(const std::vector<std::string>& layouts) override { screens.push_back(layouts); }
    [[nodiscard]] bool listening() const override { return there; }

    std::string out;
    std::vector<std::string> complaints;
    std::vector<std::vector<std::string>> screens;  ///< each in its layouts
    bool there = true;                              ///< false: the asker has gone
};

}  // namespace nimbry::test
