// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <lcms2.h>

#include <memory>
#include <type_traits>

/// Owning wrappers for the handles of Little CMS.
namespace LittleCms {

struct DeleteContext
{
    void operator()(cmsContext context) const { cmsDeleteContext(context); }
};
/// A private context, so that errors do not reach the global handler.
using Context = std::unique_ptr<std::remove_pointer_t<cmsContext>, DeleteContext>;

struct CloseProfile
{
    void operator()(cmsHPROFILE profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

struct DeleteTransform
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using Transform = std::unique_ptr<void, DeleteTransform>;

} // namespace LittleCms
