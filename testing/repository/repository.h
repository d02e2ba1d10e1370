// SPDX-License-Identifier: MIT
//
// Where the repository is, for tests that read its samples and documents.

#pragma once

#include <string>

/// The absolute path, without a separator at the end.
std::string repositoryDirectory();
