#pragma once

#include <functional>
#include <string>

class QWidget;

namespace nimbry::windows {

/// Lets the person choose an almanac ("al*.csv") in `folder`; returns at once. `chosen` gets the file's path as a text
/// of the engine, and is not called when the choice is given up. `folder` is a path as the disk names it.
void choose_almanac(QWidget* parent, const std::string& folder, const std::function<void(const std::string&)>& chosen);

}  // namespace nimbry::windows
