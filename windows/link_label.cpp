#include "windows/link_label.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "windows/palette_colours.h"

namespace nimbry::windows {

QColor link_colour(bool dark, bool lit) {
    if (dark) return lit ? QColor(0xCF, 0xE6, 0xFF) : QColor(0x8C, 0xC4, 0xFF);
    return lit ? QColor(0x9A, 0x34, 0x12) : QColor(0x0B, 0x57, 0xB5);
}

LinkLabel::LinkLabel(const char* name, const QString& text, QWidget* parent) : QLabel(text, parent) {
    setObjectName(QString::fromLatin1(name));
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    show_colours();
}

void LinkLabel::show_colours() {
    QFont lined = font();
    lined.setUnderline(is_lit());
    if (lined != font()) setFont(lined);
    // A style sheet would be parsed anew each time; the palette is compared, as setting it comes back as a change.
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, link_colour(is_dark(colours), is_lit()));
    if (colours != palette()) setPalette(colours);
}

void LinkLabel::enterEvent(QEnterEvent* event) {
    QLabel::enterEvent(event);
    show_colours();
}

void LinkLabel::leaveEvent(QEvent* event) {
    QLabel::leaveEvent(event);
    show_colours();
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    show_colours();
}

void LinkLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    show_colours();
}

void LinkLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) show_colours();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space) {
        emit clicked();
    } else {
        QLabel::keyPressEvent(event);
    }
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit clicked();
}

}  // namespace nimbry::windows
