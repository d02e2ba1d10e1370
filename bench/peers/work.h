// SPDX-License-Identifier: MIT
//
// The work that this library and its peers do: outlines, questions about them, and how a question
// is timed. Each source file beside this one registers what one library can answer, under the name
// question/shape/vertices/library, such as "inside/S/1000/GEOS locator".

#pragma once

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <testing/shapes/shapes.h>

namespace peers {

using shapes::Point;
using shapes::Points;
using shapes::Segment;

/// One outline, and what is asked about it.
struct Work {
  Points outline;
  /// `questionCount` of each.
  Points places;
  std::vector<Segment> shortSegments;
  std::vector<Segment> longSegments;
};

constexpr std::size_t questionCount = 10000;

/// `shape` is S, N, C, X or D. Made once.
const Work& work(char shape, std::size_t vertices);

/// The outlines of a set of regions, and what is asked about it.
struct SetWork {
  std::vector<Points> outlines;
  /// `questionCount` of them.
  Points places;
};

/// n disjoint smooth stars of 16 vertices in rows, and places among them. Made once.
const SetWork& setWork(std::size_t regions);

/// An angle in radians, another for every question.
inline double angleOf(std::size_t question) {
  return 6.283 / static_cast<double>(questionCount) * static_cast<double>(question);
}

/// The outlines of a question.
struct Plan {
  std::string shapes;
  std::vector<std::size_t> sizes;
};

inline const Plan everyShape{"SNC", {10, 100, 1000, 10000, 100000}};
/// The smallest outline that bounds something, beside the others.
inline const Plan quadrilateral{"S", {4}};
inline const Plan largerShapes{"SNC", {100, 1000, 10000, 100000}};
inline const Plan allSmoothStars{"S", {10, 100, 1000, 10000, 100000}};
inline const Plan smoothStars{"S", {100, 1000, 10000, 100000}};
/// So large that a pass over it takes long, and with edges that cross.
inline const Plan largeCrossingStar{"X", {160000}};
/// The numbers of regions in a set.
inline const std::vector<std::size_t> setSizes{1000, 10000};

/// The plan without the larger sizes. A peer that takes more than a second for one answer about an
/// outline is not asked about it: seven such answers say no more about the peer than those about
/// smaller outlines do, and the whole table is to take a quarter of an hour.
inline Plan upTo(std::size_t most, Plan plan) {
  std::erase_if(plan.sizes, [most](std::size_t size) { return size > most; });
  return plan;
}

/// A millionth of the outlines' extent, or a little more.
constexpr double inscribedTolerance = 1e-3;
/// How far below the true one a Hausdorff distance may be. Libraries that find a tenth of it take
/// ten times as long.
constexpr double hausdorffTolerance = 0.1;

std::string nameOf(const std::string& question, char shape, std::size_t vertices,
                   const std::string& who);

/// Bytes that the program holds on its heap, with those that libraries take without operator new
/// (which testing/heap does not see) and what the allocator needs for itself.
inline double heapBytes() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

/// Many questions to one outline that does not change. `prepare(work)` does what has to be done
/// once and returns a function that answers question i; it is timed as "QUESTION prepare", with the
/// heap that the prepared outline holds in bytes. What is timed as QUESTION follows questions until
/// all have been asked once, or 30 milliseconds have gone by.
template <class Prepare>
void askOften(const std::string& question, const std::string& who, const Plan& plan,
              Prepare prepare) {
  const auto often = [prepare](benchmark::State& state, const Work& given) {
    auto answer = prepare(given);
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < questionCount; ++i) {
      benchmark::DoNotOptimize(answer(i));
      if (std::chrono::steady_clock::now() - begin > std::chrono::milliseconds(30)) break;
    }
    std::size_t i = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(answer(i));
      i = i + 1 == questionCount ? 0 : i + 1;
    }
  };
  const auto once = [prepare](benchmark::State& state, const Work& given) {
    double bytes = 0.0;
    for (auto _ : state) {
      const double before = heapBytes();
      const auto answer = prepare(given);
      benchmark::DoNotOptimize(&answer);
      bytes = heapBytes() - before;
    }
    state.counters["bytes"] = bytes;
  };
  for (const char shape : plan.shapes) {
    for (const std::size_t n : plan.sizes) {
      const auto apply = [shape, n](auto timing) {
        return [timing, shape, n](benchmark::State& state) { timing(state, work(shape, n)); };
      };
      benchmark::RegisterBenchmark(nameOf(question, shape, n, who).c_str(), apply(often));
      benchmark::RegisterBenchmark(nameOf(question + " prepare", shape, n, who).c_str(),
                                   apply(once));
    }
  }
}

/// The mean of the middle half of some times. It does not see those when something else had the
/// processor, and is not rounded to the steps of the clock, as their median is.
inline double middleOf(std::vector<double>& times) {
  std::sort(times.begin(), times.end());
  const auto quarter = static_cast<std::ptrdiff_t>(times.size() / 4);
  const double sum = std::accumulate(times.begin() + quarter, times.end() - quarter, 0.0);
  return sum / static_cast<double>(times.end() - times.begin() - 2 * quarter);
}

/// Times `answer()` again and again, each time after `set()`, which is not timed. What is reported,
/// as a counter, is the middle of the times.
template <class Set, class Answer>
void timeOneByOne(benchmark::State& state, Set set, Answer answer) {
  std::vector<double> nanoseconds;
  for (auto _ : state) {
    set();
    const auto begin = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(answer());
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - begin;
    nanoseconds.push_back(time.count());
    state.SetIterationTime(time.count() * 1e-9);
  }
  state.counters["nanoseconds"] = middleOf(nanoseconds);
}

/// Many questions to one set that does not change: `prepare(given)` returns a function that answers
/// about a place. All places have been asked about once before they are timed.
template <class Prepare>
void askSetOften(const std::string& question, const std::string& who, Prepare prepare) {
  for (const std::size_t n : setSizes) {
    const auto timing = [prepare, n](benchmark::State& state) {
      const SetWork& given = setWork(n);
      const auto answer = prepare(given);
      for (const Point& p : given.places) benchmark::DoNotOptimize(answer(p));
      std::size_t i = 0;
      for (auto _ : state) {
        benchmark::DoNotOptimize(answer(given.places[i]));
        i = i + 1 == questionCount ? 0 : i + 1;
      }
    };
    benchmark::RegisterBenchmark(nameOf(question, 'R', n, who).c_str(), timing);
  }
}

/// One question to an outline that has just been set. `make(work)` returns a pair: a function that
/// sets the outline, which is not timed, and one that answers, which is.
template <class Make>
void askOnce(const std::string& question, const std::string& who, const Plan& plan, Make make) {
  for (const char shape : plan.shapes) {
    for (const std::size_t n : plan.sizes) {
      const auto timing = [make, shape, n](benchmark::State& state) {
        auto [set, answer] = make(work(shape, n));
        timeOneByOne(state, set, answer);
      };
      benchmark::RegisterBenchmark(nameOf(question, shape, n, who).c_str(), timing)
          ->UseManualTime();
    }
  }
}

/// The first questions to new objects, too short for the clock one by one: `make(work)` gives an
/// object, which is not timed; `answer(object, work, i)` asks it. Many objects are asked between
/// two looks at the clock.
template <class Make, class Answer>
void askNew(const std::string& question, const std::string& who, const Plan& plan, Make make,
            Answer answer) {
  for (const char shape : plan.shapes) {
    for (const std::size_t n : plan.sizes) {
      const auto timing = [make, answer, shape, n](benchmark::State& state) {
        const Work& given = work(shape, n);
        const std::size_t batch = std::clamp<std::size_t>(20000 / n, 4, 256);
        std::vector<decltype(make(given))> objects;
        std::vector<double> nanoseconds;
        std::size_t i = 0;
        for (auto _ : state) {
          objects.clear();
          while (objects.size() < batch) objects.push_back(make(given));
          const auto begin = std::chrono::steady_clock::now();
          for (const auto& object : objects) {
            benchmark::DoNotOptimize(answer(*object, given, i));
            i = i + 1 == questionCount ? 0 : i + 1;
          }
          const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
          nanoseconds.push_back(time.count() * 1e9 / static_cast<double>(batch));
          state.SetIterationTime(time.count());
        }
        state.counters["nanoseconds"] = middleOf(nanoseconds);
      };
      benchmark::RegisterBenchmark(nameOf(question, shape, n, who).c_str(), timing)
          ->UseManualTime();
    }
  }
}

/// What operator new was asked for so far.
struct Allocations {
  long blocks = 0;
  double bytes = 0.0;
};
/// Known only in peers_allocations: the program that takes times does not count.
std::optional<Allocations> allocationsSoFar();

/// askNew() with the questions i, i + 1 and so on, `count` of them, by which `isInside(object,
/// work, i)` is asked. What is timed is all of them together.
template <class Make, class IsInside>
void askNewTimes(std::size_t count, const std::string& who, const Plan& plan, Make make,
                 IsInside isInside) {
  askNew("first " + std::to_string(count) + " inside", who, plan, make,
         [isInside, count](const auto& object, const Work& given, std::size_t i) {
           int inside = 0;
           for (std::size_t k = i; k < i + count; ++k) {
             inside += isInside(object, given, k % questionCount) ? 1 : 0;
           }
           return inside;
         });
}

/// The whole life of an object again and again: `live(work, i)` makes it, asks it and destroys it.
/// Reports what one life allocates where that is counted.
template <class Live>
void liveOften(const std::string& question, const std::string& who, const Plan& plan, Live live) {
  for (const char shape : plan.shapes) {
    for (const std::size_t n : plan.sizes) {
      const auto timing = [live, shape, n](benchmark::State& state) {
        const Work& given = work(shape, n);
        benchmark::DoNotOptimize(live(given, 0));
        if (const auto before = allocationsSoFar()) {
          benchmark::DoNotOptimize(live(given, 0));
          const auto after = allocationsSoFar();
          state.counters["allocations"] = static_cast<double>(after->blocks - before->blocks);
          state.counters["bytes"] = after->bytes - before->bytes;
        }
        std::size_t i = 0;
        for (auto _ : state) {
          benchmark::DoNotOptimize(live(given, i));
          i = i + 1 == questionCount ? 0 : i + 1;
        }
      };
      benchmark::RegisterBenchmark(nameOf(question, shape, n, who).c_str(), timing);
    }
  }
}

/// For libraries that remember nothing: what `set` of askOnce() does.
inline void setNothing() {}

}  // namespace peers
