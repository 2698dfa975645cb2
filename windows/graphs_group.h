#pragma once

#include <QLabel>

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"
#include "windows/card_group.h"
#include "windows/graph_pane.h"

namespace nimbry::windows {

/// The title of the graph in the main pane, `gLabel12`: a label that is clicked like a button.
class GraphTitle : public QLabel {
    Q_OBJECT

public:
    explicit GraphTitle(const GraphActions& actions, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    const GraphActions& actions_;
};

/// A legend, `gLabel13` to `gLabel15`: a sample of the series' line on the panes' ground, and its name.
class GraphLegend : public QLabel {
public:
    explicit GraphLegend(const char* name, QWidget* parent = nullptr);
    void show_pen(GraphPen pen);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    GraphPen pen_ = GraphPen::first;
};

/// The graphs of the last day: title and legend, the main pane, and the five small ones under their words.
class GraphsGroup : public CardGroup {
public:
    /// Binds its widgets to `state`. `state` and `actions` must outlive the group.
    GraphsGroup(const WeatherState& state, const GraphActions& actions, BoxBinding& binding, QWidget* parent = nullptr);
};

}  // namespace nimbry::windows
