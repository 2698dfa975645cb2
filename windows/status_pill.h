#pragma once

#include <QLabel>

#include "engine/displays/box.h"
#include "windows/palette_colours.h"

namespace nimbry::windows {

/// A word in a rounded badge. The status label is one (`lblStatus`, dark in both themes, because its colours are made
/// for a dark ground), the low battery warning another (`lblLowBattery`, amber).
class StatusPill : public QLabel {
    Q_OBJECT

public:
    enum class Style { status, warning };
    StatusPill(const char* name, Style style, const QString& longest_text, QWidget* parent = nullptr);

    /// A box that is not visible leaves its place empty.
    void show_box(const nimbry::Box& box);
    [[nodiscard]] const nimbry::Box& shown() const { return box_; }
    /// The colour its text is drawn in.
    [[nodiscard]] QColor text_colour() const;
    void use_colours(ColourTable table);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont pill_font() const;

    nimbry::Box box_;
    Style style_;
    QString longest_text_;
    ColourTable table_ = ColourTable::legible;
};

}  // namespace nimbry::windows
