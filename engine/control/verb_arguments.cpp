#include "engine/control/verb_arguments.h"

#include <algorithm>

namespace nimbry {

VerbArguments::VerbArguments(const std::vector<std::string>& arguments, const std::vector<std::string_view>& switches) {
    for (const std::string& argument : arguments) {
        if (!argument.starts_with("--")) {
            words_.push_back(argument);
        } else if (std::find(switches.begin(), switches.end(), argument) != switches.end()) {
            given_.push_back(argument);
        } else {
            right_ = false;
        }
    }
}

bool VerbArguments::has(std::string_view name) const {
    return std::find(given_.begin(), given_.end(), name) != given_.end();
}

}  // namespace nimbry
