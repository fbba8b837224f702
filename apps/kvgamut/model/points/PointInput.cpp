// SPDX-License-Identifier: Apache-2.0
#include "PointInput.h"

#include "PicturePoints.h"
#include "PointFile.h"
#include "model/inputs/InputGate.h"
#include "model/photos/PhotoFile.h"

namespace {
constexpr float readingShare = 0.2f; // of the progress
}

Result<PointSet> readPoints(const QString& file, const KVCompletionProtocolPtr& task,
                            const PointOptions& options)
{
    const auto kindOf = [](const QByteArray& start) {
        return PhotoFile::isPhoto(start) ? InputKind::Picture : InputKind::Points;
    };
    const Result<QByteArray> content = InputGate::read(file, kindOf, task, readingShare);
    if (!content)
        return failure(content.error());
    return (PhotoFile::isPhoto(*content) ? pointsOfPicture(*content, task)
                                         : pointsOfText(*content, task, options))
        .map([&file](PointSet set) { return ofFile(std::move(set), file); })
        .map_error([&file](const Problem& problem) { return problem.about(file); });
}
