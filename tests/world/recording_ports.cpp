#include "tests/world/recording_ports.h"

#include <utility>

namespace nimbry::test {

bool RecordingDatagrams::bind(std::uint16_t local_port, const std::string& address, PortUse use) {
    close();
    bound_address = address;
    bound_use = use;
    binds.push_back(local_port);
    if (journal_ != nullptr) journal_->note("bind " + std::to_string(local_port) + (bindable ? "" : " failed"));
    if (bindable) port_ = local_port;
    return bindable;
}

bool RecordingDatagrams::arrive(const Bytes& bytes, const std::string& sender) {
    constexpr std::size_t queue = 256;  // of small datagrams, as a kernel holds them
    if (!is_open() || held_.size() >= queue) return false;
    held_.push_back({bytes, sender});
    return true;
}

std::optional<Datagram> RecordingDatagrams::receive() {
    if (held_.empty()) return std::nullopt;
    Datagram first = std::move(held_.front());
    held_.pop_front();
    return first;
}

void RecordingDatagrams::close() {
    held_.clear();
    if (!is_open()) return;
    port_.reset();
    if (journal_ != nullptr) journal_->note("socket close");
}

std::optional<SendFault> RecordingDatagrams::send(const std::string& host, std::uint16_t remote_port,
                                                  const Bytes& bytes) {
    sent.push_back({host, remote_port, bytes});
    if (!is_open()) return SendFault{9, "Bad file descriptor"};
    for (const Refusal& refusal : refusals) {
        if (refusal.host == host) return refusal.fault;
    }
    return std::nullopt;
}

void RecordingNotices::balloon(const Balloon& balloon) {
    balloons.push_back({clock_.monotonic(), balloon});
    note("balloon " + balloon.title);
}

Answer RecordingNotices::box(const MessageBox& box) {
    boxes.push_back({clock_.monotonic(), box});
    note("box " + box.title);
    if (answers_.empty()) {
        switch (box.choices) {
            case Choices::ok: return Answer::ok;
            case Choices::yes_no: return Answer::no;
            case Choices::ok_cancel:
            case Choices::retry_cancel: return Answer::cancel;
        }
    }
    const Scripted scripted = answers_.front();
    answers_.pop_front();
    if (scripted.thinking_time > Milliseconds{0}) pauses_.pause(scripted.thinking_time);
    return scripted.answer;
}

void RecordingNotices::show_window(const std::string& name) {
    windows.push_back(name);
    note("window " + name);
}

void RecordingNotices::progress(const std::string& line) {
    lines.push_back({clock_.monotonic(), line});
}

void RecordingNotices::restore_main_window() {
    ++restored;
    note("restore main window");
}

void RecordingNotices::beep() {
    ++beeps;
    note("beep");
}

void RecordingNotices::will_answer(Answer answer, Milliseconds thinking_time) {
    answers_.push_back({answer, thinking_time});
}

void RecordingDesktop::hang_up_modem() {
    ++hang_ups;
    if (journal_ != nullptr) journal_->note("hang up");
}

void RecordingSounds::play(const std::string& file) {
    played.push_back(file);
    if (journal_ != nullptr) journal_->note("sound " + file);
}

}  // namespace nimbry::test
