// SPDX-License-Identifier: Apache-2.0
#include "InputGate.h"

#include "FileName.h"
#include "SystemInput.h"
#include "model/problems/SystemReason.h"

#include <QtCore/QStringConverter>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

using InputGate::KindOf;

constexpr int pollMs = 20; // between two checks for a cancellation
constexpr qint64 chunkSize = qint64(1) << 16;

/// Owns a file descriptor.
class Descriptor
{
public:
    explicit Descriptor(int file) : m_file(file) {}
    ~Descriptor()
    {
        if (m_file >= 0)
            SystemInput::close(m_file);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)

    int get() const { return m_file; }
    const int* address() const { return &m_file; }

private:
    const int m_file;
};

tl::unexpected<Problem> systemFailure()
{
    return failure(Problem(ProblemCode::CannotRead).because(SystemReason::ofErrno(errno)));
}

tl::unexpected<Problem> tooLarge(qint64 maxSize)
{
    return failure(ProblemCode::InputTooLarge, {QString::number(maxSize >> 20)});
}

/// As problems name it.
QString shownName(const QString& name)
{
    return name == QLatin1String("-") ? QStringLiteral("standard input") : name;
}

/// Opens without waiting for the writer of a pipe.
int opened(const QString& name)
{
    if (name == QLatin1String("-"))
        return SystemInput::openStandardInput();
    if (name.contains(QChar(0))) { // the system would open the file that is named by what is before it
        errno = ENOENT;
        return -1;
    }
    return SystemInput::open(FileName::path(name));
}

/// The size of a regular file, 0 for a pipe, a socket or a terminal; fails for everything else.
Result<qint64> sizeOf(int file)
{
    const auto facts = SystemInput::factsOf(file);
    if (!facts)
        return systemFailure();
    switch (facts->kind) {
    case SystemInput::Kind::File:
        return facts->size;
    case SystemInput::Kind::Stream:
        return 0;
    case SystemInput::Kind::Folder:
        return failure(Problem(ProblemCode::CannotRead).because(Problem(ProblemCode::IsDirectory)));
    case SystemInput::Kind::Other:
        break;
    }
    return failure(ProblemCode::NotAFileOrPipe);
}

/// Reads one file; the check for a cancellation is passed in.
class Reading
{
public:
    Reading(const KindOf& kindOf, const KVCompletionProtocolPtr& task, float share)
        : m_kindOf(kindOf), m_task(task), m_share(share)
    {
    }

    Result<QByteArray> content(const QString& name)
    {
        const Descriptor file(opened(name));
        if (file.get() < 0)
            return systemFailure();
        const Result<qint64> size = sizeOf(file.get());
        if (!size)
            return failure(size.error());
        return readUpTo(file.get(), InputGate::startSize)
            .and_then([this] { return chooseLimit(); })
            .and_then([&]() -> Result<void> {
                return *size > m_maxSize ? Result<void>(tooLarge(m_maxSize)) : prepare(*size);
            })
            .and_then([&] { return readUpTo(file.get(), m_maxSize + 1); })
            .and_then([this]() -> Result<void> {
                return m_bytes.size() > m_maxSize ? Result<void>(tooLarge(m_maxSize)) : Result<void>();
            })
            .map([this] { return std::move(m_bytes); });
    }

private:
    Result<void> chooseLimit()
    {
        const auto kind = m_kindOf(m_bytes);
        if (!kind)
            return failure(ProblemCode::UnknownFormat);
        m_maxSize = InputLimits::maxBytes(*kind);
        return {};
    }

    Result<void> prepare(qint64 size)
    {
        m_bytes.reserve(size + 1);
        m_expected = size;
        return {};
    }

    /// Reads until there are @p count bytes, or to the end of the file.
    Result<void> readUpTo(int file, qint64 count)
    {
        while (m_bytes.size() < count) {
            const Result<qint64> more = readChunk(file, std::min(chunkSize, count - m_bytes.size()));
            if (!more)
                return failure(more.error());
            if (*more == 0)
                return {};
            if (m_task && m_expected > 0)
                m_task->setProgress(m_share * static_cast<float>(m_bytes.size()) /
                                    static_cast<float>(m_expected));
        }
        return {};
    }

    /// @return the number of bytes read, 0 at the end of the file
    Result<qint64> readChunk(int file, qint64 count)
    {
        const qsizetype before = m_bytes.size();
        for (;;) {
            if (InputGate::isCancelled(m_task))
                return failure(KVProblemCode::Cancelled);
            m_bytes.resize(before + count);
            const qint64 got = SystemInput::read(file, m_bytes.data() + before,
                                                 static_cast<std::size_t>(count), m_task ? pollMs : -1);
            m_bytes.resize(before + std::max<qint64>(0, got));
            if (got >= 0)
                return got;
            if (errno != EINTR && errno != EAGAIN)
                return systemFailure();
        }
    }

    const KindOf m_kindOf;
    const KVCompletionProtocolPtr m_task;
    const float m_share;
    qint64 m_maxSize = 0;
    qint64 m_expected = 0; ///< size of the file, 0 if unknown
    QByteArray m_bytes;
};

/// What the reading thread and the waiting thread share. The waiting one may leave first.
struct Handover
{
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<Result<QByteArray>> result;
    std::exception_ptr thrown;

    template <typename Work>
    void fulfil(const Work& work)
    {
        std::optional<Result<QByteArray>> done;
        std::exception_ptr caught;
        try {
            done = work();
        } catch (...) { // std::bad_alloc
            caught = std::current_exception();
        }
        const std::lock_guard lock(mutex);
        result = std::move(done);
        thrown = caught;
        changed.notify_one();
    }

    Result<QByteArray> wait(const KVCompletionProtocolPtr& task)
    {
        std::unique_lock lock(mutex);
        while (!result && !thrown) {
            if (task->isCancelled())
                return failure(KVProblemCode::Cancelled);
            changed.wait_for(lock, std::chrono::milliseconds(pollMs));
        }
        if (thrown)
            std::rethrow_exception(thrown);
        return *std::move(result);
    }
};

/// Reads on a thread of its own: no function of the system that reads a regular file can be interrupted, and
/// a network file may take minutes to fail. After a cancellation that thread is left behind.
Result<QByteArray> readApart(const QString& name, const KindOf& kindOf, const KVCompletionProtocolPtr& task,
                             float share)
{
    const auto work = [=] { return Reading(kindOf, task, share).content(name); };
    const auto handover = std::make_shared<Handover>();
    try {
        std::thread([handover, work] { handover->fulfil(work); }).detach();
    } catch (const std::system_error&) { // no more threads
        return work();
    }
    return handover->wait(task);
}

} // namespace

Result<QByteArray> InputGate::read(const QString& name, const KindOf& kindOf,
                                   const KVCompletionProtocolPtr& task, float share)
{
    const Result<QByteArray> content =
        task ? readApart(name, kindOf, task, share) : Reading(kindOf, task, share).content(name);
    if (!content)
        return failure(content.error().about(shownName(name)));
    return content;
}

Result<QByteArray> InputGate::read(const QString& name, InputKind kind, const KVCompletionProtocolPtr& task,
                                   float share)
{
    return read(
        name, [kind](const QByteArray&) { return kind; }, task, share);
}

Result<InputGate::File> InputGate::openFile(const QString& name, InputKind kind)
{
    File file;
    const auto descriptor = std::make_shared<const Descriptor>(opened(name));
    if (descriptor->get() < 0)
        return failure(systemFailure().value().about(shownName(name)));
    file.m_descriptor = std::shared_ptr<const int>(descriptor, descriptor->address());
    const Result<qint64> size = sizeOf(descriptor->get());
    if (!size)
        return failure(size.error().about(shownName(name)));
    const qint64 position = SystemInput::position(descriptor->get());
    file.m_isSeekable = *size > 0 && position >= 0;
    if (!file.m_isSeekable)
        return file;
    if (*size > InputLimits::maxBytes(kind))
        return failure(tooLarge(InputLimits::maxBytes(kind)).value().about(shownName(name)));
    file.m_start.resize(startSize);
    const qint64 got =
        SystemInput::readAt(descriptor->get(), file.m_start.data(), std::size_t{startSize}, position);
    if (got < 0)
        return failure(systemFailure().value().about(shownName(name)));
    file.m_start.resize(got);
    return file;
}

bool InputGate::isText(const QByteArray& content)
{
    if (!content.contains('\0'))
        return true;
    const auto encoding =
        QStringConverter::encodingForData(content, u'<'); // by its mark, or by the start of XML
    return encoding && *encoding != QStringConverter::Utf8;
}
