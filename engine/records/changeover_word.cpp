#include "engine/records/changeover_word.h"

namespace nimbry {

std::string_view changeover_word(const MainSettings& settings) {
    if (settings.tmidnight) return " midnight ";
    return settings.AddOneHour ? " 10.00am " : " 9.00am ";
}

}  // namespace nimbry
