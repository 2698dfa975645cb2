#include "windows/conversion_tip.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPolygonF>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/text_bytes.h"
#include "windows/accessibility.h"
#include "windows/card_outline.h"
#include "windows/tabular_text.h"

namespace nimbry::windows {
namespace {

constexpr int side_margin = 14, end_margin = 10;

}  // namespace

ConversionTip::ConversionTip(QWidget* main_window)
    : QWidget(main_window, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus) {
    setObjectName(QStringLiteral("Nimbryconv"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);  // it may cover the box's neighbours

    name_.setObjectName(QStringLiteral("Label1"));
    lines_.setObjectName(QStringLiteral("Label2"));
    for (QLabel* label : {&name_, &lines_}) {
        label->setTextFormat(Qt::PlainText);
        label->setForegroundRole(QPalette::ToolTipText);
    }
    QFont bold = font();
    bold.setBold(true);
    name_.setFont(bold);
    lines_.setFont(scaled(font(), 11.0 / 9));

    auto* column = new QVBoxLayout(this);
    column->setSpacing(4);
    column->addWidget(&name_);
    column->addWidget(&lines_);
}

bool ConversionTip::show_at(QWidget& box, Read read) {
    const std::optional<ConversionPopup> popup = read();
    if (!popup) return false;
    hide();
    box_ = &box;
    read_ = std::move(read);
    box.installEventFilter(this);
    tell(*popup);
    show();
    announce(*this);
    return true;
}

void ConversionTip::refresh() {
    if (!isVisible()) return;
    const std::optional<ConversionPopup> popup = box_ == nullptr ? std::nullopt : read_();
    if (popup)
        tell(*popup);
    else
        hide();
}

void ConversionTip::tell(const ConversionPopup& popup) {
    name_.setText(platform::unicode(popup.name));
    lines_.setText(platform::unicode(popup.lines).remove(u'\r'));
    setAccessibleName(name_.text());
    setAccessibleDescription(lines_.text());
    take_place();
}

void ConversionTip::take_place() {
    const QRect anchor(box_->mapToGlobal(QPoint(0, 0)), box_->size());
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    // The pointer adds to one of two margins, so the size is the same on either side of the box.
    layout()->setContentsMargins(side_margin, end_margin + pointer, side_margin, end_margin);
    const QSize size = layout()->totalSizeHint();
    place_ = place(anchor, size, screen->availableGeometry());
    if (!place_.below) layout()->setContentsMargins(side_margin, end_margin, side_margin, end_margin + pointer);
    move(place_.corner);
    resize(size);
    setMask(inside_of(outline(0)));
    update();
}

ConversionTip::Place ConversionTip::place(const QRect& anchor, const QSize& size, const QRect& screen) {
    const int middle = anchor.center().x();
    Place place;
    place.below = anchor.bottom() + size.height() <= screen.bottom();
    const int x = std::clamp(middle - size.width() / 2, screen.left(),
                             std::max(screen.left(), screen.right() + 1 - size.width()));
    place.corner = {x, place.below ? anchor.bottom() + 1 : anchor.top() - size.height()};
    const int nearest = static_cast<int>(card_radius) + pointer;
    place.point = std::clamp(middle - x, nearest, std::max(nearest, size.width() - nearest));
    return place;
}

QPainterPath ConversionTip::outline(double inset) const {
    const double top = place_.below ? pointer : 0, bottom = place_.below ? 0 : pointer;
    const QRectF body = QRectF(rect()).adjusted(inset, top + inset, -inset, -bottom - inset);
    const double edge = place_.below ? body.top() : body.bottom();
    const double tip = place_.below ? inset : height() - inset;
    QPainterPath card, arrow;
    card.addRoundedRect(body, card_radius, card_radius);
    arrow.addPolygon(QPolygonF({{place_.point - 1.0 * pointer, edge},
                                {1.0 * place_.point, tip},
                                {place_.point + 1.0 * pointer, edge},
                                {place_.point - 1.0 * pointer, edge}}));
    return card.united(arrow);
}

bool ConversionTip::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Leave:
        case QEvent::MouseButtonPress:
        case QEvent::FocusOut:
        case QEvent::WindowDeactivate:
        case QEvent::Hide: hide(); break;
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) break;
            hide();
            return true;
        default: break;
    }
    return QWidget::eventFilter(watched, event);
}

void ConversionTip::hideEvent(QHideEvent*) {
    if (box_ != nullptr) box_->removeEventFilter(this);
}

void ConversionTip::paintEvent(QPaintEvent*) {
    paint_card(*this, outline(0.5));
}

}  // namespace nimbry::windows
