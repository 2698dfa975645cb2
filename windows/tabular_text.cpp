#include "windows/tabular_text.h"

#include <QFontMetricsF>
#include <algorithm>

namespace nimbry::windows {
namespace {

bool is_figure(QChar c) {
    return c >= u'0' && c <= u'9';
}

struct FigureWidths {
    double widest = 0;
    bool equal = true;
};

FigureWidths figure_widths(const QFontMetricsF& metrics) {
    FigureWidths widths;
    widths.widest = metrics.horizontalAdvance(u'0');
    for (char16_t figure = u'1'; figure <= u'9'; ++figure) {
        const double width = metrics.horizontalAdvance(QChar(figure));
        widths.equal = widths.equal && qFuzzyCompare(width, metrics.horizontalAdvance(u'0'));
        widths.widest = std::max(widths.widest, width);
    }
    return widths;
}

}  // namespace

QFont scaled(QFont font, double factor) {
    if (font.pixelSize() > 0) {
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    } else {
        font.setPointSizeF(font.pointSizeF() * factor);
    }
    return font;
}

double tabular_width(const QFont& font, const QString& text) {
    const QFontMetricsF metrics(font);
    const FigureWidths widths = figure_widths(metrics);
    if (widths.equal) return metrics.horizontalAdvance(text);
    double width = 0;
    for (const QChar c : text) width += is_figure(c) ? widths.widest : metrics.horizontalAdvance(c);
    return width;
}

void draw_tabular(QPainter& painter, QPointF start, const QString& text) {
    const QFontMetricsF metrics(painter.font());
    const FigureWidths widths = figure_widths(metrics);
    if (widths.equal) {
        painter.drawText(start, text);
        return;
    }
    for (const QChar c : text) {
        const double width = metrics.horizontalAdvance(c);
        const double cell = is_figure(c) ? widths.widest : width;
        painter.drawText(start + QPointF((cell - width) / 2, 0), QString(c));
        start.rx() += cell;
    }
}

}  // namespace nimbry::windows
