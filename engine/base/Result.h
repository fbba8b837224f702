// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <tl/expected.hpp>

namespace velmora {

/// A value, or why there is none.
template <typename T>
using Result = tl::expected<T, KVProblem>;

/// What a function returns that fails: `return failure(KVProblemCode::NoVolume);`
inline tl::unexpected<KVProblem> failure(KVProblemCode code, const QString& argument = {})
{
    return tl::unexpected<KVProblem>(
        KVProblem{code, argument.isEmpty() ? QStringList() : QStringList(argument), {}});
}

} // namespace velmora
