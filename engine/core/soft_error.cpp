#include "engine/core/soft_error.h"

namespace nimbry {

std::string soft_error_text(ErrorNumber number, std::string_view routine) {
    return "Error " + std::to_string(static_cast<int>(number)) + " encountered in " + std::string(routine) + ".";
}

void log_soft_error(Copy& copy, ErrorNumber number, std::string_view routine) {
    copy.log.event_or_nothing(" " + soft_error_text(number, routine));
}

}  // namespace nimbry
