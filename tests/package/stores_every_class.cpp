// SPDX-License-Identifier: MIT
//
// Stores their number and an object of every class that archives can create in the given file, and
// prints the names of the classes. loads_every_class.cpp reads it.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <vector>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>
#include <platform/core/thread.h>
#include <platform/core/xform.h>

namespace {

struct Pointers : qcPersistent {
  using qcPersistent::serializePointer;
};

}  // namespace

int main(int, char** arguments) {
  std::vector<std::unique_ptr<qcPersistent>> objects;
  const auto add = [&objects](qcPersistent* object) { objects.emplace_back(object); };

  add(new qcPoint);
  add(new qcLine);
  add(new qcLineSeg);
  add(new qcRect);
  add(new qcCircle);
  add(new qcEllipse);
  add(new qcPolygon);
  add(new qc2XformLinear);
  add(new qc2Rigid);

  add(new qcException);
  add(new qcExceptionWithString);
  add(new qcBadPointer);
  add(new qcMathError::Errors);
  add(new qcMathError::Singular);
  add(new qcPel::Errors);
  add(new qcPel::BadWindow);
  add(new qcThreadID::NotCurrentThread);
  add(new qcArchive::Errors);
  add(new qcArchive::UnknownVersion("", 0));
  add(new qcArchive::BadFormat);
  add(new qcArchive::Truncated);
  add(new qcArchive::ValueTooLarge);
  add(new qcArchive::WriteFailed);

  add(new qcContour({}, true, 0));
  add(new qcRegion);
  add(new qcRegionSet(std::vector<qcPtrHandle_const<qcRegion>>{}, qcContourDefs::eRegularize));
  add(new qcContourT<qcEdgelet>);
  add(new qcRegionT<qcEdgelet>);
  add(new qcRegionSetT<qcEdgelet>);
  add(new qcContourDefs::EmptyContour);
  add(new qcContourDefs::EmptyRegionSet);
  add(new qcContourDefs::BadParams);
  add(new qcContourDefs::RegionCannotBeSetOpen);

  std::ofstream file(arguments[1], std::ios::binary);
  qcStreamArchive archive(file);
  long count = static_cast<long>(objects.size());
  archive || count;
  for (const std::unique_ptr<qcPersistent>& object : objects) {
    qcPersistent* pointer = object.get();
    Pointers::serializePointer(archive, nullptr, pointer);
    std::cout << qf_ClassName(typeid(*pointer)) << '\n';
  }
  return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
