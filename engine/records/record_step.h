#pragma once

#include <functional>

#include "engine/core/copy.h"

namespace nimbry {

/// Runs one step of a record routine (the day's extremes, their loading, the changeover, the almanac), which rather
/// goes on without a step than end the program: the first error sets `DuplicateError`, waits two seconds and ends this
/// step only. While `DuplicateError` is set an error passes on, and is fatal. May wait.
void record_step(Copy& copy, const std::function<void()>& step);

}  // namespace nimbry
