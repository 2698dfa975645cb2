#pragma once

#include <QPalette>
#include <QString>

namespace nimbry::test {

/// Writes pictures of the windows into a folder, for a person to look at: light and dark, ideal and smallest size, a
/// plain day, long texts and trouble. The scale is the application's (QT_SCALE_FACTOR). Returns how many were written.
int write_screens(const QString& folder);

/// A dark palette as a dark desktop sets it.
[[nodiscard]] QPalette dark_palette();

}  // namespace nimbry::test
