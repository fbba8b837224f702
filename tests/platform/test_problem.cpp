// SPDX-License-Identifier: Apache-2.0
#include <platform/KVProblem.h>

#include <gtest/gtest.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QVariant>

#include <set>
#include <string>
#include <vector>

namespace {

std::vector<KVProblemCode> allCodes()
{
    const auto codes = QMetaEnum::fromType<KVProblemCode>();
    std::vector<KVProblemCode> all;
    for (int i = 0; i < codes.keyCount(); ++i)
        all.push_back(static_cast<KVProblemCode>(codes.value(i)));
    return all;
}

const char* nameOf(KVProblemCode code)
{
    return QMetaEnum::fromType<KVProblemCode>().valueToKey(static_cast<int>(code));
}

// The codes for which KVProblem.h documents an argument.
const std::set<KVProblemCode> withArgument{
    KVProblemCode::FileUnreadable,       KVProblemCode::UnusableProfile,
    KVProblemCode::DamagedTag,           KVProblemCode::UnknownIntent,
    KVProblemCode::UnknownSetting,       KVProblemCode::UnsupportedClass,
    KVProblemCode::NotADeviceSpace,      KVProblemCode::NotThreeChannels,
    KVProblemCode::UnknownDeviceSpace,   KVProblemCode::NoTransformBecause,
    KVProblemCode::UnknownSavedVersion,  KVProblemCode::OnlyOpenGLES,
    KVProblemCode::OpenGLTooOld,         KVProblemCode::OpenGLCoreOnly,
    KVProblemCode::OpenGLWithoutShaders, KVProblemCode::OpenGLWithoutFramebuffers,
    KVProblemCode::ShaderNotBuilt};

QStringList argumentsFor(KVProblemCode code)
{
    return withArgument.count(code) ? QStringList(QStringLiteral("XYZZY")) : QStringList();
}

} // namespace

TEST(Problem, hasADistinctSentenceForEveryCode)
{
    std::set<std::string> sentences;
    for (KVProblemCode code : allCodes()) {
        const std::string sentence = KVProblem::sentence(code);
        EXPECT_FALSE(sentence.empty()) << nameOf(code);
        EXPECT_TRUE(sentences.insert(sentence).second) << nameOf(code) << ": " << sentence;
    }
    EXPECT_GE(sentences.size(), 40u);
}

TEST(Problem, sentencesHavePlaceholdersWhereArgumentsAreDocumented)
{
    for (KVProblemCode code : allCodes()) {
        const QString sentence = QString::fromLatin1(KVProblem::sentence(code));
        EXPECT_EQ(sentence.contains(QLatin1String("%1")), withArgument.count(code) == 1) << nameOf(code);
        EXPECT_FALSE(sentence.contains(QLatin1String("%2"))) << nameOf(code);
    }
}

TEST(Problem, sentencesAreOneLineWithoutAFullStop)
{
    for (KVProblemCode code : allCodes()) {
        const QString sentence = QString::fromLatin1(KVProblem::sentence(code));
        EXPECT_FALSE(sentence.contains(QLatin1Char('\n'))) << nameOf(code);
        EXPECT_FALSE(sentence.endsWith(QLatin1Char('.'))) << nameOf(code);
        EXPECT_EQ(sentence, sentence.simplified()) << nameOf(code);
    }
}

TEST(Problem, textContainsItsArgument)
{
    for (KVProblemCode code : allCodes()) {
        const QString text = KVProblem{code, argumentsFor(code), {}}.text();
        EXPECT_EQ(text.contains(QLatin1String("XYZZY")), withArgument.count(code) == 1) << nameOf(code);
        EXPECT_FALSE(text.contains(QLatin1Char('%'))) << nameOf(code);
    }
}

TEST(Problem, textBeginsWithItsSubject)
{
    for (KVProblemCode code : allCodes()) {
        KVProblem problem{code, argumentsFor(code), {}};
        const QString words = problem.text();
        problem.subject = QStringLiteral("/tmp/100%1 sure.icc");
        EXPECT_EQ(problem.text(), QStringLiteral("'/tmp/100%1 sure.icc': ") + words) << nameOf(code);
    }
}

TEST(Problem, argumentsAreNotExpandedAgain)
{
    const KVProblem problem{KVProblemCode::UnknownSetting, {QStringLiteral("%1 %2 %n")}, {}};
    EXPECT_EQ(problem.text(), QStringLiteral("'%1 %2 %n' is not a setting"));
}

TEST(Problem, isEqualIfCodeArgumentsAndSubjectAreEqual)
{
    const KVProblem problem{KVProblemCode::DamagedTag, {QStringLiteral("A2B0")}, QStringLiteral("a.icc")};
    EXPECT_EQ(problem, KVProblem(problem));
    for (const KVProblem& other : {KVProblem{KVProblemCode::NoFaces, problem.arguments, problem.subject},
                                   KVProblem{problem.code, {QStringLiteral("A2B1")}, problem.subject},
                                   KVProblem{problem.code, problem.arguments, QStringLiteral("b.icc")}})
        EXPECT_NE(problem, other);
}

TEST(Problem, isReadableThroughTheMetaObject)
{
    const KVProblem problem{KVProblemCode::DamagedTag, {QStringLiteral("A2B0")}, QStringLiteral("a.icc")};
    const QMetaObject& meta = KVProblem::staticMetaObject;
    const auto read = [&](const char* name) {
        return meta.property(meta.indexOfProperty(name)).readOnGadget(&problem);
    };
    EXPECT_EQ(read("code").toInt(), static_cast<int>(KVProblemCode::DamagedTag));
    EXPECT_EQ(read("arguments").toStringList(), problem.arguments);
    EXPECT_EQ(read("subject").toString(), problem.subject);
    EXPECT_EQ(read("text").toString(), problem.text());
    EXPECT_EQ(QVariant::fromValue(problem).value<KVProblem>(), problem);
}
