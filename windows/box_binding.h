#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace nimbry::windows {

/// Keeps widgets showing what the model holds. Each binding names a piece of the model and what shows it; refresh()
/// compares the piece with what was shown last and shows it again where it differs.
class BoxBinding {
public:
    /// Binds a piece of the model, which must outlive this object, to `show`. It is shown at the next refresh() for the
    /// first time.
    template <class Value, class Show>
    void bind(const Value& source, Show show) {
        bindings_.push_back([&source, show, last = std::shared_ptr<Value>()]() mutable {
            if (last != nullptr && *last == source) return false;
            last = std::make_shared<Value>(source);
            show(source);
            return true;
        });
    }

    /// The same for what a function makes of the model.
    template <class Read, class Show>
    void bind_result(Read read, Show show) {
        using Value = std::invoke_result_t<Read>;
        bindings_.push_back([read, show, last = std::shared_ptr<Value>()]() mutable {
            Value now = read();
            if (last != nullptr && *last == now) return false;
            last = std::make_shared<Value>(now);
            show(now);
            return true;
        });
    }

    /// Shows what has changed. Returns how many pieces that were.
    int refresh() {
        int shown = 0;
        for (const auto& binding : bindings_) shown += binding() ? 1 : 0;
        return shown;
    }

private:
    std::vector<std::function<bool()>> bindings_;
};

}  // namespace nimbry::windows
