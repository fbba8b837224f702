// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <tl/expected.hpp>

namespace velmora {

/// A value, or the problem that explains why there is no value.
template <typename T>
using Result = tl::expected<T, KVProblem>;

/// Creates the return value of a function that fails: `return failure(KVProblemCode::NoVolume);`
[[nodiscard]] inline tl::unexpected<KVProblem> failure(KVProblemCode code, const QStringList& arguments = {})
{
    return tl::unexpected<KVProblem>(KVProblem{code, arguments, {}});
}

/// Passes the failure of @p result on: `if (!lab) return failure(lab);`
template <typename T>
[[nodiscard]] tl::unexpected<KVProblem> failure(const Result<T>& result)
{
    return tl::unexpected<KVProblem>(result.error());
}

} // namespace velmora
