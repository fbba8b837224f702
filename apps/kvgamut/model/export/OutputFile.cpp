// SPDX-License-Identifier: Apache-2.0
#include "OutputFile.h"

#include "model/inputs/FileName.h"
#include "model/inputs/InputName.h"
#include "model/problems/SystemReason.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

Problem failed(const QString& name, const QFileDevice& file)
{
    return Problem(ProblemCode::CannotWrite).about(name).because(SystemReason::ofFile(file));
}

// Unbuffered: when a buffer is written only in part, QFile loses the reason.
constexpr auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;

/// Continues after a partial write: only the next write fails with the reason.
bool writeAll(QFileDevice& file, const QByteArray& bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const qint64 more = file.write(bytes.constData() + written, bytes.size() - written);
        if (more <= 0)
            return false;
        written += more;
    }
    return file.flush();
}

/// Whether both are names of one regular file.
bool areSameFile(const std::filesystem::path& a, const std::filesystem::path& b)
{
    std::error_code error;
    return std::filesystem::is_regular_file(a, error) && std::filesystem::equivalent(a, b, error);
}

/// The file of an input with settings.
QString fileOf(const QString& input)
{
    const Result<InputName> name = InputName::of(input);
    return name ? name->file : input;
}

} // namespace

std::optional<Problem> overwritesInput(const QString& output, const QStringList& inputs)
{
    const std::filesystem::path written = FileName::path(output);
    for (const QString& input : inputs)
        if (areSameFile(written, FileName::path(fileOf(input))))
            return Problem(ProblemCode::OutputIsInput).about(input);
    return std::nullopt;
}

OutputStream::OutputStream(const QString& name) : m_name(name), m_shownName(name)
{
    if (open() || m_problem)
        return;
    m_problem = failed(m_shownName, *m_file);
}

OutputStream::~OutputStream() = default;

bool OutputStream::open()
{
    if (m_name == QLatin1String("-")) {
        auto file = std::make_unique<QFile>();
        const bool opened = file->open(stdout, mode);
        m_shownName = QStringLiteral("standard output");
        m_file = std::move(file);
        return opened;
    }
    if (!FileName::isUtf8(m_name)) { // Qt would write a file with another name
        m_problem =
            Problem(ProblemCode::CannotWrite).about(m_name).because(Problem(ProblemCode::NameNotUtf8));
        return false;
    }
    const QFileInfo present(m_name);
    if (present.exists() && !present.isFile() && !present.isDir()) // cannot be replaced by a new file
        m_file = std::make_unique<QFile>(m_name);
    else
        m_file = std::make_unique<QSaveFile>(m_name);
    return m_file->open(mode);
}

bool OutputStream::write(const QByteArray& bytes)
{
    if (!m_problem && !writeAll(*m_file, bytes))
        m_problem = failed(m_shownName, *m_file);
    return !m_problem;
}

std::optional<Problem> OutputStream::finish()
{
    auto* const replacing = dynamic_cast<QSaveFile*>(m_file.get());
    if (!m_problem && replacing && !replacing->commit())
        m_problem = failed(m_shownName, *m_file);
    return m_problem;
}

std::optional<Problem> writeOutput(const QString& name, const QByteArray& bytes)
{
    OutputStream output(name);
    output.write(bytes);
    return output.finish();
}
