#include "windows/screen_room.h"

#include <QScreen>
#include <QScrollArea>

namespace nimbry::windows {

QSize size_on_screen(QSize wanted, QSize available) {
    constexpr QSize frame_of_a_window(20, 60);
    return wanted.boundedTo(available - frame_of_a_window);
}

QSize size_on_screen(QSize wanted, const QWidget& window) {
    return size_on_screen(wanted, window.screen()->availableSize());
}

void scroll_in(QScrollArea& area, QWidget* content) {
    area.setFrameShape(QFrame::NoFrame);
    area.setWidgetResizable(true);
    area.setFocusPolicy(Qt::NoFocus);
    area.setWidget(content);
}

}  // namespace nimbry::windows
