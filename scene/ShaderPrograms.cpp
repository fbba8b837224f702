// SPDX-License-Identifier: Apache-2.0
#include <scene/ShaderPrograms.h>

#include <QtCore/QList>
#include <QtCore/QLoggingCategory>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <initializer_list>

namespace {

Q_LOGGING_CATEGORY(kvViewer, "kv.viewer", QtWarningMsg)

constexpr qsizetype maxReasonLength = 300;

/// The first line of a log of the shader compiler that is not empty.
QString firstLine(const QByteArray& log)
{
    const QList<QByteArray> lines = log.split('\n');
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [](const QByteArray& text) { return !text.trimmed().isEmpty(); });
    return line == lines.end() ? QStringLiteral("the driver gives no reason")
                               : QString::fromUtf8(line->trimmed()).left(maxReasonLength);
}

/// Where the text after the `#version` line begins; 0 without such a line.
qsizetype afterVersionLine(const QByteArray& source)
{
    const qsizetype version = source.indexOf("#version");
    return version < 0 ? 0 : source.indexOf('\n', version) + 1;
}

/// A program that is built only to learn whether it can be. Qt would log several messages for one that
/// cannot.
class TrialProgram
{
public:
    explicit TrialProgram(QOpenGLFunctions& gl) : m_gl(gl), m_program(gl.glCreateProgram()) {}
    ~TrialProgram() { m_gl.glDeleteProgram(m_program); }
    Q_DISABLE_COPY_MOVE(TrialProgram)

    /// @return the reason if the shader does not compile
    std::optional<QString> add(GLenum stage, const QByteArray& source)
    {
        // The qualifiers of OpenGL ES are accepted, as Qt accepts them.
        const QByteArray version = source.left(afterVersionLine(source));
        const QByteArray line =
            "#line " + QByteArray::number(version.count('\n')) + '\n'; // of the line before
        const QByteArray rest = source.mid(version.size());
        const char* parts[] = {version.constData(), "#define lowp\n#define mediump\n#define highp\n",
                               line.constData(), rest.constData()};
        const GLuint shader = m_gl.glCreateShader(stage);
        m_gl.glShaderSource(shader, static_cast<GLsizei>(std::size(parts)), parts, nullptr);
        m_gl.glCompileShader(shader);
        GLint compiled = GL_FALSE;
        m_gl.glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
        std::optional<QString> reason;
        if (!compiled)
            reason = firstLine(
                log(shader, &QOpenGLFunctions::glGetShaderiv, &QOpenGLFunctions::glGetShaderInfoLog));
        else
            m_gl.glAttachShader(m_program, shader);
        m_gl.glDeleteShader(shader); // a shader that is attached is kept until the program is deleted
        return reason;
    }

    /// @return the reason if the shaders do not fit together, or cannot draw anything
    std::optional<QString> link()
    {
        m_gl.glLinkProgram(m_program);
        GLint linked = GL_FALSE;
        m_gl.glGetProgramiv(m_program, GL_LINK_STATUS, &linked);
        if (linked && m_gl.glGetAttribLocation(m_program, "vertex") < 0)
            return QStringLiteral("the attribute 'vertex' is not used");
        if (linked)
            return std::nullopt;
        return firstLine(
            log(m_program, &QOpenGLFunctions::glGetProgramiv, &QOpenGLFunctions::glGetProgramInfoLog));
    }

private:
    template <typename GetValue, typename GetLog>
    QByteArray log(GLuint id, GetValue getValue, GetLog getLog)
    {
        GLint size = 0;
        (m_gl.*getValue)(id, GL_INFO_LOG_LENGTH, &size);
        QByteArray text(std::max(size, 1), '\0');
        GLsizei written = 0;
        (m_gl.*getLog)(id, static_cast<GLsizei>(text.size()), &written, text.data());
        return text.left(written);
    }

    QOpenGLFunctions& m_gl;
    GLuint m_program;
};

KVProblem notBuilt(const QString& file, const QString& reason)
{
    return {KVProblemCode::ShaderNotBuilt, {reason}, file};
}

/// Why the sources cannot be built in @p context, which is current.
std::optional<KVProblem> faultOf(const ShaderSources& sources, const QOpenGLContext& context)
{
    TrialProgram trial(*context.functions());
    if (const auto reason = trial.add(GL_VERTEX_SHADER, sources.vertex))
        return notBuilt(sources.vertexFile, *reason);
    if (const auto reason = trial.add(GL_FRAGMENT_SHADER, sources.fragment))
        return notBuilt(sources.fragmentFile, *reason);
    if (const auto reason = trial.link())
        return notBuilt(sources.vertexFile + QLatin1String(" + ") + sources.fragmentFile, *reason);
    return std::nullopt;
}

} // namespace

QSharedPointer<QOpenGLShaderProgram> ShaderPrograms::build(const QString& vertexPath,
                                                           const QString& fragmentPath)
{
    QSharedPointer<QOpenGLShaderProgram> program(new QOpenGLShaderProgram);
    if (const auto usable = sources(vertexPath, fragmentPath))
        link(*program, *usable);
    return program;
}

std::optional<ShaderSources> ShaderPrograms::sources(const QString& vertexPath, const QString& fragmentPath)
{
    QOpenGLContext* context = QOpenGLContext::currentContext();
    if (!context || !QOpenGLShaderProgram::hasOpenGLShaderPrograms(context))
        return std::nullopt;
    ShaderPrograms* programs = of(context);
    const auto sources = ResourceFiles::shaders(vertexPath, fragmentPath);
    if (!sources) {
        programs->report(sources.error());
        return std::nullopt;
    }
    if (!programs->canBuild(*sources))
        return std::nullopt;
    return programs->m_sound; // the same for all objects: one copy of the texts
}

void ShaderPrograms::link(QOpenGLShaderProgram& program, const ShaderSources& sources)
{
    program.addShaderFromSourceCode(QOpenGLShader::Vertex, sources.vertex);
    program.addShaderFromSourceCode(QOpenGLShader::Fragment, sources.fragment);
    program.link();
}

std::optional<KVProblem> ShaderPrograms::problemOf(const QOpenGLContext* context)
{
    const auto* programs =
        context ? context->findChild<ShaderPrograms*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
    return programs ? programs->m_problem : std::nullopt;
}

ShaderPrograms* ShaderPrograms::of(QOpenGLContext* context)
{
    auto* programs = context->findChild<ShaderPrograms*>(QString(), Qt::FindDirectChildrenOnly);
    return programs ? programs : new ShaderPrograms(context);
}

bool ShaderPrograms::canBuild(const ShaderSources& sources)
{
    if (m_sound == sources)
        return true;
    if (m_faulty == sources)
        return false;
    if (const auto problem = faultOf(sources, *QOpenGLContext::currentContext())) {
        m_faulty = sources;
        report(*problem);
        return false;
    }
    m_sound = sources;
    return true;
}

void ShaderPrograms::report(const KVProblem& problem)
{
    if (m_problem == problem)
        return;
    m_problem = problem;
    qCWarning(kvViewer).noquote() << "the 3D view draws nothing:" << problem.text();
}
