#include "tests/windows/camera.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <utility>

namespace nimbry::test {
namespace {

constexpr int settling_ms = 60;  // from the last paint until the window system shows it

bool on_a_screen() {
    return QApplication::platformName() != QStringLiteral("offscreen");
}

void settle(QWidget& window) {
    static_cast<void>(QTest::qWaitForWindowExposed(&window, 1000));
    if (on_a_screen()) QTest::qWait(settling_ms);
    QApplication::processEvents();
}

}  // namespace

Camera::Camera(const QString& folder) : Camera(folder, {}) {}

Camera::Camera(const QString& folder, std::map<QString, QString> chosen) : folder_(folder), chosen_(std::move(chosen)) {
    QDir().mkpath(folder);
    // Out of the way, so that nothing looks as if somebody pointed at it.
    QCursor::setPos(QApplication::primaryScreen()->geometry().bottomRight());
}

void Camera::keep(const QPixmap& picture, const QString& name) {
    const QString scale = QString::number(qRound(qApp->devicePixelRatio() * 100));
    const QString file = chosen_.empty() ? name + u'-' + scale : chosen_[name];
    if (picture.toImage().convertToFormat(QImage::Format_RGB32).save(folder_ + u'/' + file + QStringLiteral(".png")))
        ++taken_;
}

void Camera::take(QWidget& window, const QString& name) {
    if (!keeps(name)) return;
    settle(window);
    if (!on_a_screen()) return keep(window.grab(), name);
    const QRect place = window.geometry();
    keep(window.screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()), name);
}

void Camera::take_with(QWidget& window, QWidget& over, const QString& name) {
    if (!keeps(name)) return;
    settle(over);
    if (on_a_screen()) {
        const QRect place = window.geometry().united(over.geometry());
        return keep(window.screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()), name);
    }
    QPixmap whole = window.grab();
    QPainter painter(&whole);
    painter.drawPixmap(window.mapFromGlobal(over.pos()), over.grab());
    painter.end();
    keep(whole, name);
}

}  // namespace nimbry::test
