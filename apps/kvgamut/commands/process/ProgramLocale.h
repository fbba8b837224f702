// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The locale of the process.
namespace ProgramLocale {

/// Sets a UTF-8 locale, as Qt needs it for file names, if the environment names another one, such as the "C"
/// of a server, or one that is not installed. The language that the environment asks for stays the same.
///
/// Messages of the C library and numbers are in English in every locale, since scripts read them. The window
/// asks Qt for the user's language.
void useUtf8();

} // namespace ProgramLocale
