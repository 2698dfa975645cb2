#include "programs/nimbry-station/scenario_line.h"

namespace nimbry::simulator {

Words::Words(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    for (;;) {
        const std::size_t begin = line.find_first_not_of(blanks);
        if (begin == std::string_view::npos || line[begin] == '#') return;
        line.remove_prefix(begin);
        const std::size_t length = std::min(line.find_first_of(blanks), line.size());
        words_.push_back(line.substr(0, length));
        line.remove_prefix(length);
    }
}

std::string_view Words::take(std::string_view what) {
    if (empty()) throw NotUnderstood(std::string(what) + " is missing");
    return words_[next_++];
}

bool Words::take_if(std::string_view word) {
    if (peek() != word) return false;
    ++next_;
    return true;
}

std::string_view Words::peek() const {
    return empty() ? std::string_view() : words_[next_];
}

std::string quoted(std::string_view word) {
    return "'" + std::string(word) + "'";
}

}  // namespace nimbry::simulator
