#pragma once

#include <string>
#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

/// True when a file has been changed within the last three upload intervals, by the computer's clock. A picture that is
/// older comes from a dead camera.
[[nodiscard]] bool is_fresh(const Copy& copy, const std::string& name);

/// The bare name of a file: what stands behind the last "\" or "/" of its path.
[[nodiscard]] std::string fnamesplit(std::string_view path);

}  // namespace nimbry
