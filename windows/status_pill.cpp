#include "windows/status_pill.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/accessibility.h"
#include "windows/tabular_text.h"
#include "windows/tip_keys.h"
#include "windows/value_box.h"

namespace nimbry::windows {
namespace {

constexpr QRgb warning_back = 0xFFFFC233, warning_text = 0xFF2B1D00;

}  // namespace

StatusPill::StatusPill(const char* name, Style style, const QString& longest_text, QWidget* parent)
    : QLabel(parent), style_(style), longest_text_(longest_text) {
    setObjectName(QString::fromStdString(object_name(name)));
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    new TipKeys(*this);
}

void StatusPill::show_box(const nimbry::Box& box) {
    const bool news = box.text != box_.text || (box.visible && !box_.visible);
    box_ = box;
    setText(platform::unicode(box.text));
    setToolTip(full_tip(box));
    setVisible(box.visible);
    updateGeometry();
    update();
    if (news && box.visible) announce(*this);
}

void StatusPill::use_colours(ColourTable table) {
    table_ = table;
    update();
}

QColor StatusPill::text_colour() const {
    return style_ == Style::status ? status_colour(box_.fore, table_) : QColor::fromRgb(warning_text);
}

QFont StatusPill::pill_font() const {
    QFont bold = scaled(font(), 11.0 / 9);
    bold.setBold(true);
    return bold;
}

QSize StatusPill::sizeHint() const {
    const QFontMetrics metrics(pill_font());
    const int text = std::max(metrics.horizontalAdvance(longest_text_), metrics.horizontalAdvance(this->text()));
    return {text + metrics.height() + 4, metrics.height() + 10};
}

void StatusPill::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF pill = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(style_ == Style::status ? QPen(panel_line(palette()), 1) : QPen(QColor(0xA8, 0x74, 0x00), 1.5));
    painter.setBrush(QColor::fromRgb(style_ == Style::status ? status_back : warning_back));
    painter.drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
    painter.setFont(pill_font());
    painter.setPen(text_colour());
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus()) draw_focus_ring(painter, *this);
}

}  // namespace nimbry::windows
