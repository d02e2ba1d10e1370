// SPDX-License-Identifier: MIT
//
// The steps of every set operation in their order.

#include <cntrsets/faces/filledset.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include <cntr/contourdefs.h>
#include <cntrsets/faces/areas.h>
#include <cntrsets/faces/boundary.h>
#include <cntrsets/validity.h>

namespace cntr::sets {
namespace {

/// The largest scaled coordinate has this exponent, and so always the same unit in the last place.
constexpr int scaledExponent = 480;
constexpr int scaledUnit = scaledExponent - std::numeric_limits<double>::digits;

std::vector<bool> keptFaces(const Faces& faces, const Rule& rule) {
  std::vector<bool> kept(faces.windings.size());
  std::transform(faces.windings.begin(), faces.windings.end(), kept.begin(), rule);
  return kept;
}

void restore(std::vector<Point>& ring, const Scaling& scaling) {
  std::transform(ring.begin(), ring.end(), ring.begin(),
                 [&](const Point& p) { return scaling.restored(p); });
}

/// How far a piece can lie from its edge, in scaled coordinates: half a unit for each rounded
/// coordinate.
double farthestMove(const Noding& noding) {
  const double unit = noding.grid > 0.0 ? noding.grid : std::ldexp(1.0, scaledUnit);
  return std::sqrt(0.5) * unit * noding.roundings;
}

/// Asks GEOS about scaled coordinates: with others its products, too, would overflow or lose
/// digits.
void refuseFlaws(const std::vector<qcRings>& parts) {
  const std::string flaw = flawOf(parts);
  if (flaw.empty()) return;
  // The bracket begins a position in scaled coordinates.
  const std::string reason = flaw.substr(0, flaw.find('['));
  throw qcContourDefs::BadParams(L"the result is not valid: " +
                                 std::wstring(reason.begin(), reason.end()));
}

Twofold areaOfKept(const std::vector<Twofold>& areas, const std::vector<bool>& kept) {
  Twofold sum;
  for (std::size_t i = 0; i < areas.size(); ++i)
    if (kept[i]) sum = sum + areas[i];
  return sum;
}

void refuse(bool isWrong, const wchar_t* what) {
  if (isWrong) throw qcContourDefs::BadParams(std::wstring(L"the result is not valid: ") + what);
}

}  // namespace

double largestCoordinate(std::span<const std::span<const Point>> rings) {
  double largest = 0.0;
  for (const std::span<const Point>& ring : rings) {
    for (const Point& p : ring) {
      if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
        throw qcContourDefs::BadParams(L"a coordinate is not a finite number");
      largest = std::max({largest, std::abs(p.x()), std::abs(p.y())});
    }
  }
  return largest;
}

Scaling::Scaling(double largest) {
  if (largest > 0.0) exponent_ = scaledExponent - 1 - std::ilogb(largest);
}

double Scaling::scaled(double coordinate) const {
  const double scaled = std::ldexp(coordinate, exponent_);
  return std::abs(scaled) < leastCoordinate ? std::copysign(0.0, scaled) : scaled;
}

Point Scaling::scaled(const Point& p) const { return {scaled(p.x()), scaled(p.y())}; }

Point Scaling::restored(const Point& p) const { return {restored(p.x()), restored(p.y())}; }

double Scaling::restored(double length) const { return std::ldexp(length, -exponent_); }

std::vector<Piece> scaledPieces(std::span<const std::span<const Point>> rings,
                                const Scaling& scaling) {
  std::vector<Piece> pieces = piecesOf(rings);
  for (Piece& piece : pieces)
    piece = {scaling.scaled(piece.from), scaling.scaled(piece.to), piece.ring};
  std::erase_if(pieces, [](const Piece& piece) { return piece.from == piece.to; });
  return pieces;
}

FilledSet filledSet(std::span<const std::span<const Point>> rings, const Rule& rule) {
  const Scaling scaling(largestCoordinate(rings));
  const std::vector<Piece> pieces = scaledPieces(rings, scaling);
  const Noding noding = node(pieces);
  const Faces faces = facesOf(noding.pieces);
  const std::vector<bool> kept = keptFaces(faces, rule);
  FilledSet result{boundaryOf(faces, kept)};
  const double moved = farthestMove(noding);
  const std::vector<Twofold> areas = areasOf(faces);
  const Twofold area = areaOfKept(areas, kept);
  refuse(!areasAgree(pieces, faces, areas, moved), L"faces and rings differ in area");
  refuse(std::abs((areaOf(result.parts) - area).high) > roundingOfAreas(noding.pieces.size()),
         L"its rings have another area than its faces");
  // Rounded crossings may leave slivers of a feature without area.
  if (!(area.high > 0.0)) result.parts.clear();
  result.cut = noding.pieces.size() != pieces.size() || noding.roundings > 0;
  if (result.cut) refuseFlaws(result.parts);
  for (qcRings& part : result.parts) {
    restore(part.outline, scaling);
    for (std::vector<Point>& hole : part.holes) restore(hole, scaling);
  }
  result.area = scaling.restored(scaling.restored(area.high));
  result.grid = scaling.restored(noding.grid);
  result.moved = scaling.restored(moved);
  return result;
}

}  // namespace cntr::sets
