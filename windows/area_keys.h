#pragma once

#include <QObject>
#include <QWidget>
#include <vector>

namespace nimbry::windows {

/// The keyboard among the areas of a window: F6 and Shift+F6 go to the next and previous area, each area is one Tab
/// stop, and the arrow keys move between the boxes or buttons of an area, to the nearest one in their direction. In a
/// window that scrolls, what is reached comes into sight.
class AreaKeys : public QObject {
    Q_OBJECT

public:
    /// `areas` are the parts of `window` in their order. Every focusable child of an area takes part.
    AreaKeys(QWidget& window, const std::vector<QWidget*>& areas);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Area {
        QWidget* widget;
        std::vector<QWidget*> stops;
        QWidget* current;  ///< where Tab and F6 enter it
    };

    [[nodiscard]] Area* area_of(const QObject* stop);
    void go_to_area(int step);
    bool go_in_direction(const Area& area, const QWidget& from, int key);
    static void make_current(Area& area, QWidget* stop);

    std::vector<Area> areas_;
};

}  // namespace nimbry::windows
