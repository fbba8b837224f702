// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Standard input, output and error of the process.
namespace StandardFiles {

/// Occupies the descriptors of closed standard files with files that fail when used. Otherwise the next file
/// that is opened would get such a descriptor, and output would be written into it.
void occupyClosed();

/// Writing into a pipe whose reader has gone then fails with an error instead of ending the process.
void ignoreBrokenPipes();

} // namespace StandardFiles
