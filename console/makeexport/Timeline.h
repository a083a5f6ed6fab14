#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace makeexport {

/// Where in the ten years an element lies.
struct Moment {
    std::chrono::local_days day;
    std::chrono::seconds ofDay;  // how much of a day's elements lie before, as a part of 24 hours
    std::int64_t left;           // how many the day has still to come, this one counted: 1 or more
};

/// Turns bytes into time: elements of one kind are spread over their days by the place in the file
/// that they have got to. So every size of file tells of all the days, densely or sparsely, in
/// order, and nobody needs to know beforehand how long the elements are.
class Timeline {
  public:
    /// The bytes from `begin` up to `end` tell of `days`, of which there are some, in order.
    Timeline(std::vector<std::chrono::local_days> days, std::uint64_t begin, std::uint64_t end);

    /// `place` is from `begin` up to, but without, `end`; `size` is what an element usually has.
    Moment at(std::uint64_t place, std::uint64_t size) const;

  private:
    std::vector<std::chrono::local_days> _days;
    std::uint64_t _begin;
    std::uint64_t _bytes;
};

}  // namespace makeexport
