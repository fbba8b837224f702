// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>

#include <platform/KVVelmoraFramework.h>

#include <optional>
#include <ostream>

// How googletest prints problems and their codes.
inline void PrintTo(const KVProblem& problem, std::ostream* out)
{
    *out << qPrintable(problem.text());
}
namespace KVProblemCodes {
inline void PrintTo(KVProblemCode code, std::ostream* out)
{
    *out << KVProblem::sentence(code);
}
} // namespace KVProblemCodes

/// The code of a failure; nullopt after success.
inline std::optional<KVProblemCode> codeOf(const std::optional<KVProblem>& problem)
{
    return problem ? std::optional(problem->code) : std::nullopt;
}
inline std::optional<KVProblemCode> codeOf(const KVGamut::GamutObject& gamut)
{
    return codeOf(gamut.problem());
}
template <typename T>
std::optional<KVProblemCode> codeOf(const velmora::Result<T>& result)
{
    return result ? std::nullopt : std::optional(result.error().code);
}
