// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/points/PointFile.h"
#include "model/problems/ProblemText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cmath>
#include <string>

using KVGamut::LabPoint;
using testing::HasSubstr;

/// Files of points with a given content.
class PointFileTest : public testing::Test
{
protected:
    Result<PointSet> read(const QByteArray& text, const PointOptions& options = {}) const
    {
        QFile file(name());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(text), text.size());
        file.close();
        return readPointFile(name(), {}, options);
    }

    /// The points of a file; fails the test if there is a problem, or are other notes than @p notes.
    QList<MeasuredPoint> points(const QByteArray& text, const QList<ProblemCode>& notes = {},
                                const PointOptions& options = {}) const
    {
        const Result<PointSet> set = read(text, options);
        if (!set) {
            ADD_FAILURE() << ProblemText::english(set.error()).toStdString();
            return {};
        }
        QList<Problem::Code> expected, found;
        for (const ProblemCode code : notes)
            expected.append(code);
        for (const Problem& note : set->allNotes()) {
            EXPECT_EQ(note.subject, name());
            found.append(note.code);
        }
        EXPECT_EQ(found, expected) << text.toStdString();
        EXPECT_EQ(set->file, name());
        EXPECT_FALSE(set->partial);
        return set->points;
    }

    /// The points of a table without a heading.
    QList<MeasuredPoint> bare(const QByteArray& text) const
    {
        return points(text, {ProblemCode::NumbersTakenAsLab});
    }

    /// The English text of the note about what is left out, without the file name.
    std::string leftOut(const QByteArray& text) const
    {
        const Result<PointSet> set = read(text);
        EXPECT_TRUE(set && set->partial && set->note) << text.toStdString();
        return set && set->note ? ProblemText::english(set->note->about({})).toStdString() : std::string();
    }

    /// The English text of a problem or note, without the file name.
    std::string problem(const QByteArray& text, const PointOptions& options = {}) const
    {
        const Result<PointSet> set = read(text, options);
        if (set)
            return "none";
        EXPECT_EQ(set.error().subject, name());
        return ProblemText::english(set.error().about({})).toStdString();
    }

    QString name() const { return m_folder.filePath(QStringLiteral("проба 印刷")); }

private:
    QTemporaryDir m_folder;
};

inline void expectNear(const LabPoint& found, const LabPoint& expected, float tolerance)
{
    EXPECT_LT(std::hypot(found.L - expected.L, found.a - expected.a, found.b - expected.b), tolerance)
        << found.L << " " << found.a << " " << found.b << ", expected " << expected.L << " " << expected.a
        << " " << expected.b;
}

/// The formulas of CIE 15, 8.2.1, for the white X 96.42, Y 100, Z 82.49.
inline LabPoint cieLab(double X, double Y, double Z)
{
    const auto f = [](double t) {
        return t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0;
    };
    const double x = f(X / 96.42), y = f(Y / 100.0), z = f(Z / 82.49);
    return {float(116.0 * y - 16.0), float(500.0 * (x - y)), float(200.0 * (y - z))};
}

/// A file in CGATS.17 with one table.
inline QByteArray sheet(const QByteArray& columns, const QList<QByteArray>& rows,
                        const QByteArray& type = "CGATS.17")
{
    return type + "\n\nORIGINATOR \"a test\"\nAN_UNUSUAL_KEY \"x\"\nNUMBER_OF_FIELDS " +
           QByteArray::number(columns.split(' ').size()) + "\nBEGIN_DATA_FORMAT\n" + columns +
           "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + QByteArray::number(rows.size()) + "\nBEGIN_DATA\n" +
           rows.join('\n') + "\nEND_DATA\n";
}
