#include "engine/graphs/graph_file.h"

#include <charconv>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"

namespace nimbry {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

constexpr seconds oldest{86400};
constexpr std::size_t scale_rows = 20;  // row 20 is not in the file

/// Thrown out of the reading; the file is then as good as none.
struct Refused {
    GraphFileOutcome why;
};

class Lines {
public:
    explicit Lines(std::string_view text) : rest_(text) {}

    std::string_view next() {
        if (rest_.empty()) throw Refused{GraphFileOutcome::cut_short};
        return take_line(rest_, LineEnds::newline);
    }

    int count(int most) {
        const auto number = line_number(next());
        if (!number) throw Refused{GraphFileOutcome::bad_count};
        const double whole = Round(static_cast<double>(*number), 0);
        if (whole < 0 || whole > most) throw Refused{GraphFileOutcome::bad_count};
        return static_cast<int>(whole);
    }

private:
    std::string_view rest_;
};

/// Whole minutes since the file was saved.
int age_of(std::string_view first_line, CivilTime now) {
    const auto saved = parse_stamp(first_line);
    if (!saved) throw Refused{GraphFileOutcome::bad_date};
    const seconds age = now - *saved;
    if (age > oldest) throw Refused{GraphFileOutcome::too_old};
    if (age < seconds{0}) throw Refused{GraphFileOutcome::from_the_future};
    return static_cast<int>(std::chrono::floor<minutes>(age).count());
}

void read_lines(std::string_view text, CivilTime now, GraphState& graphs) {
    Lines lines(text);
    graphs.grafage = age_of(lines.next(), now);
    graphs.grmax = lines.count(pmm1);
    const int windsamples = lines.count(graphs.grmax);
    for (std::size_t r = 0; r < scale_rows; ++r) {
        for (float& value : graphs.gscale[r]) value = line_number(lines.next()).value_or(value);
    }
    for (int r = 0; r <= graphs.grmax; ++r) {
        GraphRow& row = graphs.rows.row(r);
        row.set_gtime(trimmed(lines.next()));
        for (int s = 0; s < series::count; ++s) {
            if (const auto value = line_number(lines.next())) row.set_gdata(s, *value);
        }
    }
    if (windsamples == 0) throw Refused{GraphFileOutcome::empty};
    graphs.rows.set_windsamples(windsamples);
    graphs.rows.age(graphs.grafage);
}

}  // namespace

std::string graph_file_text(const GraphState& graphs, CivilTime now) {
    const int windsamples = graphs.rows.windsamples();
    std::string text;
    text.reserve(graphs.rows.row(windsamples).lines().size() * (static_cast<std::size_t>(windsamples) + 10));
    text += stamp_text(now) + "\r\n";
    text += number_line(graphs.rows.gdata(0, 0));
    text += number_line(static_cast<float>(windsamples));
    for (std::size_t r = 0; r < scale_rows; ++r) {
        for (const float value : graphs.gscale[r]) text += number_line(value);
    }
    for (int r = 0; r <= windsamples; ++r) text += graphs.rows.row(r).lines();
    return text;
}

GraphFileOutcome read_graph_file(std::string_view text, CivilTime now, GraphState& graphs) {
    try {
        read_lines(text, now, graphs);
        return GraphFileOutcome::loaded;
    } catch (const Refused& refused) {
        clear_store(graphs);
        return refused.why;
    }
}

void clear_store(GraphState& graphs) {
    graphs.rows.clear();
    graphs.gscale = {};
    graphs.grmax = 0;
    graphs.grafage = 0;
}

std::optional<float> line_number(std::string_view line) {
    std::string_view digits = line;
    while (digits.starts_with(' ')) digits.remove_prefix(1);
    while (digits.ends_with(' ')) digits.remove_suffix(1);
    const std::size_t sign = digits.starts_with('-') || digits.starts_with('+') ? 1 : 0;
    // from_chars takes words ("nan") too, and no "+".
    if (digits.size() == sign || (digits[sign] != '.' && (digits[sign] < '0' || digits[sign] > '9'))) return {};
    if (digits.starts_with('+')) digits.remove_prefix(1);
    float value = 0;
    const char* end = digits.data() + digits.size();
    const auto [read_to, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc{} || read_to != end) return {};
    return value;
}

}  // namespace nimbry
