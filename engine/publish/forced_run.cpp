#include "engine/publish/forced_run.h"

#include "engine/displays/status_message.h"
#include "engine/publish/publishing.h"

namespace nimbry {
namespace {

/// What each kind of run has for itself.
struct Words {
    const char *button, *status, *doing, *until;
};

Words words_of(ForcedRun which) {
    switch (which) {
        case ForcedRun::ftp:
            return {"cmdForceFTP", "Forced FTP upload", "Performing a forced FTP upload.", "the upload completes"};
        case ForcedRun::mail:
            return {"cmdForceMail", "Forced email send", "Performing a forced email send", "sending completes"};
        case ForcedRun::weather: break;
    }
    // Kept on purpose: "Undergound".
    return {"cmdForceWU", "Forced Underground upload", "Performing forced Weather Undergound/Weatherforyou upload",
            "the upload completes"};
}

class Forced {
public:
    Forced(WeatherState& state, ForcedRun which) : state_(state) {
        state_.publish.FtpForced = true;
        state_.publish.lblStatus = words_of(which).status;
        state_.setup.FTP.hidden = state_.setup.FTP.open;
    }
    ~Forced() {
        state_.publish.FtpForced = false;
        state_.publish.lblStatus.clear();
        state_.setup.FTP.hidden = false;
    }
    Forced(const Forced&) = delete;
    Forced& operator=(const Forced&) = delete;

private:
    WeatherState& state_;
};

}  // namespace

const char* forced_button(ForcedRun which) {
    return words_of(which).button;
}

void run_forced(Copy& copy, ForcedRun which) {
    if (copy.state.publish.FtpForced) return;
    const Forced forced(copy.state, which);
    // The dialog that says so has just gone, and what sends may have pages to make before it has a word to say.
    show_status_message(copy, copy.state.publish.lblStatus);
    switch (which) {
        case ForcedRun::ftp: FTPupload(copy); break;
        case ForcedRun::mail: uploadmail(copy); break;
        case ForcedRun::weather: wunderground(copy); break;
    }
}

void tell_forced_run(Copy& copy, ForcedRun which) {
    const PublishState& publish = copy.state.publish;
    const Words words = words_of(which);
    if (!publish.FtpForced || publish.lblStatus != words.status) return;
    copy.ports.notices.balloon({.title = "Nimbry Information",
                                .text = std::string(words.doing) + "\r\nPlease wait until " + words.until +
                                        "\r\nand the Internet Settings window re-appears.",
                                .icon = "i"});
}

}  // namespace nimbry
