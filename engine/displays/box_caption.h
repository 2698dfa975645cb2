#pragma once

#include <span>
#include <string_view>

namespace nimbry {

/// The fixed text that a window shows beside a box.
struct BoxCaption {
    std::string_view box, caption;
};

/// The caption of a box in a window's table; empty for a box that is not in it.
[[nodiscard]] inline std::string_view caption_in(std::span<const BoxCaption> captions, std::string_view box_name) {
    for (const BoxCaption& entry : captions) {
        if (entry.box == box_name) return entry.caption;
    }
    return {};
}

}  // namespace nimbry
