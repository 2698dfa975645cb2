#pragma once

#include <QWidget>

namespace nimbry::windows {

/// The card that stands while the program loads (`frmStart`).
class Splash : public QWidget {
    Q_OBJECT

public:
    /// Stands in the middle of the screen.
    Splash();

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace nimbry::windows
