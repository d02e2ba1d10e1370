// SPDX-License-Identifier: MIT
//
// The archive record of an edge element.

#include <platform/image/edgelet.h>

#include <limits>

#include <platform/core/record.h>

qcArchive& operator||(qcArchive& archive, qcEdgelet& edgelet) {
  unsigned char version = 0;
  archive || version;
  qc_Record::checkVersion(version, "qcEdgelet");
  qcVector<2> position = edgelet.position();
  unsigned long magnitude = edgelet.magnitude();
  qcAngle8 angle = edgelet.angle();
  archive || position || magnitude;
  if (magnitude > std::numeric_limits<unsigned short>::max()) {
    throw qcArchive::ValueTooLarge(L"edgelet magnitude above 65535");
  }
  archive || angle;
  if (archive.isLoading()) {
    edgelet = qcEdgelet(position, static_cast<unsigned short>(magnitude), angle);
  }
  return archive;
}
