// SPDX-License-Identifier: MIT
//
// The archive operators of the plain values: angles, vectors, matrices, transforms. They have no
// version. Storing never writes to the value, so that several threads can store an object that they
// share. The basic types are in archive.cpp, lists in archive_lists.cpp.

#include <platform/core/archive.h>
#include <platform/core/xform.h>

namespace {

/// One double, that of a value with toDouble().
template <class Angle>
qcArchive& transferAngle(qcArchive& archive, Angle& angle) {
  double value = angle.toDouble();
  archive || value;
  if (archive.isLoading()) angle = Angle(value);
  return archive;
}

}  // namespace

qcArchive& operator||(qcArchive& archive, qcRadian& angle) { return transferAngle(archive, angle); }

qcArchive& operator||(qcArchive& archive, qcDegree& angle) { return transferAngle(archive, angle); }

qcArchive& operator||(qcArchive& archive, qcAngle8& angle) {
  unsigned char steps = angle.steps();
  archive || steps;
  if (archive.isLoading()) angle = qcAngle8(steps);
  return archive;
}

qcArchive& operator||(qcArchive& archive, qcVector<2>& vector) {
  double x = vector.x();
  double y = vector.y();
  archive || x || y;
  if (archive.isLoading()) vector = qcVector<2>(x, y);
  return archive;
}

qcArchive& operator||(qcArchive& archive, qcMatrix<2>& matrix) {
  double elements[] = {matrix.element(0, 0), matrix.element(0, 1), matrix.element(1, 0),
                       matrix.element(1, 1)};
  for (double& element : elements) archive || element;
  if (archive.isLoading()) {
    matrix = qcMatrix<2>(elements[0], elements[1], elements[2], elements[3]);
  }
  return archive;
}

qcArchive& operator||(qcArchive& archive, qcXform<2>& xform) {
  qcMatrix<2> matrix = xform.matrix();
  qcVector<2> translation = xform.trans();
  archive || matrix || translation;
  if (archive.isLoading()) xform = qcXform<2>(matrix, translation);
  return archive;
}
