#include "engine/graphs/graph_svg.h"

#include <charconv>

#include "engine/core/run_time_error.h"
#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_layout.h"
#include "engine/graphs/graph_scales.h"

namespace nimbry {
namespace {

constexpr double letter_height = 12;
// Of a sans-serif font's figures and capitals, on the wide side: nobody knows which font a browser has.
constexpr double letter_width = 0.65 * letter_height;
constexpr double head = 30;  // the strip with title and legend
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
    static constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned shift : {0U, 8U, 16U}) {
        const unsigned part = (colour >> shift) & 255U;
        text += digits[part / 16];
        text += digits[part % 16];
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

class Picture {
public:
    Picture(const GraphDrawing& drawing, PictureSize size)
        : drawing_(drawing),
          size_(size),
          layout_(drawing, size.width, size.height - head, {text_width, letter_height}) {}

    std::string text(const std::string& title, std::span<const GraphSeries> legend) {
        const std::string width = std::to_string(size_.width), height = std::to_string(size_.height);
        text_ = "<svg" + attribute("xmlns", "http://www.w3.org/2000/svg") + attribute("width", width) +
                attribute("height", height) + attribute("viewBox", "0 0 " + width + " " + height) +
                attribute("role", "img") + attribute("font-family", "DejaVu Sans, Verdana, Arial, sans-serif") +
                attribute("font-size", number(letter_height)) + ">\n<title>" + utf8_text(title) + "</title>\n<rect" +
                attribute("width", width) + attribute("height", height) + attribute("fill", "#101418") + "/>\n";
        add_head(title, legend);
        text_ += "<g" + attribute("transform", "translate(0 " + number(head) + ")") + ">\n";
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

    void add_head(const std::string& title, std::span<const GraphSeries> legend) {
        constexpr double line = 20;
        text_ += text_element(side, line, 0xFFFFFF, title, attribute("font-weight", "bold"));
        double x = size_.width - side;
        for (auto each = legend.rbegin(); each != legend.rend(); ++each) {
            if (each->legend.empty()) continue;
            constexpr double sample = 24;
            x -= text_width(each->legend);
            text_ += text_element(x, line, text_colour, each->legend);
            const GraphPen pen = pen_of(each->look);
            text_ += "<line" + attribute("x1", number(x - sample - 4)) + attribute("x2", number(x - 4)) +
                     attribute("y1", number(line - 4)) + attribute("y2", number(line - 4)) +
                     attribute("stroke", colour_text(look_of(pen).colour)) + attribute("stroke-width", "2") +
                     dash_attribute(pen) + "/>\n";
            x -= sample + 20;
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
    return Picture(drawing, size).text(graph_title(kind, state.units), graph_series(kind, indoor));
}

void write_graph_files(Copy& copy, std::string_view caller) {
    if (!copy.ini.GetFlag("Main", "GraphFiles", false)) return;
    for (int n = 0; n < graph_count; ++n) {
        const std::string name = "graph" + std::to_string(n + 1) + ".svg";
        const FileResult result =
            copy.ports.files.replace(name, graph_svg(copy.state, static_cast<GraphKind>(n), page_picture));
        if (result == FileResult::ok) continue;
        copy.log.event_or_nothing(" Error " + std::to_string(static_cast<int>(error_of(result))) + " encountered in " +
                                  std::string(caller) + ".");
    }
}

}  // namespace nimbry
