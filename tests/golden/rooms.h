// SPDX-License-Identifier: MIT
//
// The rooms: each asks one part of the library the same questions about the same shapes, whatever
// the system and the compiler.

#pragma once

#include <span>

#include "answers.h"

namespace golden {

struct Room {
  const char* name;
  void (*ask)(Answers&);
  /// Whether answers depend on the sine, cosine or atan2 of the system, which may differ from
  /// another system's in the last bit.
  bool usesTrigonometry = false;
};

/// All rooms of a program: rooms.cpp has those of golden_answers, listed below, and
/// feature_rooms.cpp those of golden_measures.
std::span<const Room> rooms();

// platform_rooms.cpp
void askShapes(Answers& answers);
void askNumbers(Answers& answers);
void askHull(Answers& answers);
void askCircleFit(Answers& answers);
void askEllipseFit(Answers& answers);
void askAngles(Answers& answers);

// contour_rooms.cpp
void askContourMeasures(Answers& answers);
void askContourEdges(Answers& answers);
void askContourExtents(Answers& answers);
void askContourExtremes(Answers& answers);
void askContourDrawing(Answers& answers);
void askMoments(Answers& answers);
void askMomentEllipses(Answers& answers);

// region_rooms.cpp
void askRegionMeasures(Answers& answers);
void askRegionQueries(Answers& answers);
void askContainment(Answers& answers);
void askRegionRepair(Answers& answers);
void askSetMeasures(Answers& answers);
void askSetQueries(Answers& answers);
void askSetRepair(Answers& answers);

// descriptor_rooms.cpp
void askDescriptors(Answers& answers);
void askDescriptorAngles(Answers& answers);
void askSimplified(Answers& answers);
void askDeviations(Answers& answers);
void askAlignments(Answers& answers);
void askAlignmentAngles(Answers& answers);

// data_rooms.cpp
void askData(Answers& answers);
void askDataDrawing(Answers& answers);
void askArchive(Answers& answers);

}  // namespace golden
