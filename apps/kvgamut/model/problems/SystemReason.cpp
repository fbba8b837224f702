// SPDX-License-Identifier: Apache-2.0
#include "SystemReason.h"

#include "LastError.h"

#include <QtCore/QFileDevice>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <optional>
#include <system_error>

namespace {

std::optional<ProblemCode> codeOf(int error)
{
    switch (error) {
    case ENOENT:
        return ProblemCode::NoSuchFile;
    case EACCES:
    case EPERM:
        return ProblemCode::PermissionDenied;
    case EISDIR:
        return ProblemCode::IsDirectory;
    case ENOSPC:
        return ProblemCode::NoSpaceLeft;
    case EROFS:
        return ProblemCode::ReadOnlyFileSystem;
    case EMFILE:
    case ENFILE:
        return ProblemCode::TooManyOpenFiles;
    case EPIPE:
        return ProblemCode::BrokenPipe;
    case EBADF:
        return ProblemCode::InvalidDescriptor;
    default:
        return std::nullopt;
    }
}

} // namespace

Problem SystemReason::ofErrno(int error)
{
    if (const auto code = codeOf(error))
        return Problem(*code);
    return Problem(ProblemCode::OtherReason,
                   {QString::fromLocal8Bit(std::generic_category().message(error))});
}

Problem SystemReason::ofFile(const QFileDevice& file)
{
    const int error = lastError();
    // Qt itself rejects directories, without setting errno
    if (QFileInfo(file.fileName()).isDir())
        return Problem(ProblemCode::IsDirectory);
    if (const auto code = codeOf(error))
        return Problem(*code);
    return Problem(ProblemCode::OtherReason, {file.errorString()});
}
