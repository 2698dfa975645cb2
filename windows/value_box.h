#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <utility>

#include "engine/displays/box.h"
#include "windows/palette_colours.h"

namespace nimbry::windows {

/// One text box of the display model on the screen: its text on its background, with a mark when it is faulty or in
/// alarm.
///
/// The text is drawn without its outer blanks, in figures of equal width, never cut: the box is at least as wide as its
/// sample text, and a longer text is drawn smaller. In a table the type is as large as the sample leaves room for, so
/// boxes of one size and one sample have the same; with two lines, what comes from " at " on is the second. It can take
/// the focus; Ctrl+C copies the text, Space shows what hovering shows.
class ValueBox : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text)

public:
    enum class Style {
        card,    ///< under a caption: 14 pt where the application's font has 9
        table,   ///< in the table of extremes: up to 10 pt, in one line or, where that is too wide, in two
        clock,   ///< the time in the header: 20 pt, no background of its own
        plain,   ///< the header's other texts: 10 pt, no background of its own
        large,   ///< on the big display: as large as the sample leaves room for
        banner,  ///< the same, no background of its own
    };

    /// `name` is the box's name in the model ("Text2(0)"): it becomes the objectName ("Text2_0"). `sample` is the
    /// longest text that the box is made for.
    ValueBox(const char* name, Style style, const QString& sample, QWidget* parent = nullptr);

    /// Shows a box: text, colours, tip and balloon, visible or not.
    void show_box(const Box& box);

    /// What is being shown; the text is the model's, with its blanks.
    [[nodiscard]] const Box& shown() const { return box_; }
    [[nodiscard]] QString text() const;
    [[nodiscard]] BoxColours looks() const { return box_colours(box_, palette(), table_); }

    /// What a screen reader calls the box: its caption, after its column's head if it has one.
    void set_label(const QString& label) { setAccessibleName(label); }

    void use_colours(ColourTable table);

    /// What hovering and Space open in the tip's place; where it returns false there is nothing of the kind, and the
    /// tip is shown.
    void set_popup(std::function<bool()> open) { open_popup_ = std::move(open); }

    /// A one-colour picture at the right end ("trend-rising"); empty: none.
    void set_picture(const QString& name);

    /// The width that is left for the text, and what the text in hand takes of it in the box's full font size.
    [[nodiscard]] double room_for_text() const;
    [[nodiscard]] double text_width() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// How a text is set: the type's size against the application's font, and whether in two lines.
    struct Setting {
        double factor;
        bool two_lines;
    };
    [[nodiscard]] const Setting& setting() const;
    [[nodiscard]] Setting best_setting() const;
    [[nodiscard]] double filling_factor() const;
    [[nodiscard]] bool fills_its_room() const { return style_ == Style::large || style_ == Style::banner; }
    [[nodiscard]] QFont value_font() const;
    [[nodiscard]] QStringList drawn_lines() const;
    [[nodiscard]] int padding() const;
    [[nodiscard]] bool has_background() const;
    [[nodiscard]] QString drawn_text() const;
    [[nodiscard]] bool can_alarm() const;
    [[nodiscard]] int mark_size() const;
    [[nodiscard]] int marks_width() const;
    void show_tip(const QPoint& global);
    void announce_if_serious(const Box& before);

    Box box_;
    Style style_;
    QString sample_;
    QString picture_;
    std::function<bool()> open_popup_;
    ColourTable table_ = ColourTable::legible;
    bool shows_focus_ = false;
    mutable std::optional<Setting> setting_;  // nothing: to be found for the size and font in hand
};

/// The tip of a box as it is shown: the fixed text and, below it, the changing one.
[[nodiscard]] QString full_tip(const Box& box);

}  // namespace nimbry::windows
