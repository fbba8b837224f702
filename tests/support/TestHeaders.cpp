// SPDX-License-Identifier: Apache-2.0
// Compiled only for the precompiled headers of the tests, see tests/CMakeLists.txt.
