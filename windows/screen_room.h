#pragma once

#include <QSize>
#include <QWidget>

namespace nimbry::windows {

/// The size that a window opens with where the screen has `available` logical pixels: the wanted one, less what would
/// not fit, with the frame and the title that the desktop puts around it.
///   size_on_screen({1180, 800}, {1920, 1050}) = 1180 x 800   size_on_screen({1180, 800}, {1366, 738}) = 1180 x 678
[[nodiscard]] QSize size_on_screen(QSize wanted, QSize available);

/// The same on the screen that the window is to open on.
[[nodiscard]] QSize size_on_screen(QSize wanted, const QWidget& window);

}  // namespace nimbry::windows
