// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>
#include <scene/ResourceFiles.h>

#include <QtCore/QObject>
#include <QtCore/QSharedPointer>

#include <optional>

class QOpenGLContext;
class QOpenGLShaderProgram;

/// Builds the shader programs of one context, and remembers what could not be built in it: every object of a
/// scene has a program of its own, but shaders that do not build are tried and reported once.
///
/// A child of its context. GUI thread only.
class ShaderPrograms : public QObject
{
    Q_OBJECT
public:
    /// A new program from the two shader files, or from those compiled into the library (see
    /// ResourceFiles::shaders()), in the current context. If it cannot be built it is not linked, and the
    /// first attempt in this context logs one warning in the category "kv.viewer". Without a context, and
    /// where OpenGL has no shaders, it is not linked, without a warning.
    static QSharedPointer<QOpenGLShaderProgram> build(const QString& vertexPath, const QString& fragmentPath);

    /// The two parts of build(): the sources, unless they cannot be built, and a program of them. An object
    /// links its program when it first draws something, because a linked one takes more than a MB in some
    /// drivers, and many objects never draw.
    [[nodiscard]] static std::optional<ShaderSources> sources(const QString& vertexPath,
                                                              const QString& fragmentPath);
    static void link(QOpenGLShaderProgram& program, const ShaderSources& sources);

    /// Why the last program that failed in @p context could not be built. @p context may be null.
    [[nodiscard]] static std::optional<KVProblem> problemOf(const QOpenGLContext* context);

private:
    using QObject::QObject;

    static ShaderPrograms* of(QOpenGLContext* context);
    bool canBuild(const ShaderSources& sources);
    void report(const KVProblem& problem);

    std::optional<ShaderSources> m_sound;
    std::optional<ShaderSources> m_faulty;
    std::optional<KVProblem> m_problem;
};
