#pragma once

#include <QProxyStyle>

namespace nimbry::windows {

/// The style of the desktop, with one addition. Where that is Qt's own (Fusion) in a dark theme, the outlines of check
/// boxes, options and fields are as dark as the ground, and one that is not ticked can hardly be seen: they get an
/// outline with a contrast of at least 3 to 1, and so does a menu.
class FieldStyle : public QProxyStyle {
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;

private:
    [[nodiscard]] bool is_needed(const QStyleOption& option) const;
};

}  // namespace nimbry::windows
