#include "windows/caption_label.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/middle_blank.h"
#include "windows/palette_colours.h"
#include "windows/tip_keys.h"

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
    setAccessibleDescription(toolTip());
    setVisible(box.visible);
}

void CaptionLabel::explain_to_keyboard() {
    new TipKeys(*this);
}

void CaptionLabel::use_two_lines() {
    two_lines_ = true;
    updateGeometry();
}

QStringList CaptionLabel::halves(const QString& text) {
    const qsizetype cut = middle_blank(text);
    return cut < 0 ? QStringList{text} : QStringList{text.left(cut), text.mid(cut + 1)};
}

QStringList CaptionLabel::lines() const {
    const bool fits = QFontMetrics(font()).horizontalAdvance(text()) <= width();
    return two_lines_ && !fits ? halves(text()) : QStringList{text()};
}

QSize CaptionLabel::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    if (!two_lines_) {
        const QSize least = QLabel::minimumSizeHint();
        return {std::max(least.width(), metrics.horizontalAdvance(sample_) + 2), least.height()};
    }
    int wide = 0;
    for (const QString& sample : {sample_, text()})
        for (const QString& line : halves(sample)) wide = std::max(wide, metrics.horizontalAdvance(line) + 2);
    return {wide, 2 * metrics.height()};
}

void CaptionLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(muted_text(palette()));
    painter.drawText(rect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), lines().join(u'\n'));
    if (hasFocus()) draw_focus_ring(painter, *this);
}

}  // namespace nimbry::windows
