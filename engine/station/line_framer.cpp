#include "engine/station/line_framer.h"

#include "engine/station/group_layout.h"

namespace nimbry {

bool LineFramer::gathering() const {
    return state_ != State::idle && state_ != State::work && state_ != State::hold;
}

bool LineFramer::push(const Bytes& bytes, Instant now) {
    if (bytes.empty() || state_ == State::work || state_ == State::hold) return true;
    if (bytes.size() > buffer_limit - bytes_.size()) {
        clear();
        return false;
    }
    if (state_ == State::idle) state_ = State::fill27;
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    settle_if_full(now);
    return true;
}

void LineFramer::settle_if_full(Instant now) {
    // Later bytes do not start the settling time anew: it runs from the moment at which the count was first seen.
    if (state_ == State::fill27 && bytes_.size() >= lone_length) {
        state_ = State::settle27;
        due_ = now + settling;
    } else if (state_ == State::fill141 && bytes_.size() >= train_length) {
        state_ = State::settle141;
        due_ = now + settling;
    }
}

LineFramer::Outcome LineFramer::poll(Instant now) {
    if (!due_ || now < *due_) return Outcome::nothing;
    due_.reset();
    switch (state_) {
        case State::settle27:
            if (bytes_.size() != lone_length) {
                state_ = State::fill141;
                settle_if_full(now);
                return Outcome::nothing;
            }
            break;
        case State::settle141:
            if (bytes_.size() != train_length) {
                clear();
                return Outcome::train_overran;
            }
            break;
        case State::hold: state_ = working_ ? State::work : State::idle; return Outcome::hold_over;
        default: return Outcome::nothing;
    }
    state_ = State::work;
    working_ = true;
    return Outcome::frame;
}

void LineFramer::work_done() {
    working_ = false;
    if (state_ == State::work)
        clear();
    else
        bytes_.clear();
}

void LineFramer::hold(Instant now) {
    if (!working_) bytes_.clear();
    state_ = State::hold;
    due_ = now + holding;
}

void LineFramer::abandon() {
    if (gathering()) clear();
}

void LineFramer::clear() {
    state_ = State::idle;
    bytes_.clear();
    due_.reset();
}

}  // namespace nimbry
