#include "engine/records/changeover_word.h"

#include "engine/records/day_end.h"

namespace nimbry {

std::string_view changeover_word(const MainSettings& settings) {
    switch (selected_day_end(settings)) {
        case DayEnd::midnight: return " midnight ";
        case DayEnd::nine: return " 9.00am ";
        case DayEnd::ten: break;
    }
    return " 10.00am ";
}

}  // namespace nimbry
