#include "windows/graphs_group.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <utility>

#include "engine/graphs/graph_view.h"
#include "platform/text_bytes.h"
#include "windows/caption_label.h"
#include "windows/palette_colours.h"

namespace nimbry::windows {
namespace {

constexpr int sample_width = 22;
constexpr int small_panes = graph_count - 1;

QString words(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

void show_label(QLabel& label, const Box& box) {
    label.setText(platform::unicode(box.text));
    label.setVisible(box.visible);
}

/// Title and legends.
QLayout* head_line(const WeatherState& state, const GraphActions& actions, BoxBinding& binding) {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    auto* title = new GraphTitle(actions);
    binding.bind(state.panel.gLabel12, [title](const Box& box) { show_label(*title, box); });
    row->addWidget(title);
    row->addStretch();
    const std::pair<const Box*, const char*> legends[]{
        {&state.panel.gLabel13, "gLabel13"}, {&state.panel.gLabel14, "gLabel14"}, {&state.panel.gLabel15, "gLabel15"}};
    std::size_t n = 0;
    for (const auto& [box, name] : legends) {
        auto* legend = new GraphLegend(name);
        binding.bind(*box, [legend](const Box& shown) { show_label(*legend, shown); });
        binding.bind_result(
            [&state, n] {
                const auto series = graph_series(graph_in_pane(state, 0), true);
                return pen_of(n < series.size() ? series[n].look : SeriesLook::first);
            },
            [legend](GraphPen pen) { legend->show_pen(pen); });
        row->addWidget(legend);
        ++n;
    }
    return row;
}

}  // namespace

GraphTitle::GraphTitle(const GraphActions& actions, QWidget* parent) : QLabel(parent), actions_(actions) {
    setObjectName(QStringLiteral("gLabel12"));
    setTextFormat(Qt::PlainText);
    setCursor(Qt::PointingHandCursor);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    setContentsMargins(8, 1, 20, 1);
}

void GraphTitle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(underMouse() ? palette().color(QPalette::Highlight) : panel_line(palette()), 1));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    const QColor text = palette().color(QPalette::ButtonText);
    painter.setPen(text);
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, this->text());
    // A small arrow: there is another one behind it.
    const double x = width() - 12, y = height() / 2.0;
    painter.setPen(QPen(text, 1.5));
    painter.drawPolyline(QPolygonF{{x, y - 3.5}, {x + 3.5, y}, {x, y + 3.5}});
}

void GraphTitle::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()) && actions_.click)
        actions_.click(0);
}

void GraphTitle::enterEvent(QEnterEvent* event) {
    update();
    QLabel::enterEvent(event);
}

void GraphTitle::leaveEvent(QEvent* event) {
    update();
    QLabel::leaveEvent(event);
}

GraphLegend::GraphLegend(const char* name, QWidget* parent) : QLabel(parent) {
    setObjectName(QString::fromLatin1(name));
    setTextFormat(Qt::PlainText);
    setContentsMargins(sample_width + 5, 0, 0, 0);
}

void GraphLegend::show_pen(GraphPen pen) {
    pen_ = pen;
    update();
}

void GraphLegend::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ground(0, height() / 2.0 - 7, sample_width, 14);
    painter.setPen(Qt::NoPen);
    painter.setBrush(exact_colour(graph_ground));
    painter.drawRoundedRect(ground, 3, 3);
    QPen pen = graph_pen(pen_);
    pen.setWidthF(2);
    painter.setPen(pen);
    painter.drawLine(QPointF(3, height() / 2.0), QPointF(sample_width - 3, height() / 2.0));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

GraphsGroup::GraphsGroup(const WeatherState& state, const GraphActions& actions, BoxBinding& binding, QWidget* parent)
    : CardGroup(QString(), parent) {
    // The title of the graph stands in the place of a head.
    setAccessibleName(QStringLiteral("Graphs"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 6, 8, 6);
    column->setSpacing(4);
    column->addLayout(head_line(state, actions, binding));

    std::vector<GraphPane*> panes;
    for (int n = 0; n < graph_count; ++n) {
        auto* pane = new GraphPane(n, state.graphs, actions);
        binding.bind(state.panel.gPicture1[static_cast<std::size_t>(n)],
                     [pane](const Box& box) { pane->show_box(box); });
        binding.bind(state.graphs.draws, [pane](int) { pane->show_drawing(); });
        panes.push_back(pane);
    }
    binding.bind_result([&state] { return state.graphs.marker ? state.graphs.marker->text : std::string(); },
                        [main = panes[0]](const std::string&) { main->show_marker(); });
    column->addWidget(panes[0], 1);

    auto* small = new QGridLayout;
    small->setHorizontalSpacing(6);
    small->setVerticalSpacing(1);
    for (int n = 1; n <= small_panes; ++n) {
        auto* word = new CaptionLabel(QString());
        binding.bind_result([&state, n] { return std::pair(graph_in_pane(state, n), state.panel.gLabel12.visible); },
                            [word](const std::pair<GraphKind, bool>& shown) {
                                word->setText(words(graph_word(shown.first)));
                                word->setVisible(shown.second);
                            });
        small->addWidget(word, 0, n - 1);
        small->addWidget(panes[static_cast<std::size_t>(n)], 1, n - 1);
        small->setColumnStretch(n - 1, 1);
    }
    column->addLayout(small);

    auto* off =
        new QLabel(QStringLiteral("The display of graphs is switched off\n(Display, \"Disable Graph Display\")."));
    off->setObjectName(QStringLiteral("lblGraphsOff"));
    off->setTextFormat(Qt::PlainText);
    off->setAlignment(Qt::AlignCenter);
    column->addWidget(off, 1);
    binding.bind_result([&state] { return state.panel.gPicture1[0].visible; },
                        [off](bool shown) { off->setVisible(!shown); });
}

}  // namespace nimbry::windows
