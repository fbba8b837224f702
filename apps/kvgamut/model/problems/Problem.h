// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <utility>
#include <variant>

/// What failed in the program itself; what fails in the engine or the viewer has a KVProblemCode. The comment
/// of each code names its arguments. Sentences are in ProblemText.cpp.
enum class ProblemCode
{
    Failed, ///< something that is about `subject` failed; the cause says why
};

/// A failure: a code, its arguments, what it is about and what caused it. Nothing parses words; they are
/// made from this value where it is shown (ProblemText.h).
struct Problem
{
    using Code = std::variant<KVProblemCode, ProblemCode>;

    Code code = KVProblemCode::Cancelled;
    QStringList arguments; ///< as the comment of the code says
    QString subject;       ///< the input or output that it is about, as it was named; may be empty
    std::shared_ptr<const Problem> cause; ///< shown after the sentence; may be null

    Problem() = default;
    Problem(const KVProblem& p) : code(p.code), arguments(p.arguments), subject(p.subject) {}
    Problem(Code c, QStringList args = {}, QString about = {})
        : code(c), arguments(std::move(args)), subject(std::move(about))
    {
    }

    /// The same failure, about @p name.
    Problem about(const QString& name) const
    {
        Problem result = *this;
        result.subject = name;
        return result;
    }
    /// The same failure, caused by @p reason.
    Problem because(const Problem& reason) const
    {
        Problem result = *this;
        result.cause = std::make_shared<const Problem>(reason);
        return result;
    }

    bool isCancelled() const { return code == Code(KVProblemCode::Cancelled); }
};
Q_DECLARE_METATYPE(Problem)
