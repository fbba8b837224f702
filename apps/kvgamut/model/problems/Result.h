// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Problem.h"

#include <tl/expected.hpp>

/// A value, or why there is none.
template <typename T>
using Result = tl::expected<T, Problem>;

/// What a function returns that fails: `return failure(ProblemCode::NotAPoint, {line});`
inline tl::unexpected<Problem> failure(Problem::Code code, const QStringList& arguments = {})
{
    return tl::unexpected<Problem>(Problem(code, arguments));
}
/// The same, for a problem that is known already.
inline tl::unexpected<Problem> failure(const Problem& problem)
{
    return tl::unexpected<Problem>(problem);
}
