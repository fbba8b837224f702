// SPDX-License-Identifier: Apache-2.0
#include "SavedGamut.h"

#include <QtCore/QCborArray>
#include <QtCore/QCborMap>
#include <QtCore/QCborStreamReader>
#include <QtCore/QCborValue>

namespace {

constexpr int formatVersion = 1;
const QLatin1String format("KVGamut");
const QLatin1String gamutKey("gamut");
const QLatin1String profileKey("profile");

// Tag 55799, an array of three, a text of seven bytes: the start of every file.
constexpr QByteArrayView marker("\xD9\xD9\xF7\x83\x67"
                                "KVGamut");
static_assert(marker.size() == SavedGamut::markerSize);

/// Reads the items of a file one after the other. A tree of all items would take a hundred times the size of
/// a file that someone filled with nested lists.
class Items
{
public:
    explicit Items(const QByteArray& bytes) : m_stream(bytes) {}

    Result<SavedGamut> read()
    {
        SavedGamut saved;
        if (const Result<void> begun = begin(); !begun)
            return failure(begun.error());
        forEach([this, &saved](const QString& key) {
            if (key == gamutKey)
                saved.gamut = values();
            else
                takeText(key == profileKey ? &saved.profile : nullptr);
        });
        if (m_stream.lastError() != QCborError::NoError)
            return damaged();
        return saved;
    }

private:
    /// Up to the map: the tag, the array, the name of the format and the version.
    Result<void> begin()
    {
        m_stream.next(); // the tag
        m_stream.enterContainer();
        m_stream.next(); // the name, which isSavedGamut() has compared
        if (m_stream.lastError() != QCborError::NoError)
            return damaged();
        const QVariant version = value();
        if (version.toLongLong() != formatVersion)
            return failure(KVProblemCode::UnknownSavedVersion, {version.toString()});
        return {};
    }

    tl::unexpected<Problem> damaged()
    {
        const Problem reason(ProblemCode::OtherReason, {m_stream.lastError().toString()});
        return failure(Problem(KVProblemCode::SavedGamutDamaged).because(reason));
    }

    /// Calls use(key) for each entry of a map whose key is a text; it must read the value. Other items are
    /// skipped.
    template <typename Use>
    void forEach(const Use& use)
    {
        if (!m_stream.isMap() || !m_stream.enterContainer()) {
            m_stream.next();
            return;
        }
        while (m_stream.lastError() == QCborError::NoError && m_stream.hasNext()) {
            QString key;
            if (takeText(&key))
                use(key);
            else
                m_stream.next();
        }
        if (m_stream.lastError() == QCborError::NoError)
            m_stream.leaveContainer();
    }

    /// The texts and integers of a map.
    QHash<QString, QVariant> values()
    {
        QHash<QString, QVariant> result;
        forEach([this, &result](const QString& key) { result.insert(key, value()); });
        return result;
    }

    /// A text or an integer; invalid for anything else.
    QVariant value()
    {
        QString text;
        if (m_stream.isString() && takeText(&text))
            return text;
        QVariant result;
        if (m_stream.isUnsignedInteger())
            result = m_stream.toUnsignedInteger();
        else if (m_stream.isNegativeInteger()) // as a text, because the smallest does not fit into an integer
            result = QStringLiteral("-%1").arg(static_cast<quint64>(m_stream.toNegativeInteger()));
        m_stream.next();
        return result;
    }

    /// Reads a text, which may be divided into parts, into @p text. @return false, and @p text is empty, if
    /// the next item, which is skipped, is not a text, or if it is damaged
    bool takeText(QString* text)
    {
        if (!m_stream.isString() || !text) {
            m_stream.next();
            return false;
        }
        text->clear();
        auto part = m_stream.readString();
        for (; part.status == QCborStreamReader::Ok; part = m_stream.readString())
            text->append(part.data);
        return part.status == QCborStreamReader::EndOfString;
    }

    QCborStreamReader m_stream;
};

} // namespace

QByteArray SavedGamut::bytes() const
{
    // a sorted map, because the order of a hash changes from run to run
    QVariantMap sorted;
    for (auto it = gamut.cbegin(); it != gamut.cend(); ++it)
        sorted.insert(it.key(), it.value());
    const QCborMap content{{gamutKey, QCborMap::fromVariantMap(sorted)}, {profileKey, profile}};
    return QCborValue(QCborKnownTags::Signature, QCborArray{format, formatVersion, content}).toCbor();
}

bool SavedGamut::isSavedGamut(const QByteArray& start)
{
    return start.startsWith(marker);
}

Result<SavedGamut> SavedGamut::read(const QByteArray& bytes)
{
    if (!isSavedGamut(bytes))
        return failure(KVProblemCode::NotASavedGamut);
    return Items(bytes).read();
}
