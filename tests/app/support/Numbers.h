// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Program.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QVector3D>

/// Runs the commands that print numbers, without a display.
class NumbersTest : public kvtest::ProgramTest
{
protected:
    static kvtest::Answer run(const QStringList& arguments)
    {
        return kvtest::kvgamut(arguments, kvtest::withoutDisplay());
    }

    /// The rows that @p arguments print as JSON, with empty standard error.
    static QList<QJsonObject> json(const QStringList& arguments)
    {
        const kvtest::Answer answer = run(arguments + kvtest::words(QStringLiteral("--format json")));
        EXPECT_TRUE(kvtest::succeeded(answer)) << arguments.join(QLatin1Char(' ')).toStdString();
        return rowsOf(answer.output);
    }

    static QList<QJsonObject> rowsOf(const QByteArray& text)
    {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(text, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << text.toStdString();
        EXPECT_TRUE(document.isArray());
        QList<QJsonObject> rows;
        const QJsonArray array = document.array();
        for (const QJsonValue& value : array) {
            EXPECT_TRUE(value.isObject());
            rows.append(value.toObject());
        }
        return rows;
    }

    static double number(const QJsonObject& row, const char* key)
    {
        EXPECT_TRUE(row.value(QLatin1String(key)).isDouble()) << key;
        return row.value(QLatin1String(key)).toDouble();
    }
    static QString word(const QJsonObject& row, const char* key)
    {
        EXPECT_TRUE(row.value(QLatin1String(key)).isString()) << key;
        return row.value(QLatin1String(key)).toString();
    }
    static bool flag(const QJsonObject& row, const char* key)
    {
        EXPECT_TRUE(row.value(QLatin1String(key)).isBool()) << key;
        return row.value(QLatin1String(key)).toBool();
    }
    static QVector3D lab(const QJsonObject& row, const char* key)
    {
        const QJsonArray values = row.value(QLatin1String(key)).toArray();
        EXPECT_EQ(values.size(), 3) << key;
        return QVector3D(float(values[0].toDouble()), float(values[1].toDouble()),
                         float(values[2].toDouble()));
    }
    static void expectNear(const QVector3D& found, const QVector3D& expected, float tolerance)
    {
        EXPECT_LT((found - expected).length(), tolerance)
            << found.x() << " " << found.y() << " " << found.z() << ", expected " << expected.x() << " "
            << expected.y() << " " << expected.z();
    }

    /// The keys of a row, sorted.
    static QStringList keysOf(const QJsonObject& row) { return row.keys(); }

    const QString sRGB = QStringLiteral("sRGB");
    const QString grey = QStringLiteral(KVGAMUT_GREY_PROFILE);
    const QString cmyk = QStringLiteral(KVGAMUT_CMYK_PROFILE);
    const QString missing = QStringLiteral("/nowhere/missing.icc");
    const QString missingLine = QStringLiteral("kvgamut: '/nowhere/missing.icc': no such file");
};
