// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

class QOpenGLContext;

/// What has an OpenGL context that ContextScope makes current.
class ContextOwner
{
public:
    ContextOwner() = default;
    ContextOwner(const ContextOwner&) = delete;
    ContextOwner& operator=(const ContextOwner&) = delete;

    [[nodiscard]] virtual QOpenGLContext* glContext() const = 0; ///< null if there is none
    virtual void makeContextCurrent() = 0;                       ///< and binds its framebuffer
    virtual void releaseContext() = 0;                           ///< no context is current then

    /// Expires with this object.
    [[nodiscard]] std::weak_ptr<const void> life() const { return m_life; }

protected:
    ~ContextOwner() = default;

private:
    std::shared_ptr<const void> m_life = std::make_shared<char>();
};
