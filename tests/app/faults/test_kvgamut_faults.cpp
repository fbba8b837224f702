// SPDX-License-Identifier: Apache-2.0
// Whatever fails while the program runs, it ends with one of its exit codes and one line that says what
// failed. An output is the old one or the whole new one, and nothing is left behind. FailingCalls.cpp makes
// calls fail.
#include "app/support/Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <array>
#include <csignal>
#include <cstring>
#include <functional>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>

using namespace kvtest;

namespace {

constexpr int maxSeconds = 120; // a run takes less than a second; only hangs take longer

/// How many calls of each kind fail in each case, spread over all of them. The lane "faults" sets more.
int positionsPerCase()
{
    bool given = false;
    const int positions = qEnvironmentVariableIntValue("KV_FAULT_POSITIONS", &given);
    return given ? positions : 8;
}

struct Ended
{
    int exitCode = -1;
    int signal = 0;
    bool hung = false;
    QByteArray errors;
};

struct Case
{
    const char* name;
    const char* arguments;        ///< OUT stands for the output, IN for the folder of the inputs
    const char* output = nullptr; ///< name of the output; null: standard output
    /// Whether allocations fail. Otherwise libraries are in the way: the drivers of OpenGL and Qt's
    /// conversion of pictures crash in their own code, and those that draw text draw without it and report
    /// nothing.
    bool allocations = true;
    bool draws = false; ///< with OpenGL
};

void PrintTo(const Case& tried, std::ostream* out)
{
    *out << tried.name;
}

class FaultTest : public ProgramTest, public testing::WithParamInterface<Case>
{
protected:
    void SetUp() override
    {
        if (sanitized)
            GTEST_SKIP() << "sanitizers replace the functions that should fail";
        ASSERT_TRUE(QDir(path(QString())).mkdir(QStringLiteral("in")));
        write(input(QStringLiteral("points.csv")), "name,L,a,b\none,50,10,20\ntwo,60,-120,90\n");
        write(input(QStringLiteral("points.cgats")),
              "CGATS.17\nNUMBER_OF_FIELDS 3\nBEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
              "NUMBER_OF_SETS 1\nBEGIN_DATA\n50 0 0\nEND_DATA\n");
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::red);
        ASSERT_TRUE(picture.save(input(QStringLiteral("photo.png"))));
        if (GetParam().output) {
            m_whole = runWith({}).output; // of a run without faults
            ASSERT_FALSE(m_whole.isEmpty());
        }
    }

    QString input(const QString& name) const { return path(QStringLiteral("in/") + name); }
    QString output() const { return path(QStringLiteral("out/") + QString::fromLatin1(GetParam().output)); }

    struct Run
    {
        Ended ended;
        QByteArray output;
        std::array<qint64, 4> calls{};
    };

    /// Runs the case with KV_FAULT set to @p fault, after @p prepare in the new process.
    Run runWith(
        const QByteArray& fault, const std::function<void()>& prepare = [] {})
    {
        QDir(path(QStringLiteral("out"))).removeRecursively();
        QDir(path(QString())).mkdir(QStringLiteral("out"));
        const bool isFirst = m_whole.isEmpty();
        if (GetParam().output && !isFirst)
            write(output(), "old");

        QProcessEnvironment env = withoutDisplay();
        env.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(KV_FAILING_CALLS));
        env.insert(QStringLiteral("KV_FAULT_COUNT"), path(QStringLiteral("calls")));
        env.insert(QStringLiteral("KV_FAULT"), QString::fromLatin1(fault));
        if (m_threadLimit)
            env.insert(QStringLiteral("KV_THREAD_LIMIT"), QString::number(*m_threadLimit));
        QFile::remove(path(QStringLiteral("calls")));

        Run run;
        run.ended = start(env, prepare);
        if (GetParam().output)
            run.output = contents(output());
        const QByteArray calls = contents(path(QStringLiteral("calls")));
        if (calls.size() == sizeof run.calls)
            std::memcpy(run.calls.data(), calls.constData(), sizeof run.calls);
        return run;
    }

    /// What is wrong with the end of a run in which a call failed; empty if nothing is.
    QString faultsOf(const Run& run, int expectedSignal = 0) const
    {
        const Ended& ended = run.ended;
        QStringList faults;
        if (ended.hung)
            faults += QStringLiteral("it hangs");
        if (ended.signal != 0 && ended.signal != expectedSignal)
            faults += QStringLiteral("it ended with signal %1").arg(ended.signal);
        if (ended.signal == 0 && (ended.exitCode < 0 || ended.exitCode > 5))
            faults += QStringLiteral("it ended with exit code %1").arg(ended.exitCode);
        if (ended.signal == 0 && ended.exitCode != 0 && !ended.errors.contains("kvgamut: "))
            faults += QStringLiteral("exit code %1 without a line").arg(ended.exitCode);
        if (GetParam().output && run.output != "old" && run.output != m_whole)
            faults += QStringLiteral("the output is damaged");
        if (GetParam().output && ended.signal == 0 && ended.exitCode == 0 && run.output != m_whole)
            faults += QStringLiteral("exit code 0 without the output");
        const QStringList left = QDir(path(QStringLiteral("out")))
                                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        if (left.size() > (GetParam().output ? 1 : 0))
            faults += QStringLiteral("files are left: ") + left.join(u' ');
        if (m_survivors > 0)
            faults += QStringLiteral("%1 processes are left").arg(m_survivors);
        return faults.join(QStringLiteral(", "));
    }

    void expectSound(const QByteArray& fault, int expectedSignal = 0)
    {
        const Run run = runWith(fault);
        const QString faults = faultsOf(run, expectedSignal);
        EXPECT_TRUE(faults.isEmpty()) << fault.toStdString() << ": " << qPrintable(faults) << '\n'
                                      << run.ended.errors.right(400).toStdString();
    }

    /// Makes each of some calls of @p kind fail, with @p after = "+" all later ones, too.
    void expectSoundForCalls(const QByteArray& kind, qint64 calls, int expectedSignal = 0,
                             const QByteArray& after = {})
    {
        const qint64 positions = std::min<qint64>(calls, positionsPerCase());
        for (qint64 i = 0; i < positions; ++i) {
            const qint64 call = 1 + i * calls / positions + (i * 7) % std::max<qint64>(1, calls / positions);
            expectSound(kind + ':' + QByteArray::number(call) + after, expectedSignal);
        }
    }

    QByteArray m_whole;               ///< the output of a run without faults
    std::optional<int> m_threadLimit; ///< how many threads can live beside the first

private:
    Ended start(const QProcessEnvironment& env, const std::function<void()>& prepare)
    {
        QStringList arguments = words(GetParam().arguments);
        for (QString& argument : arguments) {
            argument.replace(QStringLiteral("IN/"), path(QStringLiteral("in/")));
            if (argument == QLatin1String("OUT"))
                argument = output();
        }
        QProcess process;
        process.setProcessEnvironment(env);
        process.setChildProcessModifier([&prepare] {
            setsid(); // processes that it leaves have its session
            prepare();
        });
        process.start(binary(), arguments);
        EXPECT_TRUE(process.waitForStarted(-1));
        const qint64 session = process.processId();
        Ended ended;
        ended.hung = !process.waitForFinished(maxSeconds * 1000);
        if (ended.hung) {
            process.kill();
            process.waitForFinished();
        }
        ended.errors = process.readAllStandardError();
        if (process.exitStatus() == QProcess::CrashExit)
            ended.signal = process.exitCode();
        else
            ended.exitCode = process.exitCode();
        m_survivors = processesOf(session);
        return ended;
    }

    /// The number of running processes in a session.
    static int processesOf(qint64 session)
    {
        int count = 0;
        const QDir processes(QStringLiteral("/proc"));
        for (const QString& name : processes.entryList(QDir::Dirs)) {
            const QByteArray status = contents(processes.filePath(name + QStringLiteral("/stat")));
            const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
            count += session > 0 && fields.value(3).toLongLong() == session && fields.value(0) != "Z";
        }
        return count;
    }

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    static constexpr bool sanitized = true;
#else
    static constexpr bool sanitized = false;
#endif

    int m_survivors = 0;
};

TEST_P(FaultTest, survivesAllocationsThatFail)
{
    if (!GetParam().allocations)
        return;
    const qint64 calls = runWith({}).calls[0];
    ASSERT_GT(calls, 0);
    expectSoundForCalls("alloc", calls);
}

TEST_P(FaultTest, survivesMemoryThatRunsOutForGood)
{
    if (!GetParam().allocations)
        return;
    expectSoundForCalls("alloc", runWith({}).calls[0], 0, "+");
}

TEST_P(FaultTest, endsWhenFontsFindNoMemory)
{
    // Libraries that draw text may crash without memory, but nothing may repeat itself for ever.
    if (GetParam().allocations || GetParam().draws || !GetParam().output)
        return;
    const qint64 calls = runWith({}).calls[0];
    const qint64 positions = std::max(24, positionsPerCase());
    for (qint64 i = 1; i <= positions; ++i) {
        const QByteArray fault = "alloc:" + QByteArray::number(i * calls / (positions + 1)) + '+';
        const Run run = runWith(fault);
        EXPECT_FALSE(run.ended.hung) << fault.toStdString();
        if (run.ended.hung)
            break;
    }
}

TEST_P(FaultTest, survivesThreadsThatCannotBeStarted)
{
    expectSound("thread:1+");
    if (!GetParam().draws) // Mesa waits for a thread that fails although as many could be started before
        expectSoundForCalls("thread", std::max<qint64>(1, runWith({}).calls[1]));
}

TEST_P(FaultTest, worksWithAnyLimitOfThreads)
{
    m_whole = runWith({}).output;
    for (int limit = 0; limit <= 8; ++limit) {
        m_threadLimit = limit;
        const Run run = runWith({});
        EXPECT_EQ(faultsOf(run), QString()) << limit << run.ended.errors.right(400).toStdString();
        EXPECT_EQ(run.ended.exitCode, Done) << limit;
        EXPECT_EQ(run.output, m_whole) << limit;
    }
}

TEST_P(FaultTest, survivesReadsAndWritesThatFail)
{
    const auto calls = runWith({}).calls;
    expectSoundForCalls("read", calls[2]);
    expectSoundForCalls("write", calls[3]);
    expectSound("write:1+");
}

TEST_P(FaultTest, leavesNothingBehindWhenItIsKilled)
{
    const qint64 calls = runWith({}).calls[0];
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGKILL})
        expectSoundForCalls(QByteArray::number(signal), calls, signal);
}

TEST_P(FaultTest, survivesALimitOfItsAddressSpace)
{
    if (!GetParam().allocations)
        return;
    for (const rlim_t megabytes : {260, 300, 400, 600}) { // with less the libraries cannot be loaded
        const Run run = runWith({}, [megabytes] {
            const rlimit limit{megabytes << 20, megabytes << 20};
            setrlimit(RLIMIT_AS, &limit);
        });
        const QString faults = faultsOf(run);
        EXPECT_TRUE(faults.isEmpty()) << megabytes << " MiB: " << qPrintable(faults) << '\n'
                                      << run.ended.errors.right(400).toStdString();
    }
}

TEST_P(FaultTest, neverWritesIntoAFileInPlaceOfAClosedStandardFile)
{
    for (int closed = 1; closed < 8; ++closed) { // a bit for each of the three
        const Run run = runWith({}, [closed] {
            for (int file = STDIN_FILENO; file <= STDERR_FILENO; ++file)
                if (closed & (1 << file))
                    close(file);
        });
        const bool wroteToClosed = !GetParam().output && (closed & 2);
        EXPECT_EQ(run.ended.exitCode, wroteToClosed ? BadOutput : Done) << closed;
        EXPECT_EQ(run.output, m_whole) << closed;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Commands, FaultTest,
    testing::Values(Case{"info", "info sRGB"}, Case{"volume", "volume sRGB AdobeRGB --grid 9"},
                    Case{"compare", "compare sRGB AdobeRGB --grid 9 --format json"},
                    Case{"insidePoints", "inside sRGB --grid 9 --points IN/points.csv --format csv"},
                    Case{"insideMeasurement", "inside sRGB --grid 9 --points IN/points.cgats"},
                    Case{"insidePhoto", "inside sRGB --grid 9 --points IN/photo.png", nullptr, false},
                    Case{"slice", "slice sRGB --grid 9 --lightness 50 -o OUT", "cut.svg", false},
                    Case{"slicePdf", "slice sRGB --grid 9 --lightness 50 -o OUT", "cut.pdf", false},
                    Case{"export", "export sRGB --grid 9 -o OUT", "gamut.ply"},
                    Case{"render", "render sRGB --grid 9 --size 640x480 -o OUT", "picture.png", false, true}),
    [](const testing::TestParamInfo<Case>& tried) { return std::string(tried.param.name); });

} // namespace
