// SPDX-License-Identifier: MIT
//
// Everything that a shape answers, as a list of numbers, and whether it answers as a new one of the
// same content does: this must hold for a shape whatever failed before.

#pragma once

#include <vector>

#include <cntr/regionst.h>

using Answers = std::vector<double>;
using Region = qcPtrHandle<qcRegion>;
using Regions = std::vector<qcPtrHandle_const<qcRegion>>;

constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

Answers answersOf(const qcContour& contour);
/// The answers of the outer boundary, too.
Answers answersOf(const qcRegion& region);
Answers answersOf(const qcRegionSet& set);

/// Fails the test unless the shape answers as a new one of the same content.
void expectSoundAnswers(const qcContour& contour);
void expectSoundAnswers(const qcRegion& region);
void expectSoundAnswers(const qcRegionSet& set);

/// A shape of 5 + 32 vertices that crosses itself and can be repaired, and is large enough for the
/// indexes.
std::vector<qcVector<2>> crossingOutline();
/// A square of a few vertices on each side.
std::vector<qcVector<2>> squareOutline(const qcVector<2>& corner, double side);
/// A large square with a hole that has a hole.
Region regionWithHoles();
/// Squares, some of which cross.
qcRegionSet crossingSet();
