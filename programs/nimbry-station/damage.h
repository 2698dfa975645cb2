#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "programs/nimbry-station/scenario.h"

namespace nimbry::simulator {

/// What a bad cable does to frames. Each damage waits for the first frame that holds its target and strikes once.
class Damage {
public:
    using Kind = std::variant<FlipBits, DropBytes, StrayBytes>;

    explicit Damage(std::uint64_t seed) : seed_(seed) {}

    /// A damage for a frame to come; a StrayBytes must have a `before`.
    void await(Kind kind) { waiting_.push_back(std::move(kind)); }

    /// The frame (27 or 141 bytes) with all waiting damage that its groups can take, in the order of arrival.
    [[nodiscard]] Bytes strike(const Bytes& frame);

    /// The bytes of a StrayBytes: its own, or random ones.
    [[nodiscard]] Bytes bytes_of(const StrayBytes& stray);

private:
    /// One byte on the line and the group that it was part of (0: of none).
    struct Cell {
        std::uint8_t value;
        std::uint8_t tag;
    };
    using Cells = std::vector<Cell>;

    void strike(Cells& cells, const std::vector<std::size_t>& places, const FlipBits& flip);
    void strike(Cells& cells, const std::vector<std::size_t>& places, const DropBytes& drop);
    void strike(Cells& cells, const std::vector<std::size_t>& places, const StrayBytes& stray);
    [[nodiscard]] std::size_t below(std::size_t end);
    [[nodiscard]] std::vector<std::size_t> choose(std::size_t count, std::size_t end);

    std::uint64_t seed_;
    std::int64_t draws_ = 0;
    std::vector<Kind> waiting_;
};

}  // namespace nimbry::simulator
