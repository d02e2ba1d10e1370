// SPDX-License-Identifier: MIT
//
// The platform's exceptions: their texts, their record, and the factories by which archives create
// them.

#include <platform/core/exception.h>

#include <memory>
#include <ostream>
#include <typeinfo>

#include <platform/core/archive.h>
#include <platform/core/record.h>
#include <platform/core/thread.h>

namespace {

template <class X>
qcPersistent* makeException() {
  return new X;
}

template <>
qcPersistent* makeException<qcArchive::UnknownVersion>() {
  return new qcArchive::UnknownVersion(nullptr, 0);
}

template <class X>
const qc_Instantiator registered(typeid(X), &makeException<X>);

template const qc_Instantiator registered<qcExceptionWithString>;
template const qc_Instantiator registered<qcBadPointer>;
template const qc_Instantiator registered<qcMathError::Errors>;
template const qc_Instantiator registered<qcMathError::Singular>;
template const qc_Instantiator registered<qcPel::Errors>;
template const qc_Instantiator registered<qcPel::BadWindow>;
template const qc_Instantiator registered<qcThreadID::NotCurrentThread>;
template const qc_Instantiator registered<qcArchive::Errors>;
template const qc_Instantiator registered<qcArchive::UnknownVersion>;
template const qc_Instantiator registered<qcArchive::BadFormat>;
template const qc_Instantiator registered<qcArchive::Truncated>;
template const qc_Instantiator registered<qcArchive::ValueTooLarge>;
template const qc_Instantiator registered<qcArchive::WriteFailed>;

constexpr char32_t replacementCharacter = 0xFFFD;

bool isLeadSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isTrailSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

/// The code point at `position`; moves `position` past it. Wide characters may have 16 or 32 bits;
/// whatever is not a code point reads as the replacement character.
char32_t nextCodePoint(const std::wstring& text, std::size_t& position) {
  const auto at = [&text](std::size_t i) { return static_cast<char32_t>(text[i]); };
  const char32_t first = at(position++);
  if (isLeadSurrogate(first) && position < text.size() && isTrailSurrogate(at(position))) {
    return 0x10000 + ((first - 0xD800) << 10U) + (at(position++) - 0xDC00);
  }
  const bool isSurrogate = isLeadSurrogate(first) || isTrailSurrogate(first);
  return isSurrogate || first > 0x10FFFF ? replacementCharacter : first;
}

void appendUtf8(std::string& out, char32_t c) {
  const auto append = [&out](char32_t bits) { out += static_cast<char>(bits); };
  if (c < 0x80) {
    append(c);
    return;
  }
  if (c < 0x800) {
    append(0xC0U | (c >> 6U));
  } else if (c < 0x10000) {
    append(0xE0U | (c >> 12U));
    append(0x80U | ((c >> 6U) & 0x3FU));
  } else {
    append(0xF0U | (c >> 18U));
    append(0x80U | ((c >> 12U) & 0x3FU));
    append(0x80U | ((c >> 6U) & 0x3FU));
  }
  append(0x80U | (c & 0x3FU));
}

std::string toUtf8(const std::wstring& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) appendUtf8(out, nextCodePoint(text, i));
  return out;
}

}  // namespace

qc_Instantiator qcException::sExemplar(typeid(qcException), &qcException::make);

qcPersistent* qcException::make() { return new qcException; }

qcException::qcException(const qcException& other) noexcept
    : qcPersistent(other), std::exception(other) {}

qcException& qcException::operator=(const qcException& other) noexcept {
  qcPersistent::operator=(other);
  std::exception::operator=(other);
  delete what_.exchange(nullptr);
  return *this;
}

qcException::~qcException() { delete what_.load(); }

const char* qcException::what() const noexcept {
  if (const std::string* const made = what_.load()) return made->c_str();
  try {
    std::string text = qf_ClassName(typeid(*this));
    const std::string details = description();
    if (!details.empty()) text += ": " + details;
    auto mine = std::make_unique<const std::string>(std::move(text));
    const std::string* others = nullptr;
    if (!what_.compare_exchange_strong(others, mine.get())) return others->c_str();
    return mine.release()->c_str();
  } catch (...) {
    return "qcException";
  }
}

long qcException::errorNumber() const { return 0; }

std::string qcException::description() const { return {}; }

void qcException::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcException");
}

qcExceptionWithString::qcExceptionWithString(const wchar_t* message)
    : message_text_(message == nullptr ? L"" : message) {}

void qcExceptionWithString::message_(std::wostream& out) const { out << message_text_; }

void qcExceptionWithString::dispatchSerialize(qcArchive& archive) {
  qcException::dispatchSerialize(archive);
  if (archive.isLoading()) qcExceptionWithString::operator=(qcExceptionWithString());
}

std::string qcExceptionWithString::description() const { return toUtf8(message_text_); }

void qcException::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcExceptionWithString::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcBadPointer::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcMathError::Errors::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcMathError::Singular::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcPel::Errors::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcPel::BadWindow::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
