// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Standard input, output and error of the process.
namespace StandardFiles {

/// Opens the descriptors of closed standard files on files that fail when used. Otherwise the next file that
/// is opened would get such a descriptor, and output would be written into it.
void occupyClosed();

/// Ignores SIGPIPE: writing to a pipe without a reader fails with an error and does not end the process.
void ignoreBrokenPipes();

} // namespace StandardFiles
