#include "windows/content_scroll.h"

#include <QApplication>
#include <QScrollBar>

#include "windows/screen_room.h"

namespace nimbry::windows {

ContentScroll::ContentScroll(QWidget* content, QWidget* parent) : QScrollArea(parent) {
    scroll_in(*this, content);
    setMinimumWidth(content->sizeHint().width() + verticalScrollBar()->sizeHint().width());
    connect(qApp, &QApplication::focusChanged, this, [this, content](QWidget*, QWidget* now) {
        if (now != nullptr && content->isAncestorOf(now)) ensureWidgetVisible(now);
    });
}

QSize ContentScroll::sizeHint() const {
    return widget()->sizeHint().expandedTo(minimumSize());
}

}  // namespace nimbry::windows
