#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/open_sockets.h"
#include "platform/work_threads.h"

namespace nimbry::platform {

/// Where the event loop and one working thread meet: steps go in, their ends and news come out. The loop's side never
/// waits for the work.
template <class Step, class End, class News = int>
class Mailbox {
public:
    explicit Mailbox(WorkThreads::Bell bell) : bell_(std::move(bell)) {}

    // The loop's side.

    void begin(Step step) {
        const std::lock_guard hold(lock_);
        step_ = std::move(step);
        under_way_ = true;
        changed_.notify_one();
    }
    [[nodiscard]] bool under_way() const {
        const std::lock_guard hold(lock_);
        return under_way_;
    }
    [[nodiscard]] End end() const {
        const std::lock_guard hold(lock_);
        return end_;
    }
    [[nodiscard]] std::vector<News> take_all() {
        const std::lock_guard hold(lock_);
        return std::exchange(news_, {});
    }
    /// Nobody is interested any more: the work is to end, whatever it waits for.
    void give_up() {
        {
            const std::lock_guard hold(lock_);
            given_up_ = true;
            changed_.notify_one();
        }
        sockets_.hang_up();
    }

    // The work's side.

    /// Waits for the next step; nothing when it has been given up.
    [[nodiscard]] std::optional<Step> next() {
        std::unique_lock hold(lock_);
        changed_.wait(hold, [this] { return step_ || given_up_; });
        if (given_up_) return std::nullopt;
        return std::exchange(step_, std::nullopt);
    }
    void add(News news) {
        const std::lock_guard hold(lock_);
        news_.push_back(std::move(news));
    }
    void finish(End end) {
        {
            const std::lock_guard hold(lock_);
            end_ = std::move(end);
            under_way_ = false;
        }
        bell_.tell();
    }
    [[nodiscard]] bool given_up() const {
        const std::lock_guard hold(lock_);
        return given_up_;
    }
    [[nodiscard]] OpenSockets& sockets() { return sockets_; }

private:
    OpenSockets sockets_;
    mutable std::mutex lock_;
    std::condition_variable changed_;
    WorkThreads::Bell bell_;
    std::optional<Step> step_;
    bool under_way_ = false;
    bool given_up_ = false;
    End end_{};
    std::vector<News> news_;
};

}  // namespace nimbry::platform
