// SPDX-License-Identifier: MIT
//
// The path is given to this file alone: the objects of all others can be shared between checkouts.

#include "repository.h"

std::string repositoryDirectory() { return CNTR_REPOSITORY_DIR; }
