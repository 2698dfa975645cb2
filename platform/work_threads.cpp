#include "platform/work_threads.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace nimbry::platform {

struct WorkThreads::Bell::Shared {
    std::mutex lock;
    std::condition_variable ended;
    int running = 0;
    std::unique_ptr<QObject> listener = std::make_unique<QObject>();  // null once nobody listens any more
    std::function<void()> told;
};

WorkThreads::WorkThreads(std::function<void()> told) : shared_(std::make_shared<Bell::Shared>()) {
    shared_->told = std::move(told);
}

WorkThreads::~WorkThreads() {
    std::unique_lock hold(shared_->lock);
    shared_->listener.reset();
    shared_->ended.wait_for(hold, std::chrono::seconds{3}, [&] { return shared_->running == 0; });
}

void WorkThreads::start(std::function<void()> work) {
    const std::lock_guard hold(shared_->lock);
    std::thread([shared = shared_, work = std::move(work)]() mutable {
        work();
        work = nullptr;  // what it owned is gone before anybody is told that it has ended
        const std::lock_guard at_end(shared->lock);
        --shared->running;
        shared->ended.notify_all();
    }).detach();
    ++shared_->running;
}

void WorkThreads::Bell::tell() const {
    const std::lock_guard hold(shared_->lock);
    if (shared_->listener == nullptr) return;
    QMetaObject::invokeMethod(
        shared_->listener.get(), [shared = shared_.get()] { shared->told(); }, Qt::QueuedConnection);
}

}  // namespace nimbry::platform
