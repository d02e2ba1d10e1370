// SPDX-License-Identifier: MIT
//
// The exceptions' numbers, records and factories.

#include <cntr/contourdefs.h>
#include <platform/core/archive.h>

namespace {

void checkVersion(unsigned char version, const char* className) {
  if (version != 0) throw qcArchive::UnknownVersion(className, 0);
}

}  // namespace

void qcContourDefs::Errors::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  unsigned char version = 0;
  archive || version;
  Errors::serialize_(archive, version);
  setVisited(this, sizeof(*this));
}

void qcContourDefs::Errors::serialize_(qcArchive& archive, unsigned char version) {
  checkVersion(version, "qcContourDefs::Errors");
  qcException::dispatchSerialize(archive);
}

// The four concrete classes differ in name and number alone.
#define CNTR_DEFINE_EXCEPTION(Class, number)                                                   \
  qc_Instantiator qcContourDefs::Class::sExemplar(typeid(qcContourDefs::Class), &Class::make); \
  qcPersistent* qcContourDefs::Class::make() { return new Class; }                             \
  long qcContourDefs::Class::errorNumber() const { return number; }                            \
  void qcContourDefs::Class::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }              \
  void qcContourDefs::Class::dispatchSerialize(qcArchive& archive) {                           \
    if (haveVisited(this, sizeof(*this))) return;                                              \
    unsigned char version = 0;                                                                 \
    archive || version;                                                                        \
    Class::serialize_(archive, version);                                                       \
    setVisited(this, sizeof(*this));                                                           \
  }                                                                                            \
  void qcContourDefs::Class::serialize_(qcArchive& archive, unsigned char version) {           \
    checkVersion(version, "qcContourDefs::" #Class);                                           \
    Errors::dispatchSerialize(archive);                                                        \
  }

CNTR_DEFINE_EXCEPTION(EmptyContour, 0x10004680)
CNTR_DEFINE_EXCEPTION(EmptyRegionSet, 0x10004682)
CNTR_DEFINE_EXCEPTION(BadParams, 0x10004683)
CNTR_DEFINE_EXCEPTION(RegionCannotBeSetOpen, 0x10004684)

#undef CNTR_DEFINE_EXCEPTION
