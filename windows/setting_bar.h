#pragma once

#include <QScrollBar>

namespace nimbry::windows {

/// A horizontal scroll bar for a number setting, in steps of a unit or of a part of it. A value that lies beyond its
/// range or between its steps is shown at the nearest step and stays as it is until somebody moves the bar. Right, up
/// and page up are more. The wheel moves it only while it has the focus: rolling over a long dialog changes no setting.
class SettingBar : public QScrollBar {
    Q_OBJECT

public:
    /// `first` and `last` are steps; a page is ten of them.
    SettingBar(int first, int last, int steps_per_unit, QWidget* parent = nullptr);

    /// Shows a value; moved() is silent about that.
    void show_value(float value);

    /// The value at the bar's place.
    [[nodiscard]] float place() const;
    [[nodiscard]] int steps_per_unit() const { return steps_per_unit_; }

signals:
    /// The person has moved the bar to another place, whose value this is.
    void moved(float value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int steps_per_unit_;
};

}  // namespace nimbry::windows
