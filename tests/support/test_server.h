#pragma once

#include <QProcess>
#include <QStringList>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/temporary_folder.h"

namespace nimbry {

/// A server of tests/servers/ on a free port of the loopback, with a folder of its own; it ends with this object. The
/// distribution's own Python runs it: that one has the servers' packages.
class TestServer {
public:
    /// Its arguments are the folder and then `arguments`.
    explicit TestServer(const QString& script, const QStringList& arguments = {}) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral("/usr/bin/python3"),
                       QStringList{QStringLiteral(NIMBRY_SERVERS "/") + script, QString::fromStdString(folder.path())} +
                           arguments);
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(60'000)) throw std::runtime_error("no server: " + script.toStdString());
        }
        port_ = static_cast<std::uint16_t>(process_.readLine().trimmed().toInt());
    }
    ~TestServer() {
        process_.kill();
        process_.waitForFinished();
    }
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    [[nodiscard]] std::uint16_t port() const { return port_; }

    const platform::test::TemporaryFolder folder;

private:
    QProcess process_;
    std::uint16_t port_ = 0;
};

/// A certificate of this machine that signs itself, with its key, in one PEM file: what a server shows, and what a
/// client that is to trust it names in SSL_CERT_FILE.
class TestCertificate {
public:
    explicit TestCertificate(const QString& name = QStringLiteral("localhost")) {
        const QString file = QString::fromStdString(path());
        QProcess openssl;
        openssl.setStandardErrorFile(QProcess::nullDevice());
        openssl.start(QStringLiteral("openssl"),
                      {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=" + name, "-addext",
                       "subjectAltName=DNS:" + name, "-keyout", file + ".key", "-out", file});
        openssl.waitForFinished(60'000);
        std::ifstream key(path() + ".key", std::ios::binary);
        std::ofstream both(path(), std::ios::binary | std::ios::app);
        both << key.rdbuf();
    }
    [[nodiscard]] std::string path() const { return folder_.path("certificate.pem"); }

private:
    const platform::test::TemporaryFolder folder_;
};

}  // namespace nimbry
