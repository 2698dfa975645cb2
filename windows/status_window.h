#pragma once

#include <QLabel>
#include <QWidget>

namespace nimbry::windows {

/// The small status window (`NimbryDisplay`): one line for a moment. It does not take the focus; the model says when it
/// goes.
class StatusWindow : public QWidget {
    Q_OBJECT

public:
    explicit StatusWindow(QWidget* parent = nullptr);
    void show_text(const QString& text);

private:
    QLabel label_;
};

}  // namespace nimbry::windows
