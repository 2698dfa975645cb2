#pragma once

#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <memory>
#include <utility>

#include "engine/ports/streams.h"

namespace nimbry::platform {

/// TCP through QTcpSocket and QTcpServer, no proxy. Needs the QCoreApplication. Must outlive what it has given.
///
/// The listener is called from the event loop, from an event of this object's own, so it may do anything with the
/// streams, dropping them too.
class QtStreams : public QObject, public Streams {
public:
    std::unique_ptr<Stream> connect(const std::string& host, std::uint16_t port,
                                    const std::string& local_address) override;
    Listening listen(std::uint16_t port, const std::string& local_address) override;

    /// Something has happened at one of the streams since the listener was called last.
    void on_stir(std::function<void()> stirred) { stirred_ = std::move(stirred); }

    /// A stream or listener has something new: tells the listener later.
    void stir();

private:
    std::function<void()> stirred_;
    bool stirring_ = false;  ///< the listener's call is on its way
};

}  // namespace nimbry::platform
