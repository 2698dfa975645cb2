#include "engine/publish/publishing.h"

#include <algorithm>

#include "engine/derived/number_text.h"
#include "engine/publish/aprs_packet.h"
#include "engine/publish/internet.h"

namespace nimbry {
namespace {

constexpr int most_minutes = 32767;

int minutes_of(const std::string& hours, const std::string& minutes) {
    return static_cast<int>(std::clamp(Val(hours) * 60 + Val(minutes), 0.0, double{most_minutes}));
}

}  // namespace

void getFTP(Copy& copy) {
    PublishState& publish = copy.state.publish;
    publish.NimbryFTPSetup = read_internet(copy.ini);
    publish.FtpMinutes = minutes_of(publish.NimbryFTPSetup.FTPHours, publish.NimbryFTPSetup.FTPMins);
}

void update_location_text(Copy& copy) {
    aprsposition(copy.state);
}

void offer_to_hang_up(Copy& copy) {
    if (!copy.state.publish.ProgramDialled) return;
    const Answer answer = copy.ports.notices.box({.title = "Nimbry message",
                                                  .text = "Do you wish to hang up the modem",
                                                  .icon = "?",
                                                  .choices = Choices::yes_no});
    if (answer == Answer::yes) hangup(copy);
}

}  // namespace nimbry
