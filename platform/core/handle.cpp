// SPDX-License-Identifier: MIT
//
// The one function of the handles that is not inline: the destructor that anchors qcRepBase.

#include <platform/core/handle.h>

qcRepBase::~qcRepBase() = default;
