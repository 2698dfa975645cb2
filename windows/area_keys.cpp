#include "windows/area_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>
#include <QShortcut>
#include <algorithm>
#include <cmath>
#include <limits>

namespace nimbry::windows {
namespace {

QPoint centre_in_window(const QWidget& widget) {
    return widget.mapTo(widget.window(), widget.rect().center());
}

/// How far `way` goes in an arrow key's direction, with a step aside counting double; nothing when it does not.
double cost(QPoint way, int key) {
    const bool horizontal = key == Qt::Key_Left || key == Qt::Key_Right;
    int along = horizontal ? way.x() : way.y();
    const int aside = horizontal ? way.y() : way.x();
    if (key == Qt::Key_Left || key == Qt::Key_Up) along = -along;
    if (along <= 2) return std::numeric_limits<double>::infinity();
    return along + 2.0 * std::abs(aside);
}

/// Gives a widget the focus and brings it into sight: by itself a scroll area follows Tab only.
void go_to(QWidget& stop, Qt::FocusReason reason) {
    stop.setFocus(reason);
    for (QWidget* around = stop.parentWidget(); around != nullptr; around = around->parentWidget())
        if (auto* scroll = qobject_cast<QScrollArea*>(around)) scroll->ensureWidgetVisible(&stop);
}

}  // namespace

AreaKeys::AreaKeys(QWidget& window, const std::vector<QWidget*>& areas) : QObject(&window) {
    for (QWidget* widget : areas) {
        Area area{widget, {}, nullptr};
        for (QWidget* child : widget->findChildren<QWidget*>()) {
            if ((child->focusPolicy() & Qt::ClickFocus) == 0) continue;
            area.stops.push_back(child);
            child->installEventFilter(this);
        }
        if (area.stops.empty()) continue;
        make_current(area, area.stops.front());
        areas_.push_back(std::move(area));
    }
    for (std::size_t n = 1; n < areas_.size(); ++n)
        QWidget::setTabOrder(areas_[n - 1].stops.back(), areas_[n].stops.front());

    connect(new QShortcut(QKeySequence(Qt::Key_F6), &window), &QShortcut::activated, this, [this] { go_to_area(1); });
    connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F6), &window), &QShortcut::activated, this,
            [this] { go_to_area(-1); });
}

AreaKeys::Area* AreaKeys::area_of(const QObject* stop) {
    for (Area& area : areas_) {
        if (std::find(area.stops.begin(), area.stops.end(), stop) != area.stops.end()) return &area;
    }
    return nullptr;
}

// Of an area's stops only one can be reached with Tab: the one that had the focus last.
void AreaKeys::make_current(Area& area, QWidget* stop) {
    area.current = stop;
    for (QWidget* each : area.stops) each->setFocusPolicy(each == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

void AreaKeys::go_to_area(int step) {
    const Area* here = area_of(QApplication::focusWidget());
    const int count = static_cast<int>(areas_.size());
    int next =
        here == nullptr ? (step > 0 ? 0 : count - 1) : (static_cast<int>(here - areas_.data()) + step + count) % count;
    for (int tried = 0; tried < count; ++tried, next = (next + step + count) % count) {
        Area& area = areas_[static_cast<std::size_t>(next)];
        if (!area.current->isEnabled() || !area.current->isVisible()) {
            const auto usable = std::find_if(area.stops.begin(), area.stops.end(), [](const QWidget* stop) {
                return stop->isEnabled() && stop->isVisible();
            });
            if (usable == area.stops.end()) continue;
            make_current(area, *usable);
        }
        go_to(*area.current, Qt::TabFocusReason);
        return;
    }
}

bool AreaKeys::go_in_direction(const Area& area, const QWidget& from, int key) {
    QWidget* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (QWidget* stop : area.stops) {
        if (stop == &from || !stop->isVisible() || !stop->isEnabled()) continue;
        const double way = cost(centre_in_window(*stop) - centre_in_window(from), key);
        if (way < least) {
            least = way;
            nearest = stop;
        }
    }
    if (nearest == nullptr) return false;
    go_to(*nearest, Qt::OtherFocusReason);
    return true;
}

bool AreaKeys::eventFilter(QObject* watched, QEvent* event) {
    Area* area = area_of(watched);
    if (area == nullptr) return false;
    auto* stop = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::FocusIn) make_current(*area, stop);
    if (event->type() != QEvent::KeyPress) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() != Qt::NoModifier && key->modifiers() != Qt::KeypadModifier) return false;
    switch (key->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            // The only one of its area keeps the arrows for itself.
            if (area->stops.size() == 1) return false;
            go_in_direction(*area, *stop, key->key());
            return true;
        default: return false;
    }
}

}  // namespace nimbry::windows
