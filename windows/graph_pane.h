#pragma once

#include <QPen>
#include <QPixmap>
#include <QWidget>
#include <functional>

#include "engine/displays/box.h"
#include "engine/graphs/graph_layout.h"
#include "engine/graphs/graph_state.h"

namespace nimbry::windows {

/// What a person does with the graphs.
struct GraphActions {
    std::function<void(int pane)> click;     ///< a pane (0 is the main one) or the title (0)
    std::function<void(double twips)> move;  ///< the pointer is over the main pane
    std::function<void(int row)> read;       ///< a key asks for a row
    std::function<void()> leave;             ///< nothing is to be read off any more
    std::function<void()> redraw;            ///< the window has another size or other colours
};

/// One picture of the graphs, `gPicture1`: dark in both themes. The main pane shows axes with their labels and what is
/// read off it, under the pointer or by keyboard: Left and Right move by a row, Home and End to the ends, Enter and
/// Ctrl+PgDn bring the next graph, 1 to 5 click the small panes, Ctrl+C copies the reading, Esc ends it.
class GraphPane : public QWidget {
    Q_OBJECT

public:
    /// Pane 0 is the main one. `graphs` and `actions` must outlive the pane.
    GraphPane(int pane, const GraphState& graphs, const GraphActions& actions, QWidget* parent = nullptr);

    /// Tip and whether it is shown.
    void show_box(const Box& box);
    /// The drawing or the marker has changed.
    void show_drawing();
    void show_marker();

    /// Where the pane's drawing lies on it.
    [[nodiscard]] GraphLayout graph_layout() const;
    [[nodiscard]] const GraphDrawing& drawing() const { return graphs_.panes[static_cast<std::size_t>(pane_)]; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] bool is_main() const { return pane_ == 0; }
    void draw_picture(qreal ratio);
    void draw_marker(QPainter& painter);
    bool press_key(int key, Qt::KeyboardModifiers modifiers);

    int pane_;
    const GraphState& graphs_;
    const GraphActions& actions_;
    QPixmap picture_;
    bool is_drawn_ = false;  // the picture shows the drawing, in this size and these colours
    bool pressed_ = false;
};

/// The look of a series: its colour, its dash and the width of its line, in the pixels of a screen at 100 %.
[[nodiscard]] QPen graph_pen(GraphPen pen);

}  // namespace nimbry::windows
