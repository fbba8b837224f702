// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Problem.h"

#include <tl/expected.hpp>

/// A value, or why there is none.
template <typename T>
using Result = tl::expected<T, Problem>;

/// What a function returns that fails: `return failure(ProblemCode::..., {...});`
template <typename... Arguments>
tl::unexpected<Problem> failure(Arguments&&... arguments)
{
    return tl::unexpected<Problem>(Problem(std::forward<Arguments>(arguments)...));
}
