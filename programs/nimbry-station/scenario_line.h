#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nimbry::simulator {

/// Why a scenario line cannot be understood; caught where the line's number is known.
class NotUnderstood : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The words of one scenario line, taken from the left.
class Words {
public:
    /// Splits at blanks and tabs; a word that begins with '#' ends the line.
    explicit Words(std::string_view line);

    [[nodiscard]] bool empty() const { return next_ == words_.size(); }

    /// The next word, which is then taken; NotUnderstood says that `what` is missing when there is none.
    std::string_view take(std::string_view what);

    /// Takes the next word if it is this one.
    bool take_if(std::string_view word);

    /// The next word without taking it; "" at the end.
    [[nodiscard]] std::string_view peek() const;

private:
    std::vector<std::string_view> words_;
    std::size_t next_ = 0;
};

/// A word in quotation marks, for a message.
[[nodiscard]] std::string quoted(std::string_view word);

}  // namespace nimbry::simulator
