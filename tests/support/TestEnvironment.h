// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace kvtest {

/// Removes what the user and the desktop set in the environment of this process (language, theme, scaling,
/// input methods and so on), as ctest does for tests that it starts. Call this before the application
/// object is created.
void useTestEnvironment();

} // namespace kvtest
