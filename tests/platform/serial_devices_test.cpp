#include "platform/serial_devices.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace nimbry::platform {
namespace {

/// A folder of devices (plain files will do) and one of links to them.
class SerialDevices : public testing::Test {
protected:
    QString device(const char* name) {
        QString path = folder.filePath(QString::fromLatin1(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }
    void link(const char* name, const QString& target) {
        QDir().mkpath(by_id());
        EXPECT_TRUE(QFile::link(target, by_id() + u'/' + QString::fromLatin1(name)));
    }
    [[nodiscard]] QString by_id() const { return folder.filePath("by-id"); }

    const QTemporaryDir folder;
};

TEST_F(SerialDevices, ThoseWithAStableNameComeFirstAndUnderThatNameOnly) {
    const QString usb0 = device("ttyUSB0");
    const QString usb1 = device("ttyUSB1");
    const QString s0 = device("ttyS0");
    link("usb-Zeta", usb0);
    link("usb-Alpha", usb1);
    const std::string links = by_id().toStdString();
    EXPECT_EQ(serial_devices(by_id(), {s0, usb0, usb1}),
              (std::vector<std::string>{links + "/usb-Alpha", links + "/usb-Zeta", s0.toStdString()}));
}

TEST_F(SerialDevices, ALinkThatLeadsNowhereIsNoDevice) {
    const QString usb0 = device("ttyUSB0");
    link("usb-Gone", folder.filePath("ttyUSB7"));
    EXPECT_EQ(serial_devices(by_id(), {usb0}), std::vector<std::string>{usb0.toStdString()});
}

TEST_F(SerialDevices, WithoutAFolderOfLinksThePortsAreTheList) {
    const QString s0 = device("ttyS0");
    EXPECT_EQ(serial_devices(by_id(), {s0}), std::vector<std::string>{s0.toStdString()});
    EXPECT_TRUE(serial_devices(by_id(), {}).empty());
}

TEST_F(SerialDevices, APortWithoutADeviceFileIsListedAsTheSystemNamesIt) {
    EXPECT_EQ(serial_devices(by_id(), {"COM3"}), std::vector<std::string>{"COM3"});
}

}  // namespace
}  // namespace nimbry::platform
