#pragma once

#include <QLabel>

#include "engine/displays/box.h"

namespace nimbry::windows {

/// A quiet line of text above a reading: a fixed caption, or a label of the display model that can change. Always plain
/// text: "&" and "<" stand for themselves.
class CaptionLabel : public QLabel {
    Q_OBJECT

public:
    /// A fixed caption.
    explicit CaptionLabel(const QString& caption, QWidget* parent = nullptr);

    /// A label of the model under its name there; `sample` is the longest text it is made for.
    CaptionLabel(const char* name, const QString& sample, QWidget* parent = nullptr);

    void show_box(const nimbry::Box& box);

    /// Brings the keyboard to the label's tip: it can take the focus.
    void explain_to_keyboard();

    /// Lets a text that is too wide go on in a second line, cut at the blank nearest to its middle.
    void use_two_lines();

    /// The lines that the text is drawn in at the present width.
    [[nodiscard]] QStringList lines() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] static QStringList halves(const QString& text);

    QString sample_;
    bool two_lines_ = false;
};

}  // namespace nimbry::windows
