#pragma once

#include <QObject>
#include <functional>
#include <memory>

namespace nimbry::platform {

/// Threads for work that waits inside of calls. The event loop never waits for one: it looks at what the work has left
/// in a place of their own with a lock, and is told that there is something to look at.
class WorkThreads {
public:
    /// `told` is called on the loop's thread, some time after each tell().
    explicit WorkThreads(std::function<void()> told);

    /// Lets what still runs come to its end, but no longer than three seconds: work that was told to stop and sits in a
    /// call of the system's is left behind.
    ~WorkThreads();
    WorkThreads(const WorkThreads&) = delete;
    WorkThreads& operator=(const WorkThreads&) = delete;

    /// Runs `work` in a thread of its own. What it refers to must be its own.
    void start(std::function<void()> work);

    /// For the work: makes the loop look. Copies outlive this object, and then tell nobody.
    class Bell {
    public:
        void tell() const;

    private:
        friend class WorkThreads;
        struct Shared;
        explicit Bell(std::shared_ptr<Shared> shared) : shared_(std::move(shared)) {}
        std::shared_ptr<Shared> shared_;
    };
    [[nodiscard]] Bell bell() const { return Bell(shared_); }

private:
    std::shared_ptr<Bell::Shared> shared_;
};

}  // namespace nimbry::platform
