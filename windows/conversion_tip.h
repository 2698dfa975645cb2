#pragma once

#include <QLabel>
#include <QPainterPath>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <functional>
#include <optional>

#include "engine/displays/conversion_popup.h"

namespace nimbry::windows {

/// The conversion pop-up (`Nimbryconv`): a reading in every unit, on a rounded card that points at the reading's box.
/// It never takes the focus. It goes when the pointer leaves the box or clicks on it, when the box loses the focus,
/// with Esc, and when there is nothing more to tell. One window, used for one box after the other.
class ConversionTip : public QWidget {
    Q_OBJECT

public:
    /// What to tell of the box just now.
    using Read = std::function<std::optional<ConversionPopup>()>;

    explicit ConversionTip(QWidget* main_window);

    /// Shows what `read` gives, at `box`. False, and nothing is shown, where it gives nothing.
    bool show_at(QWidget& box, Read read);

    /// Reads again what the pop-up that is showing tells.
    void refresh();

    /// The box that it is shown at; nullptr while it is hidden. For tests.
    [[nodiscard]] const QWidget* shown_at() const { return isVisible() ? box_.data() : nullptr; }

    /// How far the pointer stands out of the card.
    static constexpr int pointer = 8;

    /// Where the window stands and points to.
    struct Place {
        QPoint corner;      ///< its upper left corner, global
        int point = 0;      ///< the pointer's tip, from the left edge
        bool below = true;  ///< it stands below the box, the pointer on its upper edge; else above
    };
    /// Below the anchor (global coordinates) and centred on it; above it where the screen ends; moved sideways into the
    /// screen, the pointer then still aiming at the middle of the anchor as far as the round corners let it.
    [[nodiscard]] static Place place(const QRect& anchor, const QSize& size, const QRect& screen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void tell(const ConversionPopup& popup);
    void take_place();
    [[nodiscard]] QPainterPath outline(double inset) const;

    QLabel name_, lines_;
    QPointer<QWidget> box_;
    Read read_;
    Place place_;
};

}  // namespace nimbry::windows
