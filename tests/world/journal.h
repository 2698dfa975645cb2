#pragma once

#include <string>
#include <vector>

namespace nimbry::test {

/// What a copy did to the outside, in order: one line an act, written by the recording ports ("line open /dev/ttyS0",
/// "append nbyprog.log", "sound click.WAV", ...). A test compares the lines that it asks for.
class Journal {
public:
    void note(std::string line) { lines_.push_back(std::move(line)); }
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
    void clear() { lines_.clear(); }

private:
    std::vector<std::string> lines_;
};

}  // namespace nimbry::test
