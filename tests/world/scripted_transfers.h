#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/ports/transfers.h"
#include "tests/world/journal.h"

namespace nimbry::test {

/// The servers of the world as a test scripts them, in virtual time: what was asked is kept, how and when it ends is
/// set before. Without a script all goes well, and every step takes 10 ms.
///
///     world.transfers.ftp.connect = {.end = {.status = 4009}};
///     world.transfers.ftp.puts["weather3.htm"] = {.end = {.fault = "553 No"}, .after = 2s};
///     world.transfers.ftp.puts["VidCap.jpg"] = {.after = std::nullopt};          // silence
class ScriptedTransfers : public Transfers {
public:
    /// How long a step takes; nothing: it never ends by itself.
    using After = std::optional<Milliseconds>;

    explicit ScriptedTransfers(const Clock& clock, Journal* journal = nullptr) : clock_(clock), journal_(journal) {}

    [[nodiscard]] std::unique_ptr<FtpSession> ftp_session() override;
    [[nodiscard]] std::unique_ptr<MailDelivery> send(const Mail& mail) override;
    [[nodiscard]] std::unique_ptr<WebReply> get(const std::string& url, Milliseconds limit) override;
    [[nodiscard]] bool reachable(const std::string& host) const override;

    /// False: the machine is on no network; loopback servers are reachable all the same.
    bool online = true;
    /// The hosts that reachable() was asked about.
    mutable std::vector<std::string> reachability_asked;

    struct FtpStep {
        FtpEnd end{};
        After after = Milliseconds{10};
        std::vector<FtpExchange> said{};  ///< heard when the step begins
    };
    struct Put {
        std::string local, remote;
        Instant at;
    };
    /// The FTP servers of all sessions.
    struct Ftp {
        FtpStep connect{.end = {.status = 3000}};
        FtpStep put{};                        ///< of every file that is not among `puts`
        std::map<std::string, FtpStep> puts;  ///< by remote name
        FtpStep quit{};

        std::vector<FtpServer> logins;  ///< every connect(), in order
        std::vector<Put> sent;          ///< every put(), in order, failed ones too
        int quits = 0;
        int open = 0;     ///< sessions that stand now
        int dropped = 0;  ///< sessions destroyed while a step was under way
    } ftp;

    struct MailStep {
        std::string fault{};
        After after = Milliseconds{10};
    };
    std::deque<MailStep> mail_steps;  ///< how the next mails end, one each; then all go well
    std::vector<Mail> mails;          ///< every mail, in order
    int mails_dropped = 0;            ///< broken off while under way

    struct WebStep {
        WebReply::End end = WebReply::End::answered;
        int status = 200;
        std::string body{};
        After after = Milliseconds{10};
    };
    struct WebAsked {
        std::string url;
        Milliseconds limit;
        Instant at;
    };
    std::deque<WebStep> web_steps;  ///< how the next requests end, one each; then status 200 without a body
    std::vector<WebAsked> asked;    ///< every request, in order
    int requests_dropped = 0;

    /// The remote names of what was put, in order.
    [[nodiscard]] std::vector<std::string> names_sent() const;

private:
    friend class ScriptedFtpSession;
    void note(std::string line) {
        if (journal_ != nullptr) journal_->note(std::move(line));
    }

    const Clock& clock_;
    Journal* journal_;
};

}  // namespace nimbry::test
