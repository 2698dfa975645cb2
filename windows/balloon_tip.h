#pragma once

#include <QLabel>
#include <QRect>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include "engine/ports/notices.h"

namespace nimbry::windows {

/// A passing notice (`frmTip`): a rounded card with icon, title and text that stands at the thing it talks about, never
/// takes the focus and closes by itself. One window, used for one notice after the other.
class BalloonTip : public QWidget {
    Q_OBJECT

public:
    /// 15 twips are one device-independent pixel, whatever the screen.
    static constexpr int twips_per_pixel = 15;
    /// How far below its anchor it stands.
    static constexpr int gap = 8;

    explicit BalloonTip(QWidget* main_window);

    /// Shows a notice below `anchor` (global coordinates), moved to stay on its screen; one that is showing is
    /// replaced, and its time begins anew. A text that needs more room makes the card taller.
    void show_at(const Balloon& balloon, const QRect& anchor);

    /// The same in the lower right corner of a screen, for a main window that is not to be seen.
    void show_in_corner(const Balloon& balloon, const QRect& screen);

    /// Where a card of this size stands: its upper left corner `gap` below the anchor's lower left one, moved into
    /// `screen`.
    [[nodiscard]] static QPoint place(const QRect& anchor, const QSize& size, const QRect& screen);

    /// Closes it: its time is over, or its close mark was clicked.
    void HideBalloon();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void SetBalloon(const Balloon& balloon);
    void RoundCorners();

    QLabel icon_, title_, text_;
    QToolButton close_;
    QTimer auto_close_;
};

}  // namespace nimbry::windows
