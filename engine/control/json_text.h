#pragma once

#include <string>
#include <string_view>

namespace nimbry {

/// A text as a string of JSON, with its quotes. `text` is UTF-8.
///   json_string("a \"b\"\r\n") = "\"a \\\"b\\\"\\r\\n\""
[[nodiscard]] std::string json_string(std::string_view text);

/// The fields of one object, in the order in which they are added.
class JsonObject {
public:
    /// Adds a field; `value` is written JSON: json_string(), a number, "true", "null", another object.
    JsonObject& field(std::string_view name, std::string_view value);
    JsonObject& flag(std::string_view name, bool value);

    /// The object: "{...}".
    [[nodiscard]] std::string text() const;

private:
    std::string fields_;
};

}  // namespace nimbry
