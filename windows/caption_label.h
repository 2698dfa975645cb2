#pragma once

#include <QLabel>

#include "engine/displays/box.h"

namespace nimbry::windows {

/// A quiet line of text above a reading: a fixed caption, or a label of the display model that can change. Always plain
/// text: "&" and "<" stand for themselves.
class CaptionLabel : public QLabel {
public:
    /// A fixed caption.
    explicit CaptionLabel(const QString& caption, QWidget* parent = nullptr);

    /// A label of the model under its name there; `sample` is the longest text it is made for.
    CaptionLabel(const char* name, const QString& sample, QWidget* parent = nullptr);

    void show_box(const nimbry::Box& box);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString sample_;
};

}  // namespace nimbry::windows
