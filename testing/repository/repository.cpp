// SPDX-License-Identifier: MIT
//
// Only this file is given the path, so that all other objects can be shared between checkouts.

#include "repository.h"

std::string repositoryDirectory() { return CNTR_REPOSITORY_DIR; }
