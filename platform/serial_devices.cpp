#include "platform/serial_devices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <QSet>

namespace nimbry::platform {

std::vector<std::string> serial_devices() {
    QStringList ports;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) ports.append(port.systemLocation());
    ports.sort();
    return serial_devices(QStringLiteral("/dev/serial/by-id"), ports);
}

std::vector<std::string> serial_devices(const QString& by_id_folder, const QStringList& ports) {
    std::vector<std::string> devices;
    QSet<QString> named;
    const auto add = [&devices](const QString& path) { devices.push_back(QFile::encodeName(path).toStdString()); };
    for (const QFileInfo& link :
         QDir(by_id_folder).entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
        if (!link.exists()) continue;  // of an adapter that is being pulled out
        named.insert(link.canonicalFilePath());
        add(link.absoluteFilePath());
    }
    for (const QString& port : ports) {
        const QString real = QFileInfo(port).canonicalFilePath();
        if (!named.contains(real)) add(port);
    }
    return devices;
}

}  // namespace nimbry::platform
