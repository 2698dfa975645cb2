#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QByteArray>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/control_protocol.h"
#include "platform/control_server.h"
#include "platform/loop_pauses.h"
#include "platform/system_clock.h"
#include "tests/platform/event_loop.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::platform::test {

using Words = std::vector<std::string>;

/// The other end of a connection, in the same event loop.
class TestCaller {
public:
    explicit TestCaller(const std::string& folder) : connection_(connect_to_copy(folder)) {}

    [[nodiscard]] bool connected() const { return static_cast<bool>(connection_.socket); }
    [[nodiscard]] pid_t process() const { return connection_.process; }

    void send(const QByteArray& bytes) const {
        (void)::send(connection_.socket.number(), bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    }
    void ask(const Words& words) const { send(request_line(words)); }
    void hang_up() { connection_.socket.close(); }

    /// Takes what has come. True once the copy has closed the connection.
    bool read() {
        char piece[64 * 1024];
        while (true) {
            const ssize_t got = ::recv(connection_.socket.number(), piece, sizeof piece, MSG_DONTWAIT);
            if (got < 0) return errno != EAGAIN;
            if (got == 0) return true;
            received_.append(piece, got);
        }
    }
    /// Reads until the copy has closed the connection.
    std::string answer() {
        EXPECT_TRUE(run_events_until([this] { return read(); }));
        return received_.toStdString();
    }
    [[nodiscard]] std::string received() const { return received_.toStdString(); }

private:
    ControlConnection connection_;
    QByteArray received_;
};

/// A server of a folder of its own, and what it answers with.
class ControlServerTest : public testing::Test {
protected:
    ControlServerTest() { serve(folder.path()); }
    void TearDown() override { pauses.finish(); }

    void serve(const std::string& path, std::chrono::milliseconds patience = std::chrono::seconds{10}) {
        server.emplace(
            path, pauses, [this](const Words& words, Asker& asker) { return answering(words, asker); }, patience);
    }
    [[nodiscard]] bool comes(const std::function<bool()>& condition) { return run_events_until(condition); }

    TemporaryFolder folder;
    SystemClock clock;
    LoopPauses pauses{clock};
    /// What the copy does with a request; a test puts its own in.
    std::function<int(const Words&, Asker&)> answering = [](const Words& words, Asker& asker) {
        for (const std::string& word : words) asker.print(word + '\n');
        return 0;
    };
    std::optional<ControlServer> server;
};

inline constexpr const char* done_line = "{\"status\":0}\n";

}  // namespace nimbry::platform::test
