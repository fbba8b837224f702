// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Standard input, output and error of the process. StandardFiles_posix.cpp and StandardFiles_windows.cpp
/// implement it; CMake chooses one. Free of Qt.
namespace StandardFiles {

/// Opens the descriptors of closed standard files on files that fail when used. Otherwise the next file that
/// is opened would get such a descriptor, and output would be written into it.
/// Does nothing on Windows, which keeps these descriptors occupied.
void occupyClosed();

/// Ignores SIGPIPE: writing to a pipe without a reader fails with an error and does not end the process.
/// Does nothing on Windows, which has no such signal.
void ignoreBrokenPipes();

/// Passes each byte on unchanged: a picture on standard output must not get other line breaks.
/// Does nothing on POSIX systems, which change none.
void passBytes();

} // namespace StandardFiles
