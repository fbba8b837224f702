// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtTest/QTest>

#include <array>
#include <functional>
#include <optional>

/// A colour engine for tests, linked in place of the real one: it computes nothing, does what the
/// case says and keeps a record of what it was asked.
///
/// A profile is bytes that begin with "profile"; everything else cannot be opened.
/// All of it may be used from any thread.
namespace fakevelmora {

using KVHull::Node;

/// What a gamut of this engine consists of.
struct Gamut
{
    QString name;
    QList<QList<Node>> faces;
    QList<QList<Node>> outline;
    QList<float> reference{0.0f, 0.0f, 0.0f};
    QList<QList<QList<float>>> primaries;
    float volume = 0.0f;
};

/// A node at a Lab position; fewer than three values make an incomplete one.
Node node(const QList<float>& lab);
/// A tetrahedron between L* 0 and 100 with an outline and two primaries, told apart by @p name and
/// @p volume.
Gamut tetrahedron(const QString& name, float volume = 1234.5f);

/// The arguments of one GamutObject::init.
struct InitCall
{
    QByteArray profile;
    int intent = -1;
    bool blackPointCompensation = false;
    bool withDecoration = false;
    float maxEdge = 0.0f;
    int gridPoints = 0;
    int refinements = 0;
    bool hasProtocolPointer = false;
    KVCompletionProtocolPtr protocol; ///< null where nobody watches, and in what initCalls() gives
    QString taskName;                 ///< of the protocol
    QThread* thread = nullptr;

    bool isCancelled() const { return protocol && protocol->isCancelled(); }
    /// Stays until the computation is cancelled.
    void waitForCancel() const;
};

/// Puts everything back to its defaults and forgets what was recorded.
void reset();

/// What init does, on the thread that calls it: a gamut, or nothing for a failure; it may block and
/// throw. Default: a tetrahedron named after the profile's bytes.
void onInit(std::function<std::optional<Gamut>(const InitCall&)> behaviour);
/// What deserialize fills the gamut with. Default: what serialize gave, else nothing with no reference.
void onDeserialize(std::function<Gamut(const QHash<QString, QVariant>&)> behaviour);
/// The answer of KVHLab2RGB. Default: a colour within 0..255 that differs for different Lab.
void onLab2Rgb(std::function<QList<float>(const QList<float>&)> behaviour);
/// The answer of the default KVHLab2RGB.
QList<float> defaultRgb(const QList<float>& lab);
/// The pieces that computeRing gives. Default: none.
void onRing(std::function<QList<QList<QList<float>>>(const QList<QList<Node>>&)> behaviour);
/// The answer of isInside. Default: false.
void onIsInside(std::function<bool(const QList<float>&)> behaviour);
/// The eighteen floats that compare answers. Default: 1..18.
void setComparison(const std::array<float, 18>& floats);

QList<InitCall> initCalls();
/// Each profile function called, in order: "path:<bytes of the path>", "data:<size>", "release:<bytes>".
QStringList profileCalls();
/// Profiles opened and not released.
int openProfiles();
QList<QHash<QString, QVariant>> deserialized();
/// Planes given to computeRing.
QList<QList<float>> planes();
/// Points given to isInside.
QList<QList<float>> insidePoints();
/// Names of the gamuts compared, "first/second".
QStringList comparisons();

/// A case that begins with a fresh engine and leaves no profile open behind it.
class Case : public testing::Test
{
protected:
    void SetUp() override { reset(); }
    void TearDown() override
    {
        EXPECT_EQ(openProfiles(), 0) << "a profile was not released";
        // A worker lets go of its handle a moment after it has delivered its result.
        EXPECT_TRUE(QTest::qWaitFor([] { return KVCompletionProtocol::runningTasks().isEmpty(); }, 60000))
            << "a computation is still listed";
        reset();
    }
};

} // namespace fakevelmora
