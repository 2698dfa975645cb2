#pragma once

#include <QPalette>
#include <QString>

namespace nimbry::test {

class Camera;

/// Opens every window and every menu, light and dark, at the ideal and the smallest size, with a plain day, long texts,
/// trouble and large letters, and writes a picture of each into a folder, for a person to look at. The scale is the
/// application's (QT_SCALE_FACTOR). Returns how many were written.
int write_screens(const QString& folder);

/// Writes the pictures that the manual shows, under their names there.
int write_manual_pictures(const QString& folder);

/// The part of the tour that needs no main window.
void take_beside_the_main_window(Camera& camera, const QString& theme);

/// A dark palette as a dark desktop sets it.
[[nodiscard]] QPalette dark_palette();

}  // namespace nimbry::test
