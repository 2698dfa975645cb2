#include "windows/graph_pane.h"

#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <algorithm>
#include <cmath>

#include "platform/text_bytes.h"
#include "windows/palette_colours.h"
#include "windows/tabular_text.h"
#include "windows/tip_keys.h"

namespace nimbry::windows {
namespace {

constexpr double series_width = 1.5;
constexpr double dot_radius = 1.4;
const QColor label_colour(0xD8, 0xDC, 0xE0);

QFont label_font(const QFont& font) {
    return scaled(font, 0.9);
}

/// Passes a wish on, where somebody takes it.
template <class... Values>
void tell(const std::function<void(Values...)>& action, Values... values) {
    if (action) action(values...);
}

LetterSize letters_of(const QFont& font) {
    const QFontMetricsF metrics(font);
    return {[metrics](std::string_view text) { return metrics.horizontalAdvance(platform::unicode(text).trimmed()); },
            metrics.height()};
}

QPointF place(const GraphLayout& layout, TwipPoint at) {
    return {layout.x(static_cast<double>(at.x)), layout.y(static_cast<double>(at.y))};
}

// A smoothed stroke of a whole day costs ten times what its parts cost: its outline crosses itself everywhere.
constexpr qsizetype segments_a_stroke = 16;

/// Paints a series in short strokes, its dash going on from one to the next.
void draw_series(QPainter& painter, QPen pen, const QPolygonF& points) {
    const bool dashed = pen.style() != Qt::SolidLine;
    // A solid stroke begins with the last segment of the one before, so that the corner between them is a joint:
    // cheaper than the round ends that would fill it.
    const qsizetype shared = dashed ? 0 : 1;
    painter.setPen(pen);
    double length = 0;
    for (qsizetype from = 0; from + 1 < points.size(); from += segments_a_stroke) {
        const qsizetype first = std::max<qsizetype>(from - shared, 0);
        const qsizetype last = std::min(from + segments_a_stroke, points.size() - 1);
        if (dashed) {
            pen.setDashOffset(length / pen.widthF());
            painter.setPen(pen);
            for (qsizetype n = from; n < last; ++n) length += QLineF(points[n], points[n + 1]).length();
        }
        painter.drawPolyline(points.constData() + first, static_cast<int>(last - first + 1));
    }
}

void draw_line(QPainter& painter, const GraphLayout& layout, const GraphLine& line) {
    QPolygonF points;
    for (const PixelPoint& at : layout.path(line.points)) points.append({at.x, at.y});
    // A straight stroke lies on whole pixels; only a series is smoothed.
    const bool series = line.points.size() > 2;
    painter.setRenderHint(QPainter::Antialiasing, series);
    if (series) {
        draw_series(painter, graph_pen(line.pen), points);
    } else {
        painter.setPen(graph_pen(line.pen));
        painter.drawPolyline(points);
    }
}

/// One dot in the pixels of a screen, in the middle of a square.
QPixmap dot_picture(const QColor& colour, double radius, qreal ratio) {
    const int side = 2 * static_cast<int>(std::ceil(radius * ratio)) + 2;
    QPixmap dot(side, side);
    dot.fill(Qt::transparent);
    QPainter painter(&dot);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(side / 2.0, side / 2.0), radius * ratio, radius * ratio);
    painter.end();
    dot.setDevicePixelRatio(ratio);
    return dot;
}

// Stamped on whole pixels: every dot looks the same, and costs a fraction of an ellipse.
void draw_dots(QPainter& painter, const GraphLayout& layout, const GraphDots& dots, double radius) {
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QPixmap dot = dot_picture(exact_colour(look_of(dots.pen).colour), radius, ratio);
    const double middle = dot.width() / 2.0;
    for (const PixelPoint& at : layout.spots(dots.points)) {
        painter.drawPixmap(
            QPointF(std::round(at.x * ratio - middle) / ratio, std::round(at.y * ratio - middle) / ratio), dot);
    }
}

void draw_labels(QPainter& painter, const GraphLayout& layout, const QFont& font) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(label_colour);
    const QFontMetricsF metrics(font);
    for (const PlacedLabel& label : layout.labels()) {
        painter.drawText(QPointF(label.left, label.middle + (metrics.ascent() - metrics.descent()) / 2),
                         platform::unicode(label.text).trimmed());
    }
}

}  // namespace

QPen graph_pen(GraphPen pen) {
    const PenLook look = look_of(pen);
    const bool series = pen == GraphPen::first || pen == GraphPen::second || pen == GraphPen::indoor;
    QPen made(exact_colour(look.colour), series ? series_width : 1);
    if (pen == GraphPen::grid) made.setColor(QColor(0x80, 0x80, 0x80, 0x70));
    made.setCapStyle(Qt::FlatCap);
    made.setJoinStyle(Qt::BevelJoin);
    if (!look.dash.empty()) {
        made.setDashPattern(QList<qreal>(look.dash.begin(), look.dash.end()));
    }
    return made;
}

GraphPane::GraphPane(int pane, const GraphState& graphs, const GraphActions& actions, QWidget* parent)
    : QWidget(parent), pane_(pane), graphs_(graphs), actions_(actions) {
    setObjectName(QStringLiteral("gPicture1_%1").arg(pane));
    setSizePolicy(QSizePolicy::Expanding, is_main() ? QSizePolicy::Expanding : QSizePolicy::Maximum);
    setCursor(is_main() ? Qt::CrossCursor : Qt::PointingHandCursor);
    setMouseTracking(is_main());
    if (is_main()) setFocusPolicy(Qt::ClickFocus);
    // It paints its corners itself: what lies below need not be painted first.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize GraphPane::minimumSizeHint() const {
    return is_main() ? QSize(440, 180) : QSize(84, 44);
}

QSize GraphPane::sizeHint() const {
    return is_main() ? QSize(500, 260) : QSize(92, 54);
}

void GraphPane::show_box(const Box& box) {
    setVisible(box.visible);
    const QString tip = platform::unicode(box.tip);
    setToolTip(tip);
    setAccessibleDescription(tip);
}

void GraphPane::show_drawing() {
    setAccessibleName(QString::fromLatin1(graph_words(drawing().kind).data()));
    is_drawn_ = false;
    update();
}

void GraphPane::show_marker() {
    update();
}

GraphLayout GraphPane::graph_layout() const {
    return {drawing(), static_cast<double>(width()), static_cast<double>(height()), letters_of(label_font(font()))};
}

void GraphPane::draw_picture(qreal ratio) {
    // A picture of the size is painted over: to ask for the memory of another one costs as much as a series.
    const QSize pixels(qCeil(width() * ratio), qCeil(height() * ratio));
    if (picture_.size() != pixels || !qFuzzyCompare(picture_.devicePixelRatio(), ratio)) {
        picture_ = QPixmap(pixels);
        picture_.setDevicePixelRatio(ratio);
    }
    picture_.fill(exact_colour(graph_ground));
    QPainter painter(&picture_);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath corners;
    corners.addRect(rect());
    corners.addRoundedRect(rect(), 4, 4);
    painter.fillPath(corners, panel_back(palette()));

    const GraphLayout layout = graph_layout();
    for (const GraphLine& line : drawing().lines) draw_line(painter, layout, line);
    for (const GraphDots& dots : drawing().dots) draw_dots(painter, layout, dots, is_main() ? dot_radius : 0.9);
    draw_labels(painter, layout, label_font(font()));
    is_drawn_ = true;
}

// A line through the row that is read off, a ring around each value, and what it says, out of the marker's way.
void GraphPane::draw_marker(QPainter& painter) {
    const GraphMarker& marker = *graphs_.marker;
    const GraphLayout layout = graph_layout();
    const double x = layout.x(marker.x), top = layout.y(static_cast<double>(main_plot.top));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QColor(0xE6, 0xE9, 0xEC), 1));
    painter.drawLine(QPointF(x, top), QPointF(x, layout.y(static_cast<double>(main_plot.bottom))));
    painter.setRenderHint(QPainter::Antialiasing);
    for (const GraphDots& dots : marker.dots) {
        painter.setBrush(exact_colour(look_of(dots.pen).colour));
        for (const TwipPoint at : dots.points) painter.drawEllipse(place(layout, at), 3.5, 3.5);
    }

    const QString text = platform::unicode(marker.text);
    const qsizetype cut = text.lastIndexOf(QStringLiteral("at "));
    const QStringList lines{text.left(cut).trimmed(), text.mid(cut)};
    painter.setFont(label_font(font()));
    const QFontMetricsF metrics(painter.font());
    const double wide = std::max(metrics.horizontalAdvance(lines[0]), metrics.horizontalAdvance(lines[1])) + 12;
    const double left_end = layout.x(static_cast<double>(main_plot.left)) + 4;
    const double left = std::max(x - wide - 8 > left_end ? x - wide - 8 : std::min(x + 8, width() - wide - 4), 2.0);
    const QRectF box(left, top + 4, wide, 2 * metrics.height() + 6);
    painter.setPen(QPen(QColor(0x60, 0x68, 0x70), 1));
    painter.setBrush(QColor(0x1C, 0x22, 0x28, 0xE6));
    painter.drawRoundedRect(box, 4, 4);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(box.left() + 6, box.top() + 3 + metrics.ascent()), lines[0]);
    painter.setPen(label_colour);
    painter.drawText(QPointF(box.left() + 6, box.top() + 3 + metrics.ascent() + metrics.height()), lines[1]);
}

void GraphPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // Of what is really painted on: the screen's, or that of a picture of the window.
    const qreal ratio = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    if (!is_drawn_ || !qFuzzyCompare(picture_.devicePixelRatio(), ratio)) draw_picture(ratio);
    painter.drawPixmap(0, 0, picture_);
    if (is_main() && graphs_.marker) draw_marker(painter);
    if (hasFocus() || (!is_main() && underMouse())) draw_focus_ring(painter, *this);
}

void GraphPane::resizeEvent(QResizeEvent* event) {
    is_drawn_ = false;
    if (is_main()) tell(actions_.redraw);
    QWidget::resizeEvent(event);
}

void GraphPane::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
        is_drawn_ = false;
        update();
        if (is_main()) tell(actions_.redraw);
    }
    QWidget::changeEvent(event);
}

bool GraphPane::event(QEvent* event) {
    // What is read off stands in the picture already.
    if (event->type() == QEvent::ToolTip && is_main() && graphs_.marker) return true;
    return QWidget::event(event);
}

void GraphPane::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
}

void GraphPane::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicked = pressed_ && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    pressed_ = false;
    if (clicked) tell(actions_.click, pane_);
}

void GraphPane::mouseMoveEvent(QMouseEvent* event) {
    if (is_main()) tell(actions_.move, graph_layout().twips_of(event->position().x()));
}

void GraphPane::enterEvent(QEnterEvent* event) {
    update();
    QWidget::enterEvent(event);
}

void GraphPane::leaveEvent(QEvent* event) {
    if (is_main()) tell(actions_.leave);
    update();
    QWidget::leaveEvent(event);
}

void GraphPane::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setText(toolTip());
        return;
    }
    Qt::KeyboardModifiers modifiers = event->modifiers();
    modifiers.setFlag(Qt::KeypadModifier, false);
    if (!press_key(event->key(), modifiers)) QWidget::keyPressEvent(event);
}

bool GraphPane::press_key(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers == Qt::ControlModifier && key == Qt::Key_PageDown) {
        tell(actions_.click, 0);
        return true;
    }
    if (modifiers != Qt::NoModifier) return false;
    const int newest = graphs_.rows.windsamples();
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter: tell(actions_.click, 0); return true;
        case Qt::Key_1:
        case Qt::Key_2:
        case Qt::Key_3:
        case Qt::Key_4:
        case Qt::Key_5: tell(actions_.click, key - Qt::Key_0); return true;
        case Qt::Key_Left: tell(actions_.read, graphs_.marker ? graphs_.marker->row - 1 : newest); return true;
        case Qt::Key_Right: tell(actions_.read, graphs_.marker ? graphs_.marker->row + 1 : newest); return true;
        case Qt::Key_Home: tell(actions_.read, 1); return true;
        case Qt::Key_End: tell(actions_.read, newest); return true;
        case Qt::Key_Escape:
            if (!graphs_.marker) return false;
            tell(actions_.leave);
            return true;
        default: return false;
    }
}

void GraphPane::focusOutEvent(QFocusEvent* event) {
    tell(actions_.leave);
    QWidget::focusOutEvent(event);
}

}  // namespace nimbry::windows
