#pragma once

#include <QWidget>

namespace nimbry::windows {

/// The gust on its scale (`Gauge1`): a horizontal bar, 12 pixels high, from 0 to the full scale.
class GustBar : public QWidget {
    Q_OBJECT

public:
    explicit GustBar(QWidget* parent = nullptr);

    /// `value` above `maximum` fills the bar.
    void show_value(double value, double maximum);
    [[nodiscard]] double value() const { return value_; }
    [[nodiscard]] double maximum() const { return maximum_; }

    [[nodiscard]] QSize sizeHint() const override { return {120, 12}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {60, 12}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double value_ = 0;
    double maximum_ = 1;
};

}  // namespace nimbry::windows
