#include "windows/balloon_tip.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "platform/text_bytes.h"
#include "windows/accessibility.h"
#include "windows/card_outline.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {
namespace {

constexpr int icon_size = 24;
/// Lines that are no longer than this are not broken.
constexpr int most_width = 420;

int longest_line(const QLabel& label) {
    int longest = 0;
    for (const QString& line : label.text().split(u'\n')) {
        longest = std::max(longest, label.fontMetrics().horizontalAdvance(line) + 2);
    }
    return longest;
}

}  // namespace

BalloonTip::BalloonTip(QWidget* main_window)
    : QWidget(main_window, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus), auto_close_(this) {
    setObjectName(QStringLiteral("frmTip"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);

    icon_.setObjectName(QStringLiteral("imgDisplayIcon"));
    title_.setObjectName(QStringLiteral("lblTitle"));
    title_.setTextFormat(Qt::PlainText);
    text_.setObjectName(QStringLiteral("lblText"));
    text_.setTextFormat(Qt::PlainText);
    text_.setWordWrap(true);
    text_.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    for (QLabel* label : {&title_, &text_}) label->setForegroundRole(QPalette::ToolTipText);
    close_.setObjectName(QStringLiteral("imgClose"));
    close_.setAutoRaise(true);
    close_.setAccessibleName(QStringLiteral("Close"));
    auto_close_.setObjectName(QStringLiteral("timAutoClose"));
    auto_close_.setSingleShot(true);
    connect(&auto_close_, &QTimer::timeout, this, &BalloonTip::HideBalloon);
    connect(&close_, &QToolButton::clicked, this, &BalloonTip::HideBalloon);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(14, 12, 14, 12);
    grid->setHorizontalSpacing(10);
    grid->addWidget(&icon_, 0, 0);
    grid->addWidget(&title_, 0, 1);
    grid->addWidget(&close_, 0, 2, Qt::AlignTop);
    grid->addWidget(&text_, 1, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
}

void BalloonTip::SetBalloon(const Balloon& balloon) {
    QFont bold = font();
    bold.setBold(true);
    title_.setFont(bold);
    title_.setText(platform::unicode(balloon.title));
    text_.setText(platform::unicode(balloon.text).remove(u'\r'));

    const QString name = notice_picture(platform::unicode(balloon.icon));
    icon_.setVisible(!name.isEmpty());
    if (!name.isEmpty()) icon_.setPixmap(picture(name, icon_size, devicePixelRatioF()));

    // A notice that stays needs a way to be sent away.
    const bool stays = balloon.closes_after <= Milliseconds::zero();
    close_.setVisible(balloon.bShowClose || stays);
    close_.setIcon(tinted_icon(QStringLiteral("close"), 16, palette().color(QPalette::ToolTipText)));
    setAccessibleName(title_.text());
    setAccessibleDescription(text_.text());

    const int margins = layout()->contentsMargins().left() + layout()->contentsMargins().right();
    const int width = std::max({balloon.lWidth / twips_per_pixel, minimumSizeHint().width(),
                                std::min(longest_line(text_) + margins, most_width)});
    resize(width, std::max(balloon.lHeight / twips_per_pixel, layout()->totalHeightForWidth(width)));
    auto_close_.stop();
    if (!stays) auto_close_.start(balloon.closes_after);
}

void BalloonTip::show_at(const Balloon& balloon, const QRect& anchor) {
    SetBalloon(balloon);
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    move(place(anchor, size(), screen->availableGeometry()));
    show();
    announce(*this);
}

void BalloonTip::show_in_corner(const Balloon& balloon, const QRect& screen) {
    SetBalloon(balloon);
    move(screen.right() - width() - gap, screen.bottom() - height() - gap);
    show();
    announce(*this);
}

void BalloonTip::HideBalloon() {
    auto_close_.stop();
    hide();
}

QPoint BalloonTip::place(const QRect& anchor, const QSize& size, const QRect& screen) {
    const int x = std::clamp(anchor.left(), screen.left(), std::max(screen.left(), screen.right() + 1 - size.width()));
    const int below = anchor.bottom() + 1 + gap;
    const int y = std::clamp(below, screen.top(), std::max(screen.top(), screen.bottom() + 1 - size.height()));
    return {x, y};
}

void BalloonTip::resizeEvent(QResizeEvent*) {
    RoundCorners();
}

void BalloonTip::RoundCorners() {
    QPainterPath outline;
    outline.addRoundedRect(rect(), card_radius, card_radius);
    setMask(inside_of(outline));
}

void BalloonTip::paintEvent(QPaintEvent*) {
    QPainterPath outline;
    outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), card_radius, card_radius);
    paint_card(*this, outline);
}

}  // namespace nimbry::windows
