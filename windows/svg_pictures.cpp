#include "windows/svg_pictures.h"

#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

static void load_pictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace nimbry::windows {
namespace {

QPixmap rendered(const QString& name, int size, qreal ratio) {
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    if (const auto drawing = vector_picture(name); drawing->isValid()) {
        QPainter painter(&pixmap);
        drawing->render(&painter, QRectF(0, 0, size, size));
    }
    return pixmap;
}

QString cache_key(const QString& name, int size, qreal ratio, const QString& tint) {
    return QStringLiteral("nimbry/%1/%2/%3/%4").arg(name).arg(size).arg(ratio).arg(tint);
}

}  // namespace

std::unique_ptr<QSvgRenderer> vector_picture(const QString& name) {
    load_pictures();
    return std::make_unique<QSvgRenderer>(QStringLiteral(":/pictures/") + name + QStringLiteral(".svg"));
}

QPixmap picture(const QString& name, int size, qreal ratio) {
    const QString key = cache_key(name, size, ratio, {});
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = rendered(name, size, ratio);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QPixmap tinted_picture(const QString& name, int size, qreal ratio, const QColor& colour) {
    const QString key = cache_key(name, size, ratio, colour.name(QColor::HexArgb));
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = rendered(name, size, ratio);
        QPainter painter(&pixmap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRect(0, 0, size, size), colour);
        painter.end();
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QIcon tinted_icon(const QString& name, int size, const QColor& colour) {
    QColor dimmed = colour;
    dimmed.setAlphaF(0.4F);
    QIcon icon;
    for (const int ratio : {1, 2, 3}) {
        icon.addPixmap(tinted_picture(name, size, ratio, colour), QIcon::Normal);
        icon.addPixmap(tinted_picture(name, size, ratio, dimmed), QIcon::Disabled);
    }
    return icon;
}

QIcon application_icon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) icon.addPixmap(picture(QStringLiteral("nimbry"), size, 1));
    return icon;
}

QString notice_picture(const QString& code) {
    const QString lower = code.toLower();
    const QString shape = lower.left(1), style = lower.mid(1);
    if (style != QString() && style != QStringLiteral("9")) return {};
    const QString ending = style.isEmpty() ? QString() : QStringLiteral("-9");
    if (shape == QStringLiteral("i")) return QStringLiteral("notice-information") + ending;
    if (shape == QStringLiteral("x")) return QStringLiteral("notice-error") + ending;
    if (shape == QStringLiteral("!")) return QStringLiteral("notice-warning") + ending;
    if (lower == QStringLiteral("?")) return QStringLiteral("notice-question");
    return {};
}

}  // namespace nimbry::windows
