#pragma once

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/curl_transfers.h"
#include "tests/platform/event_loop.h"
#include "tests/support/test_server.h"

namespace nimbry::platform {

/// Trusts a certificate while it lives.
class Trust {
public:
    explicit Trust(const TestCertificate& certificate) { setenv("SSL_CERT_FILE", certificate.path().c_str(), 1); }
    ~Trust() { unsetenv("SSL_CERT_FILE"); }
    Trust(const Trust&) = delete;
    Trust& operator=(const Trust&) = delete;
};

/// The way out, with its news counted.
struct Outside {
    int news = 0;
    CurlTransfers transfers{[this] { ++news; }};
};

/// Lets events run until a piece of work has ended.
template <class Work>
bool ends(const Work& work) {
    return run_events_until([&] { return !work->under_way(); });
}

}  // namespace nimbry::platform
