// SPDX-License-Identifier: MIT
//
// What distinct threads may do at once, to be watched by the thread sanitizer: distinct shapes,
// handles to shared holes and transforms, the registry of classes; and what short-lived threads
// leave behind.

#include <atomic>
#include <functional>
#include <sstream>
#include <thread>
#include <vector>

#include <cntrtmpl/regionsett.h>
#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <platform/core/thread.h>
#include <testing/heap/heap.h>
#include <testing/shapes/shapes.h>

namespace {

using Region = qcPtrHandle<qcRegion>;
using Regions = std::vector<qcPtrHandle_const<qcRegion>>;
using ContourT = qcContourT<qcEdgelet>;

constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

/// Runs `work(number)` on `count` threads at once, which start together.
void onThreads(int count, const std::function<void(int)>& work) {
  std::atomic<int> waiting{count};
  std::vector<std::thread> threads;
  for (int number = 0; number < count; ++number) {
    threads.emplace_back([&, number] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      work(number);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

/// Everything that uses an index, a cache, the random generator or repair.
double askEverything(const qcRegion& region) {
  double sum = region.area(false) + region.length() + region.centerOfMass(false).x();
  for (int i = 0; i < 40; ++i) {
    const qcVector<2> p(400.0 + 10.0 * i, 480.0);
    sum += region.inside(p, true) ? 1.0 : 0.0;
    sum += region.distToPoint(p, i % 2 == 0, true, false);
    sum += static_cast<double>(region.extremalVertexIndex(qcRadian(0.1 * i)));
    sum += region.encloseRect(qcXform<2>(qcMatrix<2>(), {1.0 * i, 0})).width();
  }
  sum += region.diameter(qcContourDefs::eFarthestVertexPair);
  sum += static_cast<double>(region.vertexIndex({640, 480}, 600.0).size());
  sum += static_cast<double>(region.intersections(qcLineSeg({0, 480}, {1300, 481}), true).size());
  qcRegion repaired;
  region.outerHull(repaired);
  sum += repaired.length();
  return sum;
}

TEST(ThreadsTest, DistinctShapesAreAskedOnDistinctThreads) {
  const std::vector<qcVector<2>> outline = shapes::crossingStar(200);
  const double expected = askEverything(qcRegion(outline, keep));
  onThreads(4, [&](int) {
    for (int round = 0; round < 5; ++round) {
      const qcRegion region(outline, keep);
      EXPECT_EQ(askEverything(region), expected);
    }
  });
}

TEST(ThreadsTest, CopiesOfAShapeAreAskedAndChangedOnDistinctThreads) {
  const std::vector<qcVector<2>> outline = shapes::crossingStar(200);
  const qcRegion original(outline, keep);
  const double expected = askEverything(original);
  std::vector<qcRegion> copies(4, original);
  onThreads(4, [&](int number) {
    qcRegion& copy = copies[static_cast<std::size_t>(number)];
    EXPECT_EQ(askEverything(copy), expected);
    std::ostringstream stored;
    qcStreamArchive archive(stored);
    archive || copy;
    copy.points(shapes::regularPolygon(20, 50, {640, 480}));
    copy = qcRegion(outline, keep);
    EXPECT_EQ(askEverything(copy), expected);
  });
}

TEST(ThreadsTest, HandlesToTheSameHolesAreCopiedAndReleasedOnDistinctThreads) {
  const Region hole(new qcRegion(shapes::regularPolygon(20, 50, {640, 480}), keep));
  static_cast<void>(hole->area(false));
  Region whole(new qcRegion(shapes::regularPolygon(50, 400, {640, 480}), keep));
  whole->holes(std::vector<Region>{hole});
  const qcRegion shared(*whole);
  onThreads(4, [&](int) {
    for (int round = 0; round < 500; ++round) {
      const qcRegion copy(shared);
      const Regions holes = copy.holes();
      qcRegion moved;
      moved = copy;
      EXPECT_EQ(moved.holes()[0].get(), hole.get());
    }
  });
}

TEST(ThreadsTest, TheLastOfManyHandlesIsReleasedOnAnyThread) {
  for (int round = 0; round < 200; ++round) {
    std::vector<Region> handles(4,
                                Region(new qcRegion(shapes::regularPolygon(8, 50, {0, 0}), keep)));
    onThreads(4, [&](int number) { handles[static_cast<std::size_t>(number)] = Region(); });
  }
}

TEST(ThreadsTest, ShapesWithDataShareTheirTransform) {
  std::vector<qcEdgelet> edgelets;
  for (const qcVector<2>& p : shapes::regularPolygon(12, 50, {0, 0})) {
    edgelets.emplace_back(p, 5, qcAngle8(6));
  }
  const ContourT shared(edgelets,
                        qcPtrHandle_const<qc2XformBase>(new qc2Rigid(qcDegree(20), {1, 2})));
  onThreads(4, [&](int) {
    for (int round = 0; round < 300; ++round) {
      ContourT copy(shared);
      copy.data(edgelets);
      static_cast<qcContour&>(copy).points(shared.points());
      EXPECT_EQ(copy.dataFromPointsXform(), shared.dataFromPointsXform());
      EXPECT_EQ(copy.datum({3, 4}), shared.datum({3, 4}));
    }
  });
}

/// Registered while others look classes up.
class LateClass : public virtual qcPersistent, public virtual qcRepBase {
 public:
  static qcPersistent* make() { return new LateClass; }
};

TEST(ThreadsTest, ClassesAreLookedUpWhileOthersAreRegistered) {
  // Registrations are permanent, and so are these.
  static std::vector<std::unique_ptr<qc_Instantiator>> registrations(64);
  onThreads(4, [&](int number) {
    for (int round = 0; round < 60; ++round) {
      if (number == 0) {
        registrations[static_cast<std::size_t>(round)] =
            std::make_unique<qc_Instantiator>(typeid(LateClass), &LateClass::make);
        continue;
      }
      Region stored(new qcRegion(shapes::regularPolygon(5, 50, {0, 0}), keep));
      std::ostringstream out;
      qcStreamArchive storing(out);
      storing || stored;
      std::istringstream in(out.str());
      qcStreamArchive loading(in);
      Region loaded;
      loading || loaded;
      ASSERT_TRUE(loaded);
      EXPECT_EQ(loaded->points(), stored->points());
    }
  });
}

/// Fills a list of remembered answers beyond its capacity, which makes the random generator of a
/// thread that does so for the first time.
void forgetAnAnswer() {
  const qcContour contour(shapes::regularPolygon(5, 50, {0, 0}), true, 0);
  for (int i = 0; i < 8; ++i) static_cast<void>(contour.extremalVertexIndex(qcRadian(0.3 * i)));
}

TEST(ThreadsTest, ThousandsOfShortThreadsLeaveNothingBehind) {
  const auto run = [](int count) {
    for (int i = 0; i < count; ++i) {
      std::thread first(forgetAnAnswer);
      std::thread second(forgetAnAnswer);
      first.join();
      second.join();
    }
  };
  run(10);  // allocates what the system keeps for reuse
  const long before = heap::blocksAlive();
  run(1000);
  EXPECT_EQ(heap::blocksAlive(), before);
}

TEST(ThreadsTest, FunctionsRunWhenTheirThreadEnds) {
  std::atomic<int> runs{0};
  onThreads(8, [&](int) {
    const auto count = [](const qcThreadID& thread, void* context) {
      if (thread == qfGetCurrentThreadID()) ++*static_cast<std::atomic<int>*>(context);
    };
    for (int i = 0; i < 3; ++i) qfGetCurrentThreadID().atexit(count, &runs);
  });
  EXPECT_EQ(runs, 24);
}

}  // namespace
