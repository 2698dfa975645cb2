#pragma once

#include <string_view>

#include "engine/core/main_settings.h"

namespace nimbry {

/// When the weather day ends, as it stands inside a sentence, with its blanks: " midnight ", " 9.00am " or, with
/// `AddOneHour`, " 10.00am ".
[[nodiscard]] std::string_view changeover_word(const MainSettings& settings);

}  // namespace nimbry
