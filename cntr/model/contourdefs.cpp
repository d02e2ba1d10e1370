// SPDX-License-Identifier: MIT
//
// The exceptions' numbers, records and factories.

#include <cntr/contourdefs.h>
#include <platform/core/record.h>

void qcContourDefs::Errors::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 0,
                          [&](unsigned char version) { Errors::serialize_(archive, version); });
}

void qcContourDefs::Errors::serialize_(qcArchive& archive, unsigned char version) {
  qc_Record::checkVersion(version, "qcContourDefs::Errors");
  qcExceptionWithString::dispatchSerialize(archive);
}

// The four concrete classes differ only in name and number.
#define CNTR_DEFINE_EXCEPTION(Class, number)                                                      \
  qc_Instantiator qcContourDefs::Class::sExemplar(typeid(qcContourDefs::Class), &Class::make);    \
  qcPersistent* qcContourDefs::Class::make() { return new Class; }                                \
  long qcContourDefs::Class::errorNumber() const { return number; }                               \
  void qcContourDefs::Class::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }                 \
  void qcContourDefs::Class::dispatchSerialize(qcArchive& archive) {                              \
    qc_Record::transferOnce(archive, *this, 0,                                                    \
                            [&](unsigned char version) { Class::serialize_(archive, version); }); \
  }                                                                                               \
  void qcContourDefs::Class::serialize_(qcArchive& archive, unsigned char version) {              \
    qc_Record::checkVersion(version, "qcContourDefs::" #Class);                                   \
    Errors::dispatchSerialize(archive);                                                           \
  }

CNTR_DEFINE_EXCEPTION(EmptyContour, 0x10004680)
CNTR_DEFINE_EXCEPTION(EmptyRegionSet, 0x10004682)
CNTR_DEFINE_EXCEPTION(BadParams, 0x10004683)
CNTR_DEFINE_EXCEPTION(RegionCannotBeSetOpen, 0x10004684)

#undef CNTR_DEFINE_EXCEPTION
