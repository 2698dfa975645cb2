#include "windows/caption_label.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/palette_colours.h"

namespace nimbry::windows {

CaptionLabel::CaptionLabel(const QString& caption, QWidget* parent) : QLabel(parent), sample_(caption) {
    setTextFormat(Qt::PlainText);
    setText(caption);
}

CaptionLabel::CaptionLabel(const char* name, const QString& sample, QWidget* parent) : QLabel(parent), sample_(sample) {
    setTextFormat(Qt::PlainText);
    setObjectName(QString::fromStdString(object_name(name)));
}

void CaptionLabel::show_box(const nimbry::Box& box) {
    setText(platform::unicode(box.text));
    setToolTip(platform::unicode(box.tip));
    setVisible(box.visible);
}

QSize CaptionLabel::minimumSizeHint() const {
    const QSize least = QLabel::minimumSizeHint();
    return {std::max(least.width(), QFontMetrics(font()).horizontalAdvance(sample_) + 2), least.height()};
}

void CaptionLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(muted_text(palette()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

}  // namespace nimbry::windows
