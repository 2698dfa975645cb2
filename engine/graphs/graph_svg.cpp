#include "engine/graphs/graph_svg.h"

#include <charconv>
#include <utility>

#include "engine/core/run_time_error.h"
#include "engine/core/soft_error.h"
#include "engine/derived/code_page.h"
#include "engine/derived/hexadecimal.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_layout.h"
#include "engine/graphs/graph_scales.h"

namespace nimbry {
namespace {

constexpr double letter_height = 12;
// Of a sans-serif font's figures and capitals, on the wide side: nobody knows which font a browser has.
constexpr double letter_width = 0.65 * letter_height;
constexpr double head = 30;         // the strip with title and legend
constexpr double legend_line = 18;  // what it grows by where the legend has to stand below the title
constexpr double title_line = 20;
constexpr double series_width = 1.5;
constexpr double dot_radius = 1.6;
constexpr double side = 10;

double text_width(std::string_view text) {
    return letter_width * static_cast<double>(text.size());
}

std::string number(double value) {
    return numtext(Round(value, 1));
}

std::string colour_text(Colour colour) {
    std::string text = "#";
    for (const unsigned shift : {0U, 8U, 16U}) {
        const unsigned part = (colour >> shift) & 255U;
        text += lower_hexadecimal[part / 16];
        text += lower_hexadecimal[part % 16];
    }
    return text;
}

std::string attribute(std::string_view name, std::string_view value) {
    return " " + std::string(name) + "=\"" + std::string(value) + "\"";
}

std::string dash_attribute(GraphPen pen) {
    std::string lengths;
    for (const double length : look_of(pen).dash)
        lengths += (lengths.empty() ? "" : " ") + number(length * series_width);
    return lengths.empty() ? std::string() : attribute("stroke-dasharray", lengths);
}

std::string text_element(double x, double y, Colour colour, std::string_view text, std::string_view more = {}) {
    // Labels and titles hold no character that a page would take for its own.
    return "<text" + attribute("x", number(x)) + attribute("y", number(y)) + attribute("fill", colour_text(colour)) +
           std::string(more) + ">" + utf8_text(text) + "</text>\n";
}

double pen_width(GraphPen pen) {
    return pen == GraphPen::grid ? 0.5 : pen == GraphPen::axis || pen == GraphPen::tick ? 1 : series_width;
}

// An entry of the legend is a sample of the line and its text.
constexpr double sample = 24, sample_gap = 4, entry_gap = 16;

double entry_width(const GraphSeries& each) {
    return sample + sample_gap + text_width(each.legend);
}

double legend_width(std::span<const GraphSeries> legend) {
    double width = 0;
    for (const GraphSeries& each : legend)
        if (!each.legend.empty()) width += entry_width(each) + (width > 0 ? entry_gap : 0);
    return width;
}

/// Where the legend has room.
enum class LegendPlace { beside, below, nowhere };

LegendPlace legend_place(std::string_view title, std::span<const GraphSeries> legend, double width) {
    constexpr double bold = 1.1;
    const double room = width - 2 * side, wanted = legend_width(legend);
    if (bold * text_width(title) + entry_gap + wanted <= room || wanted == 0) return LegendPlace::beside;
    return wanted <= room ? LegendPlace::below : LegendPlace::nowhere;
}

class Picture {
public:
    Picture(const GraphDrawing& drawing, PictureSize size, std::string title, std::span<const GraphSeries> legend)
        : drawing_(drawing),
          size_(size),
          title_(std::move(title)),
          legend_(legend),
          legend_place_(legend_place(title_, legend, size.width)),
          head_(legend_place_ == LegendPlace::below ? head + legend_line : head),
          layout_(drawing, size.width, size.height - head_, {text_width, letter_height}) {}

    std::string text() {
        const std::string width = std::to_string(size_.width), height = std::to_string(size_.height);
        text_ = "<svg" + attribute("xmlns", "http://www.w3.org/2000/svg") + attribute("width", width) +
                attribute("height", height) + attribute("viewBox", "0 0 " + width + " " + height) +
                attribute("role", "img") + attribute("font-family", "DejaVu Sans, Verdana, Arial, sans-serif") +
                attribute("font-size", number(letter_height)) + ">\n<title>" + utf8_text(title_) + "</title>\n<rect" +
                attribute("width", width) + attribute("height", height) + attribute("fill", colour_text(graph_ground)) +
                "/>\n";
        add_head();
        text_ += "<g" + attribute("transform", "translate(0 " + number(head_) + ")") + ">\n";
        for (const GraphLine& line : drawing_.lines) add_line(line);
        for (const GraphDots& dots : drawing_.dots) add_dots(dots);
        for (const PlacedLabel& label : layout_.labels()) {
            text_ += text_element(label.left + label.width / 2, label.middle + letter_height * 0.36, text_colour,
                                  trimmed(label.text), attribute("text-anchor", "middle"));
        }
        return text_ + "</g>\n</svg>\n";
    }

private:
    static constexpr Colour text_colour = 0xE0DCD8;

    void add_head() {
        text_ += text_element(side, title_line, 0xFFFFFF, title_, attribute("font-weight", "bold"));
        if (legend_place_ == LegendPlace::nowhere) return;
        const double line = legend_place_ == LegendPlace::below ? title_line + legend_line : title_line;
        double x = size_.width - side;
        for (auto each = legend_.rbegin(); each != legend_.rend(); ++each) {
            if (each->legend.empty()) continue;
            const double left = x - entry_width(*each), height = line - sample_gap;
            text_ += text_element(left + sample + sample_gap, line, text_colour, each->legend);
            const GraphPen pen = pen_of(each->look);
            text_ += "<line" + attribute("x1", number(left)) + attribute("x2", number(left + sample)) +
                     attribute("y1", number(height)) + attribute("y2", number(height)) +
                     attribute("stroke", colour_text(look_of(pen).colour)) + attribute("stroke-width", "2") +
                     dash_attribute(pen) + "/>\n";
            x = left - entry_gap;
        }
    }

    void add_line(const GraphLine& line) {
        text_ += "<polyline" + attribute("fill", "none") + attribute("stroke", colour_text(look_of(line.pen).colour)) +
                 attribute("stroke-width", number(pen_width(line.pen))) + dash_attribute(line.pen) + " points=\"";
        for (const PixelPoint at : layout_.path(line.points)) text_ += place(at) + " ";
        text_.back() = '"';
        text_ += "/>\n";
    }

    void add_dots(const GraphDots& dots) {
        // A stroke of hardly any length with round ends is a dot, and much shorter than a circle. (Of no length at all
        // some programs would leave it out.)
        text_ += "<path" + attribute("fill", "none") + attribute("stroke", colour_text(look_of(dots.pen).colour)) +
                 attribute("stroke-width", number(2 * dot_radius)) + attribute("stroke-linecap", "round") + " d=\"";
        for (const PixelPoint at : layout_.spots(dots.points)) text_ += "M" + place(at) + "h0.01";
        text_ += "\"/>\n";
    }

    [[nodiscard]] static std::string place(PixelPoint at) { return number(at.x) + "," + number(at.y); }

    const GraphDrawing& drawing_;
    PictureSize size_;
    std::string title_;
    std::span<const GraphSeries> legend_;
    LegendPlace legend_place_;
    double head_;
    GraphLayout layout_;
    std::string text_;
};

/// A whole number from the front of `text`, which is moved on; 0 when there is none.
int take_number(std::string_view& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{}) return 0;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

bool within(int value, int least, int greatest) {
    return value >= least && value <= greatest;
}

}  // namespace

std::optional<PictureSize> picture_size(std::string_view text) {
    PictureSize size;
    size.width = take_number(text);
    if (!text.starts_with('x')) return std::nullopt;
    text.remove_prefix(1);
    size.height = take_number(text);
    if (!text.empty() || !within(size.width, least_picture.width, greatest_picture.width) ||
        !within(size.height, least_picture.height, greatest_picture.height)) {
        return std::nullopt;
    }
    return size;
}

std::string graph_svg(WeatherState& state, GraphKind kind, PictureSize size) {
    const bool indoor = state.menu.mnuInGraphs.checked;
    level_scales(state.graphs, indoor);
    const GraphDrawing drawing = graph_drawing(state.graphs, kind, indoor, true);
    return Picture(drawing, size, graph_title(kind, state.units), graph_series(kind, indoor)).text();
}

void write_graph_files(Copy& copy, std::string_view caller) {
    if (!copy.ini.GetFlag("Main", "GraphFiles", false)) return;
    for (int n = 0; n < graph_count; ++n) {
        const std::string name = "graph" + std::to_string(n + 1) + ".svg";
        const FileResult result =
            copy.ports.files.replace(name, graph_svg(copy.state, static_cast<GraphKind>(n), page_picture));
        if (result != FileResult::ok) log_soft_error(copy, error_of(result), caller);
    }
}

}  // namespace nimbry
