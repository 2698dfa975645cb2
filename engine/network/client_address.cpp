#include "engine/network/client_address.h"

#include <algorithm>

#include "engine/derived/number_text.h"

namespace nimbry {

std::optional<std::string> dotted_address(std::string_view text) {
    const std::string address = trimmed(text);
    std::string dotted;
    int parts = 0;
    for (std::size_t from = 0; from <= address.size(); ++parts) {
        const std::size_t end = std::min(address.find('.', from), address.size());
        const std::string_view digits = std::string_view(address).substr(from, end - from);
        const bool is_number =
            !digits.empty() && digits.size() <= 3 && digits.find_first_not_of("0123456789") == std::string_view::npos;
        if (!is_number || whole_number(digits) > 255) return std::nullopt;
        dotted += (parts == 0 ? "" : ".") + numtext(whole_number(digits));
        from = end + 1;
    }
    if (parts != 4) return std::nullopt;
    return dotted;
}

}  // namespace nimbry
