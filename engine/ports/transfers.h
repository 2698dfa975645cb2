#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/ports/clock.h"

namespace nimbry {

// What goes out to the world's servers: files by FTP, mails by SMTP, requests by HTTP.
//
// Each piece of work is an object. Making it starts the work, under_way() says whether it still runs, and then the
// object says how it ended. Waiting is the caller's, and so is patience:
//
//     const auto reply = transfers.get(url, 10s);
//     pauses.wait_until([&] { return !reply->under_way(); });
//     if (reply->end() == WebReply::End::answered) ...
//
// Destroying an object breaks its work off at once, without waiting for the other side. None of these calls waits, and
// nothing here calls the engine. The objects must go before the Transfers that made them.

/// How a connection is kept from being read on the way.
enum class Encryption {
    none,
    explicit_tls,  ///< it begins in the clear and asks for TLS (AUTH TLS, STARTTLS); without TLS it ends
    implicit_tls,  ///< TLS from the first byte
};

/// Where an FTP session goes, and as whom.
struct FtpServer {
    std::string host{};
    std::uint16_t port = 21;
    std::string user{}, password{};
    std::string directory{};  ///< relative to where the login leads, or absolute with a leading "/"; empty: stay there
    bool active = true;       ///< the server opens the data connections; false: we do (passive)
    Encryption encryption = Encryption::none;
};

/// A line that an FTP server sent, and the command that it answers. The command is empty for the greeting; a password
/// in it reads "PASS ****".
struct FtpExchange {
    std::string command, reply;
};

/// How a step of an FTP session ended.
struct FtpEnd {
    /// Of connect(): 3000 is connected, anything else the reason why not. 4009 login refused, 5001 unknown host, 5002
    /// no reply, 5004 connection rejected, 5007 timed out, 6001 an answer that was not expected; others have no name.
    int status = 0;

    /// Of connect(): what a status without a name means, in a few words.
    std::string words{};

    /// Of put(): why the file did not get there, in one line ("553 Could not create file."); empty when it did.
    std::string fault{};
};

/// One FTP session: one login and one control connection for any number of files. Its steps are called one after the
/// other, each when the one before has ended.
class FtpSession {
public:
    virtual ~FtpSession() = default;

    /// Logs in and goes to the directory. A server that keeps silent for 30 seconds ends it.
    virtual void connect(const FtpServer& server) = 0;

    /// Sends the file at the full path `local` as `remote`, in binary. Opening the data connection is given 30 seconds,
    /// the transfer and its confirmation at least 200: whoever waits may well end it earlier.
    virtual void put(const std::string& local, const std::string& remote) = 0;

    /// Takes leave. Ends after 3 seconds whatever the server says.
    virtual void quit() = 0;

    /// True while a step runs.
    [[nodiscard]] virtual bool under_way() const = 0;

    /// How the last step ended.
    [[nodiscard]] virtual FtpEnd end() const = 0;

    /// What has been said since the last call, in order.
    [[nodiscard]] virtual std::vector<FtpExchange> take_exchanges() = 0;
};

/// A file that goes with a mail.
struct MailAttachment {
    std::string name;  ///< what the recipient sees, "almanac.txt"
    std::string path;  ///< the full path; a file that is gone by then is left out
};

/// A mail, and the server that takes it. Addresses are bare ("me@home.net"). Texts are 8-bit in windows-1252.
struct Mail {
    std::string server{};
    std::uint16_t port = 25;
    Encryption encryption = Encryption::none;
    std::string user{}, password{};  ///< without a user there is no login

    std::string from_name{}, from{};
    std::vector<std::string> to{}, cc{};
    std::vector<std::string> bcc{};  ///< told to the server alone
    std::string subject{};
    std::string body{};  ///< lines may end in CR LF, CR or LF
    std::vector<MailAttachment> attachments{};

    Milliseconds limit{std::chrono::seconds{120}};  ///< of the whole session
};

/// A mail on its way.
class MailDelivery {
public:
    virtual ~MailDelivery() = default;

    [[nodiscard]] virtual bool under_way() const = 0;

    /// Why the server has not taken the mail, in one line ("550 User unknown", "Timed out"); empty when it has.
    [[nodiscard]] virtual std::string fault() const = 0;
};

/// The answer to a web request.
class WebReply {
public:
    enum class End { answered, timed_out, no_connection };

    /// How much of the answer's body is kept.
    static constexpr std::size_t body_kept = 50;

    virtual ~WebReply() = default;

    [[nodiscard]] virtual bool under_way() const = 0;

    /// A server that is reached and closes without an answer counts as `no_connection`.
    [[nodiscard]] virtual End end() const = 0;

    /// The status of the last answer (200, 404); 0 when there was none.
    [[nodiscard]] virtual int status() const = 0;

    /// The first 50 bytes of the body.
    [[nodiscard]] virtual std::string body_start() const = 0;
};

/// The way out to the servers.
class Transfers {
public:
    virtual ~Transfers() = default;

    /// A session that nothing has been asked of yet.
    [[nodiscard]] virtual std::unique_ptr<FtpSession> ftp_session() = 0;

    /// Sends a mail.
    [[nodiscard]] virtual std::unique_ptr<MailDelivery> send(const Mail& mail) = 0;

    /// Asks for a web page, "http://..." or "https://..."; without either it is http. Up to five redirects are
    /// followed. Bytes of `url` that cannot travel (blanks, controls, " # < > and those above 7E) are escaped as %XX;
    /// everything else goes as it stands. `limit` is of the whole.
    [[nodiscard]] virtual std::unique_ptr<WebReply> get(const std::string& url, Milliseconds limit) = 0;

    /// True when the machine is on a network: an interface other than its own loopback is up and has an address. For a
    /// `host` that is this machine itself ("localhost", "127.0.0.1", "::1") always. Nobody is asked.
    [[nodiscard]] virtual bool reachable(const std::string& host) const = 0;
};

}  // namespace nimbry
