#include "windows/tip_keys.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QTextDocument>
#include <QToolTip>

namespace nimbry::windows {

void show_plain_tip(QPoint global, const QString& tip, QWidget& of) {
    QString text = tip;
    if (Qt::mightBeRichText(text)) text = text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
    QToolTip::showText(global, text, &of);
}

void draw_focus_ring(QPainter& painter, const QWidget& widget) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(widget.palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(1, 1, -1, -1), 4, 4);
}

TipKeys::TipKeys(QWidget& widget) : QObject(&widget), widget_(widget) {
    widget.setFocusPolicy(Qt::ClickFocus);
    widget.installEventFilter(this);
}

bool TipKeys::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::FocusIn:
        case QEvent::FocusOut: widget_.update(); break;
        case QEvent::KeyPress: return press(*static_cast<QKeyEvent*>(event));
        default: break;
    }
    return QObject::eventFilter(watched, event);
}

bool TipKeys::press(const QKeyEvent& key) {
    const auto* label = qobject_cast<QLabel*>(&widget_);
    if (key.matches(QKeySequence::Copy) && label != nullptr) {
        QApplication::clipboard()->setText(label->text());
        return true;
    }
    if (key.key() == Qt::Key_Space) {
        show_plain_tip(widget_.mapToGlobal(QPoint(widget_.width() / 2, widget_.height())), widget_.toolTip(), widget_);
        return true;
    }
    if (key.key() == Qt::Key_Escape && QToolTip::isVisible()) {
        QToolTip::hideText();
        return true;
    }
    return false;
}

}  // namespace nimbry::windows
