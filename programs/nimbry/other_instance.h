#pragma once

#include <string>

namespace nimbry {

/// Tells in a box that a copy runs in this folder already, waits until that has been read, and returns the exit status
/// for it. `refusal` names process and folder, as InstanceLock::refusal() does, in UTF-8. Needs the QApplication, whose
/// event loop must not run yet.
[[nodiscard]] int tell_of_other_instance(const std::string& refusal);

}  // namespace nimbry
