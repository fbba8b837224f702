// SPDX-License-Identifier: Apache-2.0
#pragma once

/// A process that may not have more threads, such as one in a container with a limit: the test program
/// replaces pthread_create().
namespace kvtest {

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr bool canRefuseThreads = false; // sanitizers replace this function, too
#else
constexpr bool canRefuseThreads = true;
#endif

/// From now on no thread can be started, or every thread can be.
void refuseThreads(bool refuse);

/// The @p number-th thread that is started from now on is refused; the first has the number 1.
void refuseThread(int number);

} // namespace kvtest
