#include "tests/world/scripted_streams.h"

namespace nimbry::test {

using namespace std::chrono_literals;

/// The copy's end.
class ScriptedStream : public Stream {
public:
    explicit ScriptedStream(ScriptedPeerPtr peer) : peer_(std::move(peer)) {}
    ~ScriptedStream() override { leave(); }
    ScriptedStream(const ScriptedStream&) = delete;
    ScriptedStream& operator=(const ScriptedStream&) = delete;

    [[nodiscard]] StreamState state() const override {
        if (peer_->left_) return StreamState::closed;
        return peer_->to_copy_.empty() ? peer_->state_ : StreamState::connected;
    }
    [[nodiscard]] std::string peer() const override {
        return peer_->state_ == StreamState::connecting ? "" : peer_->address_;
    }
    std::string take() override {
        std::string taken = std::exchange(peer_->to_copy_, {});
        // Whoever took the last bytes of a closed connection finds it closed at the next look.
        if (!taken.empty() && peer_->state_ == StreamState::closed) peer_->streams_->stir();
        return taken;
    }
    std::optional<SendFault> send(std::string_view bytes) override {
        ScriptedPeer& peer = *peer_;
        if (peer.broken_) return peer.broken_;
        if (peer.state_ != StreamState::connected || peer.left_) return SendFault{107, "Not connected"};
        peer.sent_.push_back({peer.streams_->clock_.monotonic(), std::string(bytes)});
        if (peer.stalls_) peer.unsent_ += bytes.size();
        if (peer.answer_) {
            peer.streams_->pauses_.after(0s, [to = peer_, text = std::string(bytes)] { to->answer_(*to, text); });
        }
        return std::nullopt;
    }
    [[nodiscard]] std::size_t unsent() const override { return peer_->unsent_; }
    void close() override { leave(); }

private:
    void leave() {
        if (std::exchange(peer_->left_, true)) return;
        peer_->left_at_ = peer_->streams_->clock_.monotonic();
    }
    ScriptedPeerPtr peer_;
};

class ScriptedListener : public StreamListener {
public:
    ScriptedListener(ScriptedStreams& streams, std::uint16_t port) : streams_(streams), port_(port) {}
    ~ScriptedListener() override {
        const auto door = streams_.doors_.find(port_);
        if (door->second.waiting) door->second.waiting->left_ = true;
        streams_.doors_.erase(door);
        streams_.note("listener closed");
    }
    ScriptedListener(const ScriptedListener&) = delete;
    ScriptedListener& operator=(const ScriptedListener&) = delete;

    std::unique_ptr<Stream> accept() override {
        ScriptedPeerPtr came = std::exchange(streams_.doors_.at(port_).waiting, nullptr);
        return came ? std::make_unique<ScriptedStream>(std::move(came)) : nullptr;
    }

private:
    ScriptedStreams& streams_;
    std::uint16_t port_;
};

std::string ScriptedPeer::heard() const {
    std::string all;
    for (const Sent& each : sent_) all += each.bytes;
    return all;
}

void ScriptedPeer::say(const std::string& bytes) {
    if (state_ != StreamState::connected || left_) return;
    to_copy_ += bytes;
    streams_->stir();
}

void ScriptedPeer::close() {
    state_ = StreamState::closed;
    streams_->stir();
}

void ScriptedPeer::stall(bool stalls) {
    stalls_ = stalls;
    if (stalls) return;
    unsent_ = 0;
    streams_->stir();
}

std::unique_ptr<Stream> ScriptedStreams::connect(const std::string& host, std::uint16_t port,
                                                 const std::string& local_address) {
    connects.push_back({clock_.monotonic(), host, port, local_address});
    note("connect " + host + ":" + std::to_string(port));
    const auto peer = std::make_shared<ScriptedPeer>();
    peer->streams_ = this;
    peer->address_ = host;
    const auto found = answers_.find({host, port});
    if (found == answers_.end()) {
        pauses_.after(1ms, [peer] { peer->close(); });
    } else if (!found->second.ignores) {
        pauses_.after(found->second.after, [this, peer, greeting = found->second.greeting] {
            if (peer->left_) return;
            peer->state_ = StreamState::connected;
            stir();
            if (greeting) greeting(peer);
        });
    }
    return std::make_unique<ScriptedStream>(peer);
}

Listening ScriptedStreams::listen(std::uint16_t port, const std::string& local_address) {
    listens.push_back({clock_.monotonic(), "", port, local_address});
    const bool taken = doors_.contains(port);
    note("listen " + std::to_string(port) + (taken || unlistenable ? " failed" : ""));
    if (unlistenable) return {nullptr, *unlistenable};
    if (taken) return {nullptr, {98, "Address already in use"}};
    doors_.emplace(port, Door{});
    return {std::make_unique<ScriptedListener>(*this, port), {}};
}

void ScriptedStreams::answer(const std::string& host, std::uint16_t port, Greeting greeting, Milliseconds after) {
    answers_[{host, port}] = {std::move(greeting), after, false};
}

void ScriptedStreams::ignore(const std::string& host, std::uint16_t port) {
    answers_[{host, port}] = {{}, Milliseconds{0}, true};
}

ScriptedPeerPtr ScriptedStreams::call(std::uint16_t port, const std::string& address) {
    const auto door = doors_.find(port);
    if (door == doors_.end() || door->second.waiting) return nullptr;
    auto peer = std::make_shared<ScriptedPeer>();
    peer->streams_ = this;
    peer->address_ = address;
    peer->state_ = StreamState::connected;
    door->second.waiting = peer;
    stir();
    return peer;
}

void ScriptedStreams::stir() {
    if (!stirred_ || std::exchange(stirring_, true)) return;
    pauses_.after(0s, [this] {
        stirring_ = false;
        stirred_();
    });
}

}  // namespace nimbry::test
