// Servers that answer anything, at any time or never, while pages, a mail and the reports to the weather services go
// out. The laws: each of them ends, whatever was said, and lets go of its flag; every event of the program log stays
// one line that begins with a date; no password gets into a file; and the debug window keeps what it may.
#include <chrono>
#include <string>

#include "engine/core/timer_ticks.h"
#include "engine/derived/dates.h"
#include "engine/publish/ftp_debug.h"
#include "engine/publish/publishing.h"
#include "fuzz/fuzz_input.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using fuzz::expect;
using fuzz::one_line;
using namespace std::chrono_literals;

const std::string password = "Geheim-4711";

/// A copy with everything switched on that can go out, and servers that say what the input has.
class Publisher : public KnownState {
public:
    explicit Publisher(fuzz::Input& input) : input_(input) {
        pauses.set_wake_source([this] { return timers.wake_at(); },
                               [this] {
                                   while (const auto due = timers.take_due(clock.monotonic())) timer_tick(copy, *due);
                               });
        timers.stop_all();
        InternetDialog& settings = state.publish.NimbryFTPSetup;
        settings.ChkEnableFTP = settings.ChkSendMail = settings.chkWU = settings.chkHW = settings.chkAPRS = true;
        settings.FTPServer = "ftp.example.net";
        settings.FTPUser = settings.WUuser = settings.HWuser = "someone";
        settings.FTPPass = settings.MailPass = settings.APRSpass = password;
        settings.FTPRemoteFile = "index.html";
        settings.chkLogResponses = true;
        settings.MailServer = "mail.example.net";
        settings.MailTo = settings.MailMyAddr = "me@example.net";
        settings.txtAPRSID = "N0CALL";
        state.menu.mnuFTPdebug.checked = state.menu.mnulogMail.checked = state.menu.mnuLogAPRS.checked = true;
        files.put("myhtml.html", "page");
        files.put("mail_template.txt", "It is ~~WEBOUTTEMP~~");
        script_ftp();
        script_web();
        transfers.mail_steps.push_back({.fault = one_line(input_.text()), .after = after()});
        for (const char* host : {"cwop.aprs.net", "rotate.aprs2.net"}) script_aprs(host);
    }
    ~Publisher() { pauses.end_all(); }
    Publisher(const Publisher&) = delete;
    Publisher& operator=(const Publisher&) = delete;

    /// Everything goes out, one after the other, and then what was put off.
    void publish() {
        FTPupload(copy);
        uploadmail(copy);
        wunderground(copy);
        pauses.pause(30min);
    }

private:
    /// Of the silent ones only those whose caller loses patience by itself.
    Milliseconds after() { return Milliseconds{input_.next() * 20}; }
    std::optional<Milliseconds> after_or_never() {
        const int how = input_.next();
        return how == 255 ? std::nullopt : std::optional(Milliseconds{how * 100});
    }
    ScriptedTransfers::FtpStep ftp_step(int good_status) {
        constexpr int statuses[] = {0, 3000, 4009, 5001, 5002, 5004, 5007, 6001, 99999, -1};
        ScriptedTransfers::FtpStep step;
        const auto which = static_cast<std::size_t>(input_.next());
        step.end.status = which < std::size(statuses) ? statuses[which] : good_status;
        step.end.fault = one_line(input_.text());
        step.after = after_or_never();
        for (int n = input_.next() % 4; n > 0; --n) step.said.push_back({"PASS ****", one_line(input_.text())});
        return step;
    }
    void script_ftp() {
        transfers.ftp.connect = ftp_step(3000);
        transfers.ftp.put = ftp_step(0);
        transfers.ftp.quit = ftp_step(0);
        transfers.ftp.quit.after = 3s;
    }
    void script_web() {
        using End = WebReply::End;
        for (int n = 0; n < 2; ++n) {
            constexpr End ends[] = {End::answered, End::timed_out, End::no_connection};
            ScriptedTransfers::WebStep step;
            step.end = ends[input_.next() % 3];
            step.status = 2 * input_.next();
            step.body = input_.text().substr(0, WebReply::body_kept);
            step.after = after();
            transfers.web_steps.push_back(step);
        }
    }
    void script_aprs(const char* host) {
        const std::string greeting = input_.text();
        const std::string answer = input_.text();
        const bool leaves = (input_.next() & 1) != 0;
        streams.answer(host, 23, [=](const ScriptedPeerPtr& peer) {
            if (!greeting.empty()) peer->say(greeting);
            peer->on_heard([=](ScriptedPeer& end, const std::string&) {
                if (!answer.empty()) end.say(answer);
                if (leaves) end.close();
            });
        });
    }

    fuzz::Input& input_;
};

void check(const Publisher& world) {
    const PublishState& publish = world.state.publish;
    expect(!publish.uloadftpbusy && !publish.emailbusy && !publish.wubusy);
    expect(world.transfers.ftp.open == 0);
    expect(publish.upload.debug_text.size() <= debug_text_kept);
    constexpr std::size_t stamp = 20;
    for (const std::string& line : world.log_lines()) expect(parse_stamp(line.substr(0, stamp)).has_value());
    for (const std::string& name : world.files.names())
        expect(world.files.contents(name).find(password) == std::string::npos);
}

}  // namespace
}  // namespace nimbry::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nimbry::fuzz::Input input(data, size);
    nimbry::test::Publisher world(input);
    world.publish();
    // A server can say the password back to us; the laws are for the others.
    if (std::string(data, data + size).find(nimbry::test::password) == std::string::npos) check(world);
    return 0;
}
