#pragma once

#include <string>

namespace nimbry {

/// Why something could not be sent: the system's number and its description.
struct SendFault {
    int number = 0;
    std::string description;

    bool operator==(const SendFault&) const = default;
};

}  // namespace nimbry
