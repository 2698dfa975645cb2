#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "engine/ports/datagrams.h"
#include "engine/ports/desktop.h"
#include "engine/ports/notices.h"
#include "engine/ports/pauses.h"
#include "tests/world/journal.h"

namespace nimbry::test {

/// A UDP socket that remembers what was sent, and holds what arrives. Every bind and send succeeds unless the test says
/// otherwise.
class RecordingDatagrams : public Datagrams {
public:
    explicit RecordingDatagrams(Journal* journal = nullptr) : journal_(journal) {}

    [[nodiscard]] bool IsNetworkInstalled() const override { return network; }
    bool bind(std::uint16_t local_port, const std::string& address, PortUse use) override;
    void close() override;
    [[nodiscard]] bool is_open() const override { return port_.has_value(); }
    std::optional<Datagram> receive() override;
    std::optional<SendFault> send(const std::string& host, std::uint16_t remote_port, const Bytes& bytes) override;

    struct Sent {
        std::string host;
        std::uint16_t port;
        Bytes bytes;
    };
    /// Every datagram, failed ones too, in order.
    std::vector<Sent> sent;
    /// Every port that was asked for, in order.
    std::vector<std::uint16_t> binds;
    /// What the last bind asked for beside the port.
    std::string bound_address;
    PortUse bound_use = PortUse::exclusive;
    /// A datagram arrives. False when nobody is bound to hear it, or when the queue is full.
    bool arrive(const Bytes& bytes, const std::string& sender);
    /// What has arrived and was not received.
    [[nodiscard]] std::size_t waiting() const { return held_.size(); }
    /// False: the next binds fail.
    bool bindable = true;
    /// False: a machine without any network.
    bool network = true;
    /// What a send to this host ends with.
    struct Refusal {
        std::string host;
        SendFault fault;
    };
    std::vector<Refusal> refusals;
    /// The local port that is bound; nothing when closed.
    [[nodiscard]] std::optional<std::uint16_t> port() const { return port_; }

private:
    Journal* journal_;
    std::optional<std::uint16_t> port_;
    std::deque<Datagram> held_;
};

/// What the person at the screen was told and asked, with scripted answers. A box that no answer was scripted for is
/// answered as without a window: `ok`, `no`, `cancel`.
class RecordingNotices : public Notices {
public:
    /// `pauses` lets a scripted answer take its time. Both must outlive this object.
    RecordingNotices(const Clock& clock, Pauses& pauses, Journal* journal = nullptr)
        : clock_(clock), pauses_(pauses), journal_(journal) {}

    void balloon(const Balloon& balloon) override;
    Answer box(const MessageBox& box) override;
    void show_window(const std::string& name) override;
    void progress(const std::string& line) override;
    void restore_main_window() override;
    void beep() override;

    /// The next box without an answer gets this one, after `thinking_time`.
    void will_answer(Answer answer, Milliseconds thinking_time = Milliseconds{0});

    /// Something shown, and when.
    template <class What>
    struct Shown {
        Instant at;
        What what;
    };
    std::vector<Shown<Balloon>> balloons;
    std::vector<Shown<MessageBox>> boxes;
    std::vector<std::string> windows;
    std::vector<Shown<std::string>> lines;  ///< of progress
    int restored = 0;
    int beeps = 0;

private:
    struct Scripted {
        Answer answer;
        Milliseconds thinking_time;
    };
    void note(std::string line) {
        if (journal_ != nullptr) journal_->note(std::move(line));
    }

    const Clock& clock_;
    Pauses& pauses_;
    Journal* journal_;
    std::deque<Scripted> answers_;
};

/// The batch files that were started, by their full path, in order, and how often the modem was hung up.
class RecordingDesktop : public Desktop {
public:
    explicit RecordingDesktop(Journal* journal = nullptr) : journal_(journal) {}
    void run_batch(const std::string& path) override { batches.push_back(path); }
    void hang_up_modem() override;

    std::vector<std::string> batches;
    int hang_ups = 0;

private:
    Journal* journal_;
};

/// The sounds that were asked for, in order.
class RecordingSounds : public Sounds {
public:
    explicit RecordingSounds(Journal* journal = nullptr) : journal_(journal) {}
    void play(const std::string& file) override;

    std::vector<std::string> played;

private:
    Journal* journal_;
};

}  // namespace nimbry::test
