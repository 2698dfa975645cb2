#include "windows/lamp.h"

#include <QPainter>

#include "engine/displays/box_list.h"
#include "windows/tip_keys.h"
#include "windows/value_box.h"

namespace nimbry::windows {
namespace {

constexpr int diameter = 16, room_for_ring = 4;

}  // namespace

Lamp::Lamp(QWidget* parent) : QWidget(parent) {
    setObjectName(QString::fromStdString(object_name("Picture2(2)")));
    setAccessibleName(QStringLiteral("Activity lamp"));
    setFixedSize(diameter + 2 * room_for_ring, diameter + 2 * room_for_ring);
    new TipKeys(*this);
}

void Lamp::show_box(const Box& box) {
    box_ = box;
    setToolTip(full_tip(box));
    setAccessibleDescription(is_lit() ? QStringLiteral("receiving") : QStringLiteral("idle"));
    update();
}

void Lamp::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor red(0xE5, 0x2B, 0x3A);
    painter.setPen(QPen(is_lit() ? red.darker(130) : muted_text(palette()), 2));
    painter.setBrush(is_lit() ? QBrush(red) : QBrush(Qt::NoBrush));
    constexpr double inset = room_for_ring + 1.5;
    painter.drawEllipse(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
    if (hasFocus()) draw_focus_ring(painter, *this);
}

}  // namespace nimbry::windows
