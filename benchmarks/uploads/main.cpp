// How long an upload keeps everything else waiting: the longest gap of a heartbeat of 5 ms on the event loop, during an
// upload of a hundred pages and while a server does each of the things that servers do wrong.

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>

#include "benchmarks/pages.h"
#include "engine/publish/publishing.h"
#include "platform/curl_transfers.h"
#include "platform/disk_files.h"
#include "platform/loop_pauses.h"
#include "platform/system_clock.h"
#include "tests/support/test_server.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using Gap = std::chrono::duration<double, std::milli>;

constexpr auto beat = 5ms;
// The stated pauses: one before the look at the templates, one before the pictures, one before taking leave, and one
// before each file, of which there is the raw line beside the pages.
constexpr auto stated_pauses = 50ms * (3 + pages_uploaded + 1);

/// A copy on a real folder, whose waits and transfers are real.
class Uploads {
public:
    Uploads() {
        heart_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&heart_, &QTimer::timeout, &heart_, [this] {
            const Instant now = clock_.monotonic();
            longest_ = std::max(longest_, Gap(now - last_));
            last_ = now;
        });
        put_pages(files_);
        auto& settings = world_.state.publish.NimbryFTPSetup;
        settings.ChkEnableFTP = true;
        settings.FTPServer = "127.0.0.1";
        settings.FTPUser = "me";
        settings.FTPPass = "secret";
        settings.FTPRemoteFile = "weather.htm";
        settings.FTPact = false;
    }

    /// Uploads to a server; after `patience` it is broken off, as the watchdog would.
    void run(const char* name, std::uint16_t port, Milliseconds patience) {
        world_.state.settings.FTPPort = std::to_string(port);
        bool over = false;
        const Instant begun = clock_.monotonic();
        last_ = begun;
        longest_ = {};
        heart_.start(beat);
        pauses_.start([&] {
            FTPupload(copy_);
            over = true;
        });
        QTimer end_of_patience;
        end_of_patience.setSingleShot(true);
        QObject::connect(&end_of_patience, &QTimer::timeout, [&] { cancel_ftp(copy_); });
        end_of_patience.start(patience);
        while (!over) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        heart_.stop();
        end_of_patience.stop();
        std::printf("%-24s longest gap %6.2f ms   lasted %7.0f ms   %s\n", name, longest_.count(),
                    Gap(clock_.monotonic() - begun).count(), world_.state.publish.last_ftp.result.c_str());
    }

private:
    platform::SystemClock clock_;
    platform::LoopPauses pauses_{clock_};
    const platform::test::TemporaryFolder folder_;
    platform::DiskFiles files_{folder_.path()};
    platform::CurlTransfers transfers_{[this] { pauses_.look_now(); }};
    KnownState world_;
    Ports ports_{clock_,         pauses_,        files_,        world_.line,    world_.datasock,
                 world_.streams, world_.notices, world_.sounds, world_.desktop, transfers_};
    Copy copy_{world_.state, ports_, world_.ini, world_.log, world_.timers};
    QTimer heart_;
    Instant last_{};
    Gap longest_{};
};

int run_all() {
    Uploads uploads;
    {
        const TestServer server(QStringLiteral("ftp_server.py"));
        uploads.run("nobody listens", 1, 3s);
        uploads.run("100 pages", server.port(), 60s);
        std::printf("%-24s %.0f ms of it are stated pauses\n", "", Gap(stated_pauses).count());
    }
    for (const char* fault : {"silent-after-connect", "silent-after-user", "silent-after-login", "closes-at-once",
                              "greets-with-http", "421-greeting", "421-pass", "530-pass", "550-cwd", "553-stor",
                              "425-data", "closed-in-mid-transfer", "226-withheld", "quit-never-answered", "slow"}) {
        const TestServer server(QStringLiteral("ftp_peer.py"), {QString::fromLatin1(fault)});
        uploads.run(fault, server.port(), std::string_view(fault) == "quit-never-answered" ? 60s : 3s);
    }
    return 0;
}

}  // namespace
}  // namespace nimbry::test

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    return nimbry::test::run_all();
}
