#pragma once

#include <QWidget>

#include "engine/displays/box.h"

namespace nimbry::windows {

/// A picture of the display model, shown while its box is visible: "PicSunny" shows the SVG of that name, if no other
/// is given.
class PictureBox : public QWidget {
    Q_OBJECT

public:
    /// `meaning` is what the picture says, in words.
    PictureBox(const char* name, const QString& meaning, int size, QWidget* parent = nullptr);

    void use_picture(const QString& svg) { svg_ = svg; }

    void show_box(const Box& box) { setVisible(box.visible); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString svg_;
};

}  // namespace nimbry::windows
