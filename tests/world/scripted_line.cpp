#include "tests/world/scripted_line.h"

#include <utility>

namespace nimbry::test {

PortOpenResult ScriptedLine::open(const std::string& device) {
    close();
    PortOpenResult result = PortOpenResult::ok;
    if (!next_results_.empty()) {
        result = next_results_.front();
        next_results_.pop_front();
    } else if (const auto refusal = refusals_.find(device); refusal != refusals_.end()) {
        result = refusal->second;
    }
    attempts_.push_back({clock_.monotonic(), device, result});
    if (journal_ != nullptr) journal_->note("line open " + device + (result == PortOpenResult::ok ? "" : " failed"));
    if (result == PortOpenResult::ok) {
        device_ = device;
        held_ = at_open_;
    }
    return result;
}

void ScriptedLine::close() {
    held_.clear();
    if (!is_open()) return;
    device_.clear();
    if (journal_ != nullptr) journal_->note("line close");
}

Bytes ScriptedLine::take() {
    return std::exchange(held_, {});
}

void ScriptedLine::arrive(const Bytes& bytes) {
    if (is_open()) held_.insert(held_.end(), bytes.begin(), bytes.end());
}

void ScriptedLine::unplug(const std::string& device) {
    refusals_[device] = PortOpenResult::not_found;
    if (device_ == device) close();
}

void ScriptedLine::refuse(const std::string& device, PortOpenResult result) {
    if (result == PortOpenResult::ok) {
        refusals_.erase(device);
    } else {
        refusals_[device] = result;
    }
}

void ScriptedLine::answer_opens(std::vector<PortOpenResult> results) {
    next_results_.assign(results.begin(), results.end());
}

}  // namespace nimbry::test
