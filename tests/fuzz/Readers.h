// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

/// What the fuzzers, and the test of their findings, do with an input of each reader of the program. Every
/// function gives the bytes to the reader and aborts if a documented property does not hold:
///
/// - a refused input has a problem with a sentence of one line, without control characters;
/// - an accepted one has values within the documented ranges and limits;
/// - where the program also writes the format, what was read can be written and read again, and is then
/// equal.
///
/// Add a function here and a line in CMakeLists.txt for each new reader.
namespace kvfuzz::readers {

void acb(const QByteArray& bytes);
void ase(const QByteArray& bytes);
void boundary(const QByteArray& bytes);
void cgats(const QByteArray& bytes);
void csv(const QByteArray& bytes);
void cxf(const QByteArray& bytes);
void gam(const QByteArray& bytes);
void gpl(const QByteArray& bytes);
void session(const QByteArray& bytes);
void saved_gamut(const QByteArray& bytes);
void settings(const QByteArray& bytes);
void camera(const QByteArray& bytes);
void reference(const QByteArray& bytes);

// The profile in a picture and the picture's colours.
void png(const QByteArray& bytes);
void jpeg(const QByteArray& bytes);
void tiff(const QByteArray& bytes);

} // namespace kvfuzz::readers
