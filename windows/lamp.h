#pragma once

#include <QWidget>

#include "engine/displays/box.h"
#include "windows/palette_colours.h"

namespace nimbry::windows {

/// The activity lamp (`Picture2(2)`): a filled red disc, 16 pixels wide, while data comes in, else an empty ring.
class Lamp : public QWidget {
    Q_OBJECT

public:
    explicit Lamp(QWidget* parent = nullptr);

    void show_box(const Box& box);
    [[nodiscard]] const Box& shown() const { return box_; }
    /// True when the model's lamp is lit.
    [[nodiscard]] bool is_lit() const { return box_.fore == colours::red; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Box box_;
};

}  // namespace nimbry::windows
