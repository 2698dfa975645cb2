#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/ports/streams.h"
#include "tests/world/journal.h"
#include "tests/world/virtual_pauses.h"

namespace nimbry::test {

/// The far end of one connection, which the test plays. It lives on when the copy has dropped its own end.
class ScriptedPeer {
public:
    /// One send of the copy.
    struct Sent {
        Instant at;
        std::string bytes;
    };

    /// The sends of the copy, in order; those of a peer that stalls, too.
    [[nodiscard]] const std::vector<Sent>& sent() const { return sent_; }
    /// The same as one text.
    [[nodiscard]] std::string heard() const;
    using Answer = std::function<void(ScriptedPeer&, const std::string&)>;
    /// Called with this peer and the bytes of each send, in a conversation of its own: it may wait, and answer.
    void on_heard(Answer answer) { answer_ = std::move(answer); }

    /// Bytes reach the copy now.
    void say(const std::string& bytes);
    /// The peer closes. The copy still gets what was said before.
    void close();
    /// While it stalls, what the copy sends stays with the copy as unsent.
    void stall(bool stalls);
    /// Sends of the copy fail from now on.
    void break_sends(SendFault fault) { broken_ = std::move(fault); }

    /// True once the copy has closed its end or dropped it.
    [[nodiscard]] bool left() const { return left_; }
    /// When it did.
    [[nodiscard]] Instant left_at() const { return left_at_; }

private:
    friend class ScriptedStream;
    friend class ScriptedListener;
    friend class ScriptedStreams;
    class ScriptedStreams* streams_ = nullptr;
    std::string address_;
    StreamState state_ = StreamState::connecting;
    std::vector<Sent> sent_;
    std::size_t unsent_ = 0;
    std::string to_copy_;
    std::optional<SendFault> broken_;
    Answer answer_;
    bool stalls_ = false;
    bool left_ = false;
    Instant left_at_{};
};

using ScriptedPeerPtr = std::shared_ptr<ScriptedPeer>;

/// TCP in virtual time. Whom the copy calls and who calls the copy is the test's script:
///
///     world.streams.answer("10.0.0.1", 60131, [](const ScriptedPeerPtr& server) { server->say("cmdAcceptCNX,"); });
///     ScriptedPeerPtr client = world.streams.call(60131, "10.0.0.9");      // null: nobody listens there
///
/// A host that no answer was scripted for refuses.
class ScriptedStreams : public Streams {
public:
    /// `journal`, if any, gets "connect HOST:PORT", "listen PORT" and "listener closed". All must outlive this object.
    ScriptedStreams(const Clock& clock, VirtualPauses& pauses, Journal* journal = nullptr)
        : clock_(clock), pauses_(pauses), journal_(journal) {}

    std::unique_ptr<Stream> connect(const std::string& host, std::uint16_t port,
                                    const std::string& local_address) override;
    Listening listen(std::uint16_t port, const std::string& local_address) override;

    using Greeting = std::function<void(const ScriptedPeerPtr&)>;
    /// Connections to this host and port stand `after` being asked for; then `greeting` runs as a conversation.
    void answer(const std::string& host, std::uint16_t port, Greeting greeting, Milliseconds after = Milliseconds{1});
    /// Connections to this host and port are never answered.
    void ignore(const std::string& host, std::uint16_t port);

    /// Somebody at `address` connects to the copy's port. Null when it is refused: nobody listens there, or somebody
    /// waits there already.
    ScriptedPeerPtr call(std::uint16_t port, const std::string& address = "192.168.1.9");

    /// What listen() fails with from now on; nothing: it works.
    std::optional<SendFault> unlistenable;
    [[nodiscard]] bool listening(std::uint16_t port) const { return doors_.contains(port); }

    /// One attempt of the copy to connect, or to listen (with its own address as the host).
    struct Attempt {
        Instant at;
        std::string host;
        std::uint16_t port;
        std::string local_address;
    };
    std::vector<Attempt> connects;
    std::vector<Attempt> listens;

    /// Called soon after something has happened at a stream, in a conversation of its own.
    void on_stir(std::function<void()> stirred) { stirred_ = std::move(stirred); }

private:
    friend class ScriptedPeer;
    friend class ScriptedStream;
    friend class ScriptedListener;
    struct Answer {
        Greeting greeting;
        Milliseconds after{1};
        bool ignores = false;
    };
    struct Door {
        ScriptedPeerPtr waiting;
    };
    void stir();
    void note(std::string line) {
        if (journal_ != nullptr) journal_->note(std::move(line));
    }

    const Clock& clock_;
    VirtualPauses& pauses_;
    Journal* journal_;
    std::map<std::pair<std::string, std::uint16_t>, Answer> answers_;
    std::map<std::uint16_t, Door> doors_;
    std::function<void()> stirred_;
    bool stirring_ = false;
};

}  // namespace nimbry::test
