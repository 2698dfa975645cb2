#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

namespace nimbry::fuzz {

/// A law of a target. Where it does not hold the fuzzer keeps the input.
inline void expect(bool law) {
    if (!law) std::abort();
}

/// The bytes of one run, taken from the front.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    [[nodiscard]] bool empty() const { return rest_.empty(); }

    /// 0 when there are none left.
    int next() {
        if (rest_.empty()) return 0;
        const int byte = rest_.front();
        rest_ = rest_.subspan(1);
        return byte;
    }

    /// A number from the next byte, 0 to less than `limit`, which is 256 at the most.
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next()) % limit; }

    /// As many bytes as the next one says, or what is left.
    std::string text() { return take(static_cast<std::size_t>(next())); }

    /// Up to the next NUL, which goes with it, or to the end.
    std::string text_to_nul() {
        const auto end = std::find(rest_.begin(), rest_.end(), std::uint8_t{0});
        std::string text = take(static_cast<std::size_t>(end - rest_.begin()));
        next();
        return text;
    }

    /// Everything.
    std::string rest() { return take(rest_.size()); }

private:
    std::string take(std::size_t count) {
        count = std::min(count, rest_.size());
        std::string text(rest_.begin(), rest_.begin() + static_cast<std::ptrdiff_t>(count));
        rest_ = rest_.subspan(count);
        return text;
    }

    std::span<const std::uint8_t> rest_;
};

/// A text without line ends: what a port hands on as one line.
inline std::string one_line(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text;
}

}  // namespace nimbry::fuzz
