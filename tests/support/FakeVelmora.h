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

/// A colour engine for tests, linked instead of the real one. It computes nothing, returns what the test
/// sets, and records its calls.
///
/// Bytes that begin with "profile" are a profile; anything else cannot be opened.
/// All functions may be called on any thread.
namespace fakevelmora {

using KVHull::Node;

/// The contents of a gamut of this engine.
struct Gamut
{
    QString name;
    QList<QList<Node>> faces;
    QList<QList<Node>> outline;
    QList<float> reference{0.0f, 0.0f, 0.0f};
    QList<QList<QList<float>>> primaries;
    float volume = 0.0f;
};

/// A node at a Lab position; with fewer than three values the node is incomplete.
Node node(const QList<float>& lab);
/// A tetrahedron between L* 0 and 100 with an outline and two primaries, identified by @p name and
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
    KVGamut::Adaptation adaptation = KVGamut::Adaptation::Full;
    bool hasProtocolPointer = false;
    KVCompletionProtocolPtr protocol; ///< null if none was passed, and always in initCalls()
    QString taskName;                 ///< of the protocol
    QThread* thread = nullptr;

    bool isCancelled() const { return protocol && protocol->isCancelled(); }
    /// Blocks until the computation is cancelled.
    void waitForCancel() const;
};

/// Restores all defaults and clears the records.
void reset();

/// Sets what init() calls on its thread. The function returns a gamut, or nullopt for a failure; it may block
/// and throw. Default: a tetrahedron named after the profile's bytes.
void onInit(std::function<std::optional<Gamut>(const InitCall&)> behaviour);
/// Sets the gamut that deserialize() restores. Default: the serialized one, or else an empty gamut without a
/// reference.
void onDeserialize(std::function<Gamut(const QHash<QString, QVariant>&)> behaviour);
/// Sets the result of KVHLab2RGB(). Default: a colour within 0..255 that differs for different Lab.
void onLab2Rgb(std::function<QList<float>(const QList<float>&)> behaviour);
/// The default result of KVHLab2RGB().
QList<float> defaultRgb(const QList<float>& lab);
/// Sets the pieces that computeRing() returns. Default: empty.
void onRing(std::function<QList<QList<QList<float>>>(const QList<QList<Node>>&)> behaviour);
/// Sets the result of isInside(). Default: false.
void onIsInside(std::function<bool(const QList<float>&)> behaviour);
/// Sets the eighteen floats that compare() returns. Default: 1..18.
void setComparison(const std::array<float, 18>& floats);

QList<InitCall> initCalls();
/// Each profile function called, in order: "path:<bytes of the path>", "data:<size>", "release:<bytes>".
QStringList profileCalls();
/// Number of profiles that are opened and not released.
int openProfiles();
QList<QHash<QString, QVariant>> deserialized();
/// Planes passed to computeRing().
QList<QList<float>> planes();
/// Points passed to isInside().
QList<QList<float>> insidePoints();
/// Names of the gamuts compared, "first/second".
QStringList comparisons();

/// A test fixture that resets the engine and checks that the test released all profiles.
class Case : public testing::Test
{
protected:
    void SetUp() override { reset(); }
    void TearDown() override
    {
        EXPECT_EQ(openProfiles(), 0) << "a profile was not released";
        // A worker releases its handle shortly after it has delivered its result.
        EXPECT_TRUE(QTest::qWaitFor([] { return KVCompletionProtocol::runningTasks().isEmpty(); }, 60000))
            << "a computation is still listed";
        reset();
    }
};

} // namespace fakevelmora
