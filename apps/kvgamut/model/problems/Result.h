// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Problem.h"

#include <tl/expected.hpp>

/// A value, or the problem because of which there is none.
template <typename T>
using Result = tl::expected<T, Problem>;

/// The return value of a function that fails: `return failure(ProblemCode::NotAPoint, {line});`
inline tl::unexpected<Problem> failure(Problem::Code code, const QStringList& arguments = {})
{
    return tl::unexpected<Problem>(Problem(code, arguments));
}
/// The same for an existing problem.
inline tl::unexpected<Problem> failure(const Problem& problem)
{
    return tl::unexpected<Problem>(problem);
}
