#include "programs/nimbryctl/png_picture.h"

#ifdef NIMBRYCTL_DRAWS
#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>
#endif

namespace nimbry::terminal {

#ifdef NIMBRYCTL_DRAWS
namespace {

/// What Qt has to say about its surroundings (no XDG_RUNTIME_DIR, no fonts ...) is nothing for standard error, which is
/// for reasons of a failure.
void drop_message(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

bool write_png(std::string_view svg, const std::string& file) {
    qInstallMessageHandler(drop_message);
    // Letters need an application, and that one needs no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "nimbryctl";
    char* arguments[] = {name, nullptr};
    const QGuiApplication application(count, arguments);

    QSvgRenderer drawing(QByteArray(svg.data(), static_cast<qsizetype>(svg.size())));
    if (!drawing.isValid()) return false;
    QImage picture(drawing.defaultSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    return picture.save(QString::fromLocal8Bit(file.data(), static_cast<qsizetype>(file.size())), "PNG");
}
#else
bool write_png(std::string_view, const std::string&) {
    return false;
}
#endif

}  // namespace nimbry::terminal
