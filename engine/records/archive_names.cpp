#include "engine/records/archive_names.h"

#include "engine/derived/dates.h"

namespace nimbry {

std::string archive_name(std::string_view prefix, CivilTime month_of, CivilTime year_of) {
    return std::string(prefix) + month_name(parts_of(month_of).month) + padded(parts_of(year_of).year % 100, 2) +
           ".csv";
}

}  // namespace nimbry
