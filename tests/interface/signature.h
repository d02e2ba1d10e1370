// SPDX-License-Identifier: MIT
//
// How the tests of this directory state what the libraries offer: each name with its exact
// signature, in a static_assert, so that a change of the interface does not compile here.

#pragma once

#include <type_traits>

/// True for a function of exactly this type: `hasSignature<double (qcContour::*)() const>(
/// &qcContour::length)`. What is not noexcept here may be so in the library.
template <class Function>
consteval bool hasSignature(Function /*function*/) {
  return true;
}

/// The same for a name that is not overloaded and whose type must be exactly this one: the class
/// that declares it counts, too.
template <class Expected, class Actual>
consteval bool isDeclaredAs(Actual /*function*/) {
  return std::is_same_v<Expected, Actual>;
}

/// Takes a T as a function would: for calls with an argument in braces.
template <class T>
void take(T value);
