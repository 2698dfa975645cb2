#include "windows/splash.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>

#include "engine/core/version.h"
#include "platform/text_bytes.h"
#include "windows/card_outline.h"
#include "windows/palette_colours.h"
#include "windows/svg_pictures.h"
#include "windows/tabular_text.h"

namespace nimbry::windows {
namespace {

constexpr double radius = 12;

}  // namespace

Splash::Splash() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmStart"));
    setWindowTitle(QStringLiteral("Nimbry"));
    setWindowIcon(application_icon());
    setAttribute(Qt::WA_TranslucentBackground);

    auto* image = new QLabel;
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(picture(QStringLiteral("nimbry"), 128, devicePixelRatioF()));
    auto* product = new QLabel(QStringLiteral("Nimbry ") + platform::unicode(program_version));
    product->setObjectName(QStringLiteral("lblProduct"));
    QFont large = scaled(font(), 22.0 / 9);
    large.setBold(true);
    product->setFont(large);
    auto* loading = new QLabel(QStringLiteral("Program loading ....."));
    loading->setObjectName(QStringLiteral("lblLoading"));
    loading->setFont(scaled(font(), 11.0 / 9));

    auto* words = new QVBoxLayout;
    words->addStretch();
    words->addWidget(product);
    words->addWidget(loading);
    words->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(32, 24, 32, 24);
    row->setSpacing(24);
    row->addWidget(image);
    row->addLayout(words, 1);

    resize(QSize(420, 240).expandedTo(sizeHint()));
    QPainterPath outline;
    outline.addRoundedRect(rect(), radius, radius);
    setMask(inside_of(outline));
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());
}

void Splash::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(panel_line(palette()), 1));
    painter.setBrush(panel_back(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

}  // namespace nimbry::windows
