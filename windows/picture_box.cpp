#include "windows/picture_box.h"

#include <QPainter>

#include "engine/displays/box_list.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {

PictureBox::PictureBox(const char* name, const QString& meaning, int size, QWidget* parent)
    : QWidget(parent), svg_(QString::fromStdString(object_name(name))) {
    setObjectName(svg_);
    setAccessibleName(meaning);
    setToolTip(meaning);
    setFixedSize(size, size);
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture(svg_, width(), devicePixelRatioF()));
}

}  // namespace nimbry::windows
