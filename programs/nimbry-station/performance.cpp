#include "programs/nimbry-station/performance.h"

namespace nimbry::simulator {
namespace {

/// Sends bytes at their pace; false when the program shall end.
bool send(const Deed& deed, Line& line, Patience& patience) {
    line.before_frame();
    Instant moment = Patience::now();
    for (const std::uint8_t byte : deed.bytes) {
        if (!patience.wait_until(moment, line.descriptor())) return false;
        line.send(byte);
        moment += deed.pace;  // counted from the first byte, so that late wake-ups do not add up
    }
    return true;
}

}  // namespace

void perform(Source& source, Line& line, Patience& patience, const std::function<void(const Deed&)>& done) {
    const Instant start = Patience::now();
    while (auto deed = source.next(Patience::now() - start)) {
        if (!patience.wait_until(start + deed->at, line.descriptor())) return;
        deed->at = Patience::now() - start;
        switch (deed->what) {
            case Deed::What::send:
                if (!send(*deed, line, patience)) return;
                break;
            case Deed::What::unplug: line.unplug(); break;
            case Deed::What::replug: line.replug(); break;
        }
        done(*deed);
    }
    patience.wait_for_end(line.descriptor());
}

}  // namespace nimbry::simulator
