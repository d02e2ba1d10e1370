// SPDX-License-Identifier: MIT
//
// The exceptions of the platform. Every failure is thrown by value; nothing is reported through
// return codes and nothing is logged. The shape library's own exceptions are in
// cntr/contourdefs.h, the archive's in archive.h.

#pragma once

#include <atomic>
#include <exception>
#include <iosfwd>
#include <string>

#include <platform/core/persistent.h>

/// @addtogroup objects
/// @{

/// Root of all exceptions. It is archivable (its record is a version byte 0 and the qcPersistent
/// record), so that a failure can be stored in an archive and thrown again.
class QCPLATFORM_EXPORT qcException : public virtual qcPersistent, public std::exception {
 protected:
  void dispatchSerialize(qcArchive& archive) override;

 public:
  qcException() noexcept = default;
  /// Does not copy the text of what(): the copy makes its own.
  qcException(const qcException& other) noexcept;
  /// Forgets the text that what() has made.
  qcException& operator=(const qcException& other) noexcept;
  ~qcException() override;

  /// Class and message in UTF-8, e.g. "qcContourDefs::BadParams: invalid contour". The text is
  /// valid until the exception is destroyed or assigned to. Falls back to "qcException" when memory
  /// runs out.
  const char* what() const noexcept override;
  /// The fixed number of the class; 0 if it has none.
  virtual long errorNumber() const;
  /// Deletes this object, which must have been made with new, and throws a copy of it, by value,
  /// as the same class.
  virtual void suicideAndRethrow();

 protected:
  /// The text that what() appends to the class name, in UTF-8; empty here.
  virtual std::string description() const;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  /// Made by the first call of what(); atomic because threads may share one exception.
  mutable std::atomic<const std::string*> what_{nullptr};
};

/// An exception that carries a text. Its record is that of qcException: an exception loaded from an
/// archive has an empty text.
class QCPLATFORM_EXPORT qcExceptionWithString : public qcException {
 public:
  /// The text up to its terminating null; a null pointer means an empty text.
  qcExceptionWithString(const wchar_t* message = L"");

  /// The text.
  std::wstring message() const { return message_text_; }
  /// Writes the text to `out`.
  void message_(std::wostream& out) const;
  void suicideAndRethrow() override;

 protected:
  /// The record of qcException; loading empties the text.
  void dispatchSerialize(qcArchive& archive) override;
  std::string description() const override;

 private:
  std::wstring message_text_;
};

/// Thrown when a handle that holds no object is dereferenced.
class QCPLATFORM_EXPORT qcBadPointer : public qcException {
 public:
  void suicideAndRethrow() override;
};

/// Failures of the arithmetic of matrices and fits.
class QCPLATFORM_EXPORT qcMathError {
 public:
  /// Any of them.
  class QCPLATFORM_EXPORT Errors : public qcException {
   public:
    void suicideAndRethrow() override;
  };
  /// A matrix without an inverse, or a body that degenerates to a line.
  class QCPLATFORM_EXPORT Singular : public Errors {
   public:
    void suicideAndRethrow() override;
  };
};

/// Failures of image windows, also thrown by operations that shapes with per-vertex data do not
/// support.
class QCPLATFORM_EXPORT qcPel {
 public:
  /// Any of them.
  class QCPLATFORM_EXPORT Errors : public qcException {
   public:
    void suicideAndRethrow() override;
  };
  /// A window that does not exist, or an operation that is not supported.
  class QCPLATFORM_EXPORT BadWindow : public Errors {
   public:
    void suicideAndRethrow() override;
  };
};

/// The body of suicideAndRethrow() for class X: copies `*exception` on the stack, deletes it and
/// throws the copy.
template <class X>
[[noreturn]] void qf_DeleteAndThrowCopy(X* exception) {
  const X copy(*exception);
  delete exception;
  throw X(copy);
}

/// @}
