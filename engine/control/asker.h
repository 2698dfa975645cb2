#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nimbry {

/// Whoever sent a request to the running copy, as far as a verb sees: takes what the verb prints. Texts are UTF-8.
/// Nothing here waits; what an asker that has gone is told is lost.
class Asker {
public:
    virtual ~Asker() = default;

    /// For standard output, as it is.
    virtual void print(std::string_view text) = 0;

    /// One line for standard error, without its line end: why the verb refused or failed.
    virtual void complain(std::string_view line) = 0;

    /// Lines that take the place of those shown before, in one or more layouts, the widest first: the asker shows the
    /// first one that fits.
    virtual void show(const std::vector<std::string>& layouts) = 0;

    /// False once the asker has gone.
    [[nodiscard]] virtual bool listening() const = 0;
};

}  // namespace nimbry
