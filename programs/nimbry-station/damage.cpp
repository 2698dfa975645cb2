#include "programs/nimbry-station/damage.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "engine/station/group_layout.h"
#include "programs/nimbry-station/noise.h"

namespace nimbry::simulator {
namespace {

constexpr std::uint64_t bad_cable = 1000;  // a channel of chance that no curve of the weather uses

const Target& target_of(const Damage::Kind& kind) {
    if (const auto* flip = std::get_if<FlipBits>(&kind)) return flip->target;
    if (const auto* drop = std::get_if<DropBytes>(&kind)) return drop->target;
    return std::get<StrayBytes>(kind).before.value();
}

bool takes(const Target& target, bool train) {
    switch (target.kind) {
        case Target::Kind::train_group: return train;
        case Target::Kind::lone_group: return !train;
        case Target::Kind::any_frame: break;
    }
    return true;
}

}  // namespace

Bytes Damage::strike(const Bytes& frame) {
    const bool train = frame.size() == train_length;
    Cells cells;
    for (std::size_t n = 0; n < frame.size(); ++n) {
        const auto span = std::ranges::find_if(train_spans, [&](const GroupSpan& s) { return n < s.first + s.length; });
        cells.push_back({frame[n], train ? span->tag : span_cf.tag});
    }
    std::vector<Kind> later;
    for (Kind& kind : waiting_) {
        const Target target = target_of(kind);
        if (!takes(target, train)) {
            later.push_back(std::move(kind));
            continue;
        }
        std::vector<std::size_t> places;
        for (std::size_t n = 0; n < cells.size(); ++n) {
            const bool whole_frame = target.kind == Target::Kind::any_frame;
            if (whole_frame ? cells[n].tag != 0 : cells[n].tag == target.tag) places.push_back(n);
        }
        std::visit([&](const auto& damage) { strike(cells, places, damage); }, kind);
    }
    waiting_ = std::move(later);
    Bytes bytes;
    for (const Cell& cell : cells) bytes.push_back(cell.value);
    return bytes;
}

Bytes Damage::bytes_of(const StrayBytes& stray) {
    Bytes bytes = stray.bytes;
    for (int n = 0; n < stray.random_count; ++n) bytes.push_back(static_cast<std::uint8_t>(below(256)));
    return bytes;
}

void Damage::strike(Cells& cells, const std::vector<std::size_t>& places, const FlipBits& flip) {
    for (const std::size_t bit : choose(static_cast<std::size_t>(flip.count), places.size() * 8)) {
        Cell& cell = cells[places[bit / 8]];
        cell.value = static_cast<std::uint8_t>(cell.value ^ (1U << (bit % 8)));
    }
}

void Damage::strike(Cells& cells, const std::vector<std::size_t>& places, const DropBytes& drop) {
    std::vector<std::size_t> lost = choose(static_cast<std::size_t>(drop.count), places.size());
    std::ranges::sort(lost, std::greater{});  // from the end, so that the places before stay true
    for (const std::size_t n : lost) cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(places[n]));
}

void Damage::strike(Cells& cells, const std::vector<std::size_t>& places, const StrayBytes& stray) {
    auto at = places.empty() ? cells.end() : cells.begin() + static_cast<std::ptrdiff_t>(places.front());
    for (const std::uint8_t byte : bytes_of(stray)) at = cells.insert(at, Cell{byte, 0}) + 1;
}

std::size_t Damage::below(std::size_t end) {
    return mixed_bits(seed_, bad_cable, draws_++) % end;
}

/// `count` different numbers below `end`, all of them when there are not that many.
std::vector<std::size_t> Damage::choose(std::size_t count, std::size_t end) {
    std::vector<std::size_t> numbers(end);
    std::iota(numbers.begin(), numbers.end(), std::size_t{0});
    const std::size_t chosen = std::min(count, end);
    for (std::size_t n = 0; n < chosen; ++n) std::swap(numbers[n], numbers[n + below(end - n)]);
    numbers.resize(chosen);
    return numbers;
}

}  // namespace nimbry::simulator
