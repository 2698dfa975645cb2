#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>
#include <memory>

class QSvgRenderer;

namespace nimbry::windows {

// The program's own pictures (assets/pictures/*.svg), by file name without its ending. They are drawn for the device
// pixel ratio that is asked for, so they are sharp at any scale, and kept in Qt's pixmap cache.

/// A picture, `size` logical pixels square. An unknown name gives an empty picture of that size.
[[nodiscard]] QPixmap picture(const QString& name, int size, qreal ratio);

/// A picture to be drawn at any size and shape. An unknown name draws nothing.
[[nodiscard]] std::unique_ptr<QSvgRenderer> vector_picture(const QString& name);

/// A one-colour picture in `colour`.
[[nodiscard]] QPixmap tinted_picture(const QString& name, int size, qreal ratio, const QColor& colour);

/// A one-colour picture as a button's icon, at the ratios 1, 2 and 3, dimmed when disabled.
[[nodiscard]] QIcon tinted_icon(const QString& name, int size, const QColor& colour);

/// The program's icon for windows and the tray.
[[nodiscard]] QIcon application_icon();

/// The picture of a notice's icon code: "i", "x", "!" and "?", and "i9", "x9", "!9" in the second style, in either
/// case. Any other code gives an empty name: no icon.
[[nodiscard]] QString notice_picture(const QString& code);

}  // namespace nimbry::windows
