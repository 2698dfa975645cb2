#include "tests/world/scripted_transfers.h"

#include <iterator>

namespace nimbry::test {
namespace {

/// When a step ends.
class StepEnd {
public:
    explicit StepEnd(const Clock& clock) : clock_(clock), at_(clock.monotonic()) {}
    void in(ScriptedTransfers::After after) {
        at_.reset();
        if (after) at_ = clock_.monotonic() + *after;
    }
    [[nodiscard]] bool under_way() const { return !at_ || clock_.monotonic() < *at_; }

private:
    const Clock& clock_;
    std::optional<Instant> at_;
};

class ScriptedMail : public MailDelivery {
public:
    ScriptedMail(const Clock& clock, ScriptedTransfers::MailStep step, int& dropped)
        : step_(std::move(step)), ends_(clock), dropped_(dropped) {
        ends_.in(step_.after);
    }
    ~ScriptedMail() override { dropped_ += under_way() ? 1 : 0; }
    ScriptedMail(const ScriptedMail&) = delete;
    ScriptedMail& operator=(const ScriptedMail&) = delete;

    [[nodiscard]] bool under_way() const override { return ends_.under_way(); }
    [[nodiscard]] std::string fault() const override { return step_.fault; }

private:
    ScriptedTransfers::MailStep step_;
    StepEnd ends_;
    int& dropped_;
};

class ScriptedReply : public WebReply {
public:
    ScriptedReply(const Clock& clock, ScriptedTransfers::WebStep step, int& dropped)
        : step_(std::move(step)), ends_(clock), dropped_(dropped) {
        ends_.in(step_.after);
    }
    ~ScriptedReply() override { dropped_ += under_way() ? 1 : 0; }
    ScriptedReply(const ScriptedReply&) = delete;
    ScriptedReply& operator=(const ScriptedReply&) = delete;

    [[nodiscard]] bool under_way() const override { return ends_.under_way(); }
    [[nodiscard]] End end() const override { return step_.end; }
    [[nodiscard]] int status() const override { return step_.end == End::answered ? step_.status : 0; }
    [[nodiscard]] std::string body_start() const override { return step_.body.substr(0, body_kept); }

private:
    ScriptedTransfers::WebStep step_;
    StepEnd ends_;
    int& dropped_;
};

template <class Step>
Step next(std::deque<Step>& steps) {
    if (steps.empty()) return {};
    Step step = std::move(steps.front());
    steps.pop_front();
    return step;
}

}  // namespace

class ScriptedFtpSession : public FtpSession {
public:
    explicit ScriptedFtpSession(ScriptedTransfers& world) : world_(world), ends_(world.clock_) { ++world_.ftp.open; }
    ~ScriptedFtpSession() override {
        --world_.ftp.open;
        if (under_way()) ++world_.ftp.dropped;
        world_.note("ftp closed");
    }
    ScriptedFtpSession(const ScriptedFtpSession&) = delete;
    ScriptedFtpSession& operator=(const ScriptedFtpSession&) = delete;

    void connect(const FtpServer& server) override {
        world_.ftp.logins.push_back(server);
        world_.note("ftp connect " + server.host);
        begin(world_.ftp.connect);
    }
    void put(const std::string& local, const std::string& remote) override {
        world_.ftp.sent.push_back({local, remote, world_.clock_.monotonic()});
        world_.note("ftp put " + remote);
        const auto scripted = world_.ftp.puts.find(remote);
        begin(scripted == world_.ftp.puts.end() ? world_.ftp.put : scripted->second);
    }
    void quit() override {
        ++world_.ftp.quits;
        world_.note("ftp quit");
        begin(world_.ftp.quit);
    }
    [[nodiscard]] bool under_way() const override { return ends_.under_way(); }
    [[nodiscard]] FtpEnd end() const override { return end_; }
    [[nodiscard]] std::vector<FtpExchange> take_exchanges() override { return std::exchange(said_, {}); }

private:
    void begin(const ScriptedTransfers::FtpStep& step) {
        end_ = step.end;
        ends_.in(step.after);
        said_.insert(said_.end(), step.said.begin(), step.said.end());
    }

    ScriptedTransfers& world_;
    StepEnd ends_;
    FtpEnd end_;
    std::vector<FtpExchange> said_;
};

std::unique_ptr<FtpSession> ScriptedTransfers::ftp_session() {
    return std::make_unique<ScriptedFtpSession>(*this);
}

std::unique_ptr<MailDelivery> ScriptedTransfers::send(const Mail& mail) {
    mails.push_back(mail);
    note("mail to " + mail.server);
    return std::make_unique<ScriptedMail>(clock_, next(mail_steps), mails_dropped);
}

std::unique_ptr<WebReply> ScriptedTransfers::get(const std::string& url, Milliseconds limit) {
    asked.push_back({url, limit, clock_.monotonic()});
    note("get " + url);
    return std::make_unique<ScriptedReply>(clock_, next(web_steps), requests_dropped);
}

bool ScriptedTransfers::reachable(const std::string& host) const {
    reachability_asked.push_back(host);
    return online || host == "127.0.0.1" || host == "localhost" || host == "::1";
}

std::vector<std::string> ScriptedTransfers::names_sent() const {
    std::vector<std::string> names;
    for (const Put& put : ftp.sent) names.push_back(put.remote);
    return names;
}

}  // namespace nimbry::test
