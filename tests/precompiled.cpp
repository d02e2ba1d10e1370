// SPDX-License-Identifier: MIT
//
// Holds no code: the headers that all test programs use are precompiled along with this file.
