// SPDX-License-Identifier: Apache-2.0
#include "Baseline.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>

namespace {

QString baselineFile(const QString& name)
{
    return QDir(qEnvironmentVariable("KV_BASELINES")).filePath(name + QStringLiteral(".png"));
}

} // namespace

QImage kvtest::baseline(const QString& name)
{
    return QImage(baselineFile(name));
}

void kvtest::expectBaseline(const QString& name, const QImage& actual, const PictureThreshold& threshold)
{
    ASSERT_TRUE(qEnvironmentVariableIsSet("KV_BASELINES")) << "run this through ctest";
    if (qEnvironmentVariableIsSet("KV_ACCEPT_BASELINES")) {
        ASSERT_TRUE(actual.save(baselineFile(name), nullptr, 0)); // as small as PNG can
    }
    const QImage expected = baseline(name);
    const PictureDifference difference = comparePictures(actual, expected);
    if (withinThreshold(difference, threshold))
        return;
    QDir folder(qEnvironmentVariable("KV_FAILED_PICTURES"));
    folder.mkpath(QStringLiteral("."));
    actual.save(folder.filePath(name + QStringLiteral("-actual.png")));
    expected.save(folder.filePath(name + QStringLiteral("-expected.png")));
    difference.picture.save(folder.filePath(name + QStringLiteral("-difference.png")));
    ADD_FAILURE() << qPrintable(name) << ": mean " << difference.mean << ", fraction " << difference.fraction
                  << "; see " << qPrintable(folder.path());
}
