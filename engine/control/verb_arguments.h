#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nimbry {

/// The arguments behind a verb, with its switches ("--json") taken out of the words.
class VerbArguments {
public:
    /// `switches` are the ones that the verb knows; any other word that begins with "--" makes the arguments wrong.
    VerbArguments(const std::vector<std::string>& arguments, const std::vector<std::string_view>& switches);

    /// False when there is a switch that the verb does not know.
    [[nodiscard]] bool right() const { return right_; }
    [[nodiscard]] bool has(std::string_view name) const;
    [[nodiscard]] const std::vector<std::string>& words() const { return words_; }

private:
    std::vector<std::string> words_;
    std::vector<std::string> given_;
    bool right_ = true;
};

}  // namespace nimbry
