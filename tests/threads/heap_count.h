// SPDX-License-Identifier: MIT

#pragma once

/// Blocks that new gave to this program and nobody has deleted yet.
long blocksAlive();
