// SPDX-License-Identifier: MIT
//
// The file being written, so that signals that end the program can remove it.

#pragma once

#include <string>

namespace tool {

/// Removes `path` when a signal ends the program, until forgetTemporary() is called. One file at a
/// time; a path that is too long to be kept is not removed.
void rememberTemporary(const std::string& path);
void forgetTemporary() noexcept;

}  // namespace tool
