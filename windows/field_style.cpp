#include "windows/field_style.h"

#include <QPainter>
#include <QStyleOption>

#include "windows/palette_colours.h"

namespace nimbry::windows {
namespace {

const QColor line(0x87, 0x90, 0x99), dimmed_line(0x55, 0x5C, 0x63);

/// `corner` is the radius of the corners, in pixels; what is as round as it is wide is a circle.
void draw_outline(QPainter& painter, const QStyleOption& option, double corner, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter.restore();
}

QColor field_line(const QStyleOption& option) {
    return (option.state & QStyle::State_Enabled) != 0 ? line : dimmed_line;
}

}  // namespace

bool FieldStyle::is_needed(const QStyleOption& option) const {
    return is_dark(option.palette) && baseStyle()->name() == QStringLiteral("fusion");
}

// Where the keyboard is, Fusion draws a bright outline of its own.
void FieldStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!is_needed(*option)) return;
    const bool focus = (option->state & State_HasFocus) != 0;
    const bool shown_focus = focus && (option->state & State_KeyboardFocusChange) != 0;
    switch (element) {
        case PE_IndicatorCheckBox:
            if (!shown_focus) draw_outline(*painter, *option, 1.5, field_line(*option));
            break;
        case PE_IndicatorRadioButton:
            if (!shown_focus) draw_outline(*painter, *option, option->rect.width() / 2.0, field_line(*option));
            break;
        case PE_PanelLineEdit:
            // One without a frame lies in a field that has its own.
            if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
                frame != nullptr && frame->lineWidth > 0 && !focus)
                draw_outline(*painter, *option, 2, field_line(*option));
            break;
        case PE_Frame:  // around a list or a text
            if (!focus) draw_outline(*painter, *option, 2, field_line(*option));
            break;
        case PE_PanelMenu: draw_outline(*painter, *option, 0, line); break;
        default: break;
    }
}

void FieldStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    const bool is_field = control == CC_ComboBox || control == CC_SpinBox;
    if (is_field && is_needed(*option) && (option->state & State_HasFocus) == 0)
        draw_outline(*painter, *option, 2, field_line(*option));
}

}  // namespace nimbry::windows
