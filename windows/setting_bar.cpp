#include "windows/setting_bar.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace nimbry::windows {

SettingBar::SettingBar(int first, int last, int steps_per_unit, QWidget* parent)
    : QScrollBar(Qt::Horizontal, parent), steps_per_unit_(steps_per_unit) {
    setRange(first, last);
    setSingleStep(1);
    setPageStep(10);
    setFocusPolicy(Qt::StrongFocus);
    // Of a number that is set, up and right are more; a page that is scrolled goes the other way.
    setInvertedControls(false);
    connect(this, &QScrollBar::valueChanged, this, [this] { emit moved(place()); });
}

void SettingBar::show_value(float value) {
    const QSignalBlocker silent(this);
    const double step = std::nearbyint(static_cast<double>(value) * steps_per_unit_);
    setValue(static_cast<int>(std::clamp<double>(step, minimum(), maximum())));
}

float SettingBar::place() const {
    return static_cast<float>(static_cast<double>(value()) / steps_per_unit_);
}

// A style draws no sign of the focus on a scroll bar; a person at the keyboard needs one.
void SettingBar::paintEvent(QPaintEvent* event) {
    QScrollBar::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void SettingBar::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QScrollBar::wheelEvent(event);
    } else {
        event->ignore();
    }
}

}  // namespace nimbry::windows
