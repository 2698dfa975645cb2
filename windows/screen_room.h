#pragma once

#include <QSize>
#include <QWidget>

class QScrollArea;

namespace nimbry::windows {

/// The size that a window opens with where the screen has `available` logical pixels: the wanted one, less what would
/// not fit, with the frame and the title that the desktop puts around it.
///   size_on_screen({1180, 800}, {1920, 1050}) = 1180 x 800   size_on_screen({1180, 800}, {1366, 738}) = 1180 x 678
[[nodiscard]] QSize size_on_screen(QSize wanted, QSize available);

/// The same on the screen that the window is to open on.
[[nodiscard]] QSize size_on_screen(QSize wanted, const QWidget& window);

/// Puts `content` into `area`, which takes it over: a window that is too small for it, or a large font, scrolls instead
/// of cutting. The area has no frame and is no stop of the Tab key.
void scroll_in(QScrollArea& area, QWidget* content);

}  // namespace nimbry::windows
