#include "engine/control/verbs_setup.h"

#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/sun/location_dialog.h"

namespace nimbry {
namespace {

/// Takes the sign off a coordinate; true when it was a minus.
bool take_sign(std::string& coordinate) {
    coordinate = trimmed(coordinate);
    if (coordinate.empty() || (coordinate.front() != '-' && coordinate.front() != '+')) return false;
    const bool minus = coordinate.front() == '-';
    coordinate.erase(0, 1);
    return minus;
}

}  // namespace

VerbStatus location_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const bool none = arguments.size() == 1 && arguments[0] == "none";
    if (!none && arguments.size() != 2) return VerbStatus::bad_usage;
    if (copy.state.settings.fromnet) {
        asker.complain("This copy gets its location from the one that gives it its data");
        return VerbStatus::failed;
    }
    if (none) {
        forget_location(copy);
        return VerbStatus::done;
    }
    LocationDialog dialog;
    dialog.Text7 = arguments[0];
    dialog.Text8 = arguments[1];
    dialog.Check1 = take_sign(dialog.Text7);
    dialog.Check2 = !take_sign(dialog.Text8);
    const auto refusal = accept_location(copy, dialog);
    if (!refusal) return VerbStatus::done;
    asker.complain(utf8_text(refusal->message));
    return VerbStatus::failed;
}

}  // namespace nimbry
