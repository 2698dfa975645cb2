#include "engine/control/verb_graph.h"

#include <optional>

#include "engine/core/run_time_error.h"
#include "engine/graphs/graph_svg.h"

namespace nimbry {
namespace {

struct Wish {
    std::optional<GraphKind> kind;
    std::string file;  ///< empty: to be printed
    PictureSize size;
};

std::optional<GraphKind> kind_named(const std::string& name) {
    for (int n = 0; n < graph_count; ++n)
        if (graph_name(static_cast<GraphKind>(n)) == name) return static_cast<GraphKind>(n);
    return std::nullopt;
}

/// Nothing when the arguments are not the verb's.
std::optional<Wish> wish_of(const std::vector<std::string>& arguments) {
    Wish wish;
    for (std::size_t n = 0; n < arguments.size(); ++n) {
        const bool has_value = arguments[n] == "--svg" || arguments[n] == "--size";
        if (!has_value) {
            if (wish.kind) return std::nullopt;
            wish.kind = kind_named(arguments[n]);
            if (!wish.kind) return std::nullopt;
        } else if (++n == arguments.size()) {
            return std::nullopt;
        } else if (arguments[n - 1] == "--svg") {
            wish.file = arguments[n];
            if (wish.file.empty()) return std::nullopt;
        } else {
            const auto size = picture_size(arguments[n]);
            if (!size) return std::nullopt;
            wish.size = *size;
        }
    }
    return wish.kind ? std::optional(wish) : std::nullopt;
}

}  // namespace

VerbStatus graph_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const auto wish = wish_of(arguments);
    if (!wish) return VerbStatus::bad_usage;
    const std::string picture = graph_svg(copy.state, *wish->kind, wish->size);
    if (wish->file.empty()) {
        asker.print(picture);
        return VerbStatus::done;
    }
    const FileResult result = copy.ports.files.replace(wish->file, picture);
    if (result == FileResult::ok) return VerbStatus::done;
    asker.complain("The picture could not be written: " + std::string(description(error_of(result))));
    return VerbStatus::failed;
}

}  // namespace nimbry
