#include "engine/reports/tag_boxes.h"

namespace nimbry::tags {

std::string record_heat_celsius(const TagView& v) {
    return seen<&DayExtremes::maxhi>(v) ? record_celsius<&DayExtremes::maxhi>(v) : "n.a.";
}

std::string record_heat_fahrenheit(const TagView& v) {
    return seen<&DayExtremes::maxhi>(v) ? record_fahrenheit<&DayExtremes::maxhi>(v) : "n.a.";
}

}  // namespace nimbry::tags
