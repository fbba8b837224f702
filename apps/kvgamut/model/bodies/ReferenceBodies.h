// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GivenGamut.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <optional>

/// Gamuts that no device has, with which those of devices are compared.
namespace ReferenceBodies {

/// The reference body called @p name, in any case: one of BuiltInNames::bodies(). nullopt if there is none.
/// A problem does not name it.
/// @param task cancels the computation; may be null
std::optional<Result<GivenGamut>> create(const QString& name, KVCompletionProtocolPtr task = {});

} // namespace ReferenceBodies
