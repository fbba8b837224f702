// SPDX-License-Identifier: Apache-2.0
#include "model/inputs/FileName.h"
#include "model/inputs/InputGate.h"
#include "model/inputs/SystemInput.h"
#include "model/points/PointInput.h"
#include "model/points/PointReaders.h"
#include "model/problems/ProblemText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::array kinds{InputKind::Profile, InputKind::Picture, InputKind::SavedGamut,
                           InputKind::Points,  InputKind::Session, InputKind::Reference};

class InputGateTest : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }

    QString written(const QByteArray& bytes) const
    {
        QFile file(path("input"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }

    QString pipe() const
    {
        const QString name = path("pipe");
        EXPECT_EQ(mkfifo(QFile::encodeName(name).constData(), 0600), 0);
        return name;
    }

    /// The problem of a file of points with the content @p bytes, without the name of the file.
    std::string problemOfPoints(const QByteArray& bytes) const
    {
        const Result<PointSet> set = readPoints(written(bytes));
        return set ? "none" : ProblemText::english(set.error().about({})).toStdString();
    }

private:
    QTemporaryDir m_folder;
};

Problem::Code codeOf(const Result<QByteArray>& content)
{
    return content ? Problem::Code(ProblemCode::OtherReason) : content.error().code;
}

// --- What is opened -----------------------------------------------------------------------------------

TEST_F(InputGateTest, readsARegularFileByteForByte)
{
    const QByteArray bytes = QByteArray("a\0b\r\n", 5).repeated(50'000);
    EXPECT_EQ(InputGate::read(written(bytes), InputKind::Points).value(), bytes);
    EXPECT_EQ(InputGate::read(written({}), InputKind::Points).value(), QByteArray());
}

TEST_F(InputGateTest, readsAPipe)
{
    const QString name = pipe();
    const QByteArray bytes(300'000, 'x');
    std::thread writer([&] {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
    });
    EXPECT_EQ(InputGate::read(name, InputKind::Points).value(), bytes);
    writer.join();
}

TEST_F(InputGateTest, refusesDevicesAndFolders)
{
    for (const InputKind kind : kinds) {
        for (const char* device : {"/dev/zero", "/dev/full", "/dev/null"})
            EXPECT_EQ(codeOf(InputGate::read(QLatin1String(device), kind)),
                      Problem::Code(ProblemCode::NotAFileOrPipe));
        const Result<QByteArray> folder = InputGate::read(path(""), kind);
        EXPECT_EQ(codeOf(folder), Problem::Code(ProblemCode::CannotRead));
        EXPECT_EQ(folder.error().cause->code, Problem::Code(ProblemCode::IsDirectory));
        EXPECT_EQ(folder.error().subject, path(""));
    }
}

TEST_F(InputGateTest, findsNoFileWhoseNameContainsNul)
{
    const QString name = written("x") + QChar(0) + QStringLiteral(".csv");
    const Result<QByteArray> content = InputGate::read(name, InputKind::Points);
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error().cause->code, Problem::Code(ProblemCode::NoSuchFile));
}

TEST_F(InputGateTest, reportsAnUnknownKindAfterTheFirstBytes)
{
    QByteArray seen;
    const auto kindOf = [&seen](const QByteArray& start) -> std::optional<InputKind> {
        seen = start;
        return {};
    };
    EXPECT_EQ(codeOf(InputGate::read(written(QByteArray(100'000, 'x')), kindOf)),
              Problem::Code(ProblemCode::UnknownFormat));
    EXPECT_EQ(seen, QByteArray(InputGate::startSize, 'x'));
}

TEST_F(InputGateTest, readsAtAPlaceWithoutLeavingThePresentOne)
{
    const auto file = InputGate::openFile(written("0123456789"), InputKind::Photo);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->isSeekable());
    EXPECT_EQ(file->start(), "0123456789");
    QByteArray four(4, ' ');
    EXPECT_EQ(SystemInput::readAt(file->descriptor(), four.data(), 4, 5), 4);
    EXPECT_EQ(four, "5678");
    EXPECT_EQ(SystemInput::readAt(file->descriptor(), four.data(), 4, 10), 0);
    EXPECT_EQ(SystemInput::position(file->descriptor()), 0);
    EXPECT_EQ(SystemInput::read(file->descriptor(), four.data(), 4, -1), 4);
    EXPECT_EQ(four, "0123");
}

TEST_F(InputGateTest, doesNotWaitLongerThanItWasToldForAPipe)
{
    const QString name = pipe();
    const int writer = ::open(QFile::encodeName(name).constData(), O_RDWR | O_CLOEXEC);
    const int reader = SystemInput::open(FileName::path(name));
    ASSERT_GE(reader, 0);
    char letter = 0;
    EXPECT_EQ(SystemInput::read(reader, &letter, 1, 1), -1);
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_EQ(::write(writer, "x", 1), 1);
    EXPECT_EQ(SystemInput::read(reader, &letter, 1, 1), 1);
    ::close(writer);
    EXPECT_EQ(SystemInput::read(reader, &letter, 1, 1), 0);
    SystemInput::close(reader);
}

// --- Limits -------------------------------------------------------------------------------------------

TEST_F(InputGateTest, refusesATooLargeFileWithoutReadingIt)
{
    const QString name = written("start");
    QFile file(name);
    ASSERT_TRUE(file.resize(qint64(1) << 42)); // four terabytes of zeros, which take no space
    for (const InputKind kind : kinds) {
        const Result<QByteArray> content = InputGate::read(name, kind);
        ASSERT_EQ(codeOf(content), Problem::Code(ProblemCode::InputTooLarge));
        EXPECT_EQ(content.error().arguments,
                  QStringList(QString::number(InputLimits::maxBytes(kind) / 1024 / 1024)));
    }
}

TEST_F(InputGateTest, acceptsAFileOfTheLargestSize)
{
    const QString name = written("start");
    QFile file(name);
    const qint64 max = InputLimits::maxBytes(InputKind::Session);
    ASSERT_TRUE(file.resize(max));
    EXPECT_EQ(InputGate::read(name, InputKind::Session).value().size(), max);
    ASSERT_TRUE(file.resize(max + 1));
    EXPECT_EQ(codeOf(InputGate::read(name, InputKind::Session)), Problem::Code(ProblemCode::InputTooLarge));
}

TEST_F(InputGateTest, takesLittleMoreThanTheLimitFromAnEndlessPipe)
{
    std::signal(SIGPIPE, SIG_IGN);
    const QString name = pipe();
    std::promise<qint64> taken;
    std::thread writer([&] {
        const int file = ::open(QFile::encodeName(name).constData(), O_WRONLY | O_CLOEXEC);
        const QByteArray block(1 << 16, 'x');
        qint64 sum = 0;
        for (ssize_t count = 0; count >= 0; sum += count)
            count = ::write(file, block.constData(), static_cast<std::size_t>(block.size()));
        ::close(file);
        taken.set_value(sum);
    });
    EXPECT_EQ(codeOf(InputGate::read(name, InputKind::Session)), Problem::Code(ProblemCode::InputTooLarge));
    writer.join();
    constexpr qint64 inThePipe = 1 << 21;
    EXPECT_LE(taken.get_future().get(), InputLimits::maxBytes(InputKind::Session) + inThePipe);
}

// --- Cancellation -------------------------------------------------------------------------------------

TEST_F(InputGateTest, endsAfterACancellationThoughAPipeGivesNothing)
{
    const QString name = pipe(); // nobody writes to it
    const auto task = KVCompletionProtocol::createTask(name);
    auto reading =
        std::async(std::launch::async, [&] { return InputGate::read(name, InputKind::Points, task); });
    task->cancel();
    EXPECT_EQ(codeOf(reading.get()), Problem::Code(KVProblemCode::Cancelled));
}

TEST_F(InputGateTest, readsNothingAfterACancellation)
{
    const auto task = KVCompletionProtocol::createTask(QString());
    task->cancel();
    EXPECT_EQ(codeOf(InputGate::read(written("x"), InputKind::Points, task)),
              Problem::Code(KVProblemCode::Cancelled));
}

TEST_F(InputGateTest, reportsItsShareOfTheProgress)
{
    const auto task = KVCompletionProtocol::createTask(QString());
    EXPECT_TRUE(InputGate::read(written(QByteArray(1000, 'x')), InputKind::Points, task, 0.25f));
    EXPECT_EQ(task->progress(), 0.25f);
}

TEST_F(InputGateTest, stopsReadersAfterACancellation)
{
    const auto task = KVCompletionProtocol::createTask(QString());
    task->cancel();
    const QByteArray sheet =
        "BEGIN_DATA_FORMAT LAB_L LAB_A LAB_B END_DATA_FORMAT\nBEGIN_DATA 1 2 3\nEND_DATA\n";
    for (const auto& set :
         {PointReaders::readCsv("1,2,3", {}, task), PointReaders::readCgats(sheet, {}, task),
          PointReaders::readCxf("<CxF/>", {}, task)})
        EXPECT_TRUE(!set && set.error().isCancelled());
}

// --- Text ---------------------------------------------------------------------------------------------

TEST_F(InputGateTest, readsTextInUtf8AndUtf16)
{
    EXPECT_EQ(problemOfPoints(QByteArray(1000, '\0')), "not a text file");
    EXPECT_EQ(problemOfPoints(QByteArray("1,2,3\n4,5,\0", 11)), "not a text file");
    const QString table = QStringLiteral("name;L;a;b\né;1;2;3\n");
    const auto utf16 =
        QByteArray("\xFF\xFE") + QByteArray(reinterpret_cast<const char*>(table.utf16()), 2 * table.size());
    EXPECT_EQ(readPoints(written(utf16)).value().points.value(0).name, QStringLiteral("é"));
}

TEST_F(InputGateTest, refusesTablesBeyondTheLimits)
{
    EXPECT_EQ(problemOfPoints("1,2,3\n" + QByteArray(65'537, '1')),
              "line 2: longer than 65536 characters, the limit");
    EXPECT_EQ(problemOfPoints("L,a,b" + QByteArray(",x").repeated(998)),
              "line 1: more than 1000 columns, the limit of a table");
    EXPECT_EQ(problemOfPoints("BEGIN_DATA_FORMAT LAB_L LAB_A LAB_B" + QByteArray(" x").repeated(998) +
                              "\nBEGIN_DATA"),
              "line 1: more than 1000 columns, the limit of a table");
    EXPECT_EQ(problemOfPoints("BEGIN_DATA_FORMAT LAB_L LAB_A LAB_B END_DATA_FORMAT\nBEGIN_DATA 1 2 " +
                              QByteArray(65'537, '3') + " END_DATA"),
              "line 2: longer than 65536 characters, the limit");
}

TEST_F(InputGateTest, acceptsManyCgatsKeywords)
{
    QByteArray text = "CGATS.17\n";
    for (int i = 0; i < 40'000; ++i)
        text += "KEYWORD_" + QByteArray::number(i) + " \"x\"\n";
    text += "BEGIN_DATA_FORMAT LAB_L LAB_A LAB_B END_DATA_FORMAT\nBEGIN_DATA\n1 2 3\nEND_DATA\n";
    EXPECT_EQ(problemOfPoints(text), "none");
}

TEST_F(InputGateTest, refusesXmlBeyondTheLimits)
{
    const auto attributes = [](int count) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += " a" + QByteArray::number(i) + "='>'";
        return text;
    };
    EXPECT_EQ(problemOfPoints("<CxF>\n<x" + attributes(50'000) + "/></CxF>"),
              "line 2: more than 100 attributes, the limit of an element of CxF");
    EXPECT_EQ(problemOfPoints("<CxF>\n<x" + attributes(100) + "/></CxF>"), "the file contains no positions");
    EXPECT_EQ(problemOfPoints("<CxF>" + QByteArray("\n<x>").repeated(100)),
              "line 101: more than 100 nested elements, the limit of CxF");
    EXPECT_EQ(problemOfPoints("<CxF>" + QByteArray("<x><y/></x>").repeated(1000) + "</CxF>"),
              "the file contains no positions");
    EXPECT_EQ(problemOfPoints("<?xml version='1.0'?>\n<!DOCTYPE CxF [<!ENTITY a 'b'>]><CxF/>"),
              "line 2: the XML declares a document type, which CxF does not have");
    EXPECT_EQ(problemOfPoints("<!-- <x '>--><CxF><![CDATA[ <' ]]></CxF>"), "the file contains no positions");
}

TEST_F(InputGateTest, refusesTooManyPoints)
{
    PointSet set;
    set.points.resize(InputLimits::maxPoints - 1);
    EXPECT_TRUE(PointReaders::add(set, {}, {}));
    const Result<void> added = PointReaders::add(set, {}, {});
    ASSERT_FALSE(added);
    EXPECT_EQ(added.error().code, Problem::Code(ProblemCode::TooManyPoints));
    EXPECT_EQ(set.points.size(), InputLimits::maxPoints);
}

TEST_F(InputGateTest, cutsLongNames)
{
    PointSet set;
    MeasuredPoint point;
    point.name = QString(5000, QLatin1Char('x'));
    ASSERT_TRUE(PointReaders::add(set, point, {}));
    EXPECT_EQ(set.points[0].name.size(), InputLimits::maxNameLength);
}

// --- The document -------------------------------------------------------------------------------------

TEST(InputLimitsDocument, statesEachLimitWithItsSentence)
{
    QFile file(QStringLiteral(KVGAMUT_LIMITS));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QString table;
    for (const InputLimits::Stated& limit : InputLimits::all())
        table += QStringLiteral("| %1 | %2 | %3 |\n")
                     .arg(limit.what, limit.limit, ProblemText::english(limit.problem));
    EXPECT_TRUE(text.contains(QStringLiteral("| --- | --- | --- |\n") + table + QLatin1Char('\n')))
        << "expected in docs/LIMITS.md:\n"
        << table.toStdString();
}

// --- Names --------------------------------------------------------------------------------------------

TEST(FileNames, keepEveryByte)
{
    QByteArray every;
    for (int first = 1; first < 256; ++first)
        every += QByteArray(1, static_cast<char>(first)) + '\x80' + static_cast<char>(first);
    for (const QByteArray& bytes :
         {every, QByteArray("\xE9t\xE9"), QByteArray("\xC3\xA9 \xF0\x9F\x8E\xA8"), QByteArray("\xED\xB3\xBF"),
          QByteArray("\xC0\x80"), QByteArray("\xF0\x9F"), QByteArray()})
        EXPECT_EQ(FileName::encoded(FileName::decoded(bytes)), bytes) << bytes.toHex().constData();
}

TEST(FileNames, areOrdinaryTextsInUtf8)
{
    EXPECT_EQ(FileName::decoded("a/\xC3\xA9 \xF0\x9F\x8E\xA8"), QStringLiteral("a/é 🎨"));
    EXPECT_TRUE(FileName::isUtf8(QStringLiteral("a/é 🎨")));
    EXPECT_FALSE(FileName::isUtf8(FileName::decoded("caf\xE9")));
}

TEST(FileNames, haveTheirBytesAsPaths)
{
    EXPECT_EQ(FileName::path(FileName::decoded("a/caf\xE9")).native(), "a/caf\xE9");
    EXPECT_EQ(FileName::path(QStringLiteral("é 🎨")).native(), "\xC3\xA9 \xF0\x9F\x8E\xA8");
}

TEST_F(InputGateTest, findsFilesFoldersAndPipesByTheirWholeName)
{
    EXPECT_TRUE(FileName::exists(written("x")));
    EXPECT_TRUE(FileName::exists(pipe()));
    EXPECT_TRUE(FileName::exists(path("")));
    EXPECT_FALSE(FileName::exists(path("missing")));
    EXPECT_FALSE(FileName::exists(path("input") + QStringLiteral("/x")));
    EXPECT_FALSE(FileName::exists(path("input") + QChar(0)));
    EXPECT_FALSE(FileName::exists({}));
    ASSERT_TRUE(QFile::link(path("missing"), path("link")));
    EXPECT_FALSE(FileName::exists(path("link")));
}

TEST_F(InputGateTest, readsAFileWhoseNameIsNotUtf8)
{
    const QByteArray name = QFile::encodeName(path("")) + "/caf\xE9";
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(file, 0);
    EXPECT_EQ(::write(file, "1,2,3", 5), 5);
    ::close(file);
    EXPECT_EQ(InputGate::read(FileName::decoded(name), InputKind::Points).value(), "1,2,3");
    ::unlink(name.constData()); // QTemporaryDir cannot
}

} // namespace
