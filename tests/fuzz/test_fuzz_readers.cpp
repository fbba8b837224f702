// SPDX-License-Identifier: Apache-2.0
// Gives every reader of the program its seeds, the inputs that once failed, and damaged forms of both. The
// damage is the same in each run. The fuzzers (Clang) continue from there, guided by coverage.

#include "Budget.h"
#include "Readers.h"
#include "Require.h"
#include "model/inputs/SavedGamut.h"

#include "support/AllocationCount.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLoggingCategory>
#include <QtCore/QStringList>

#include <random>
#include <stdexcept>

namespace {

struct Reader
{
    const char* name;
    void (*read)(const QByteArray& bytes);
};

#define KV_READER(name)                                                                                      \
    Reader                                                                                                   \
    {                                                                                                        \
#name, kvfuzz::readers::name                                                                         \
    }
const Reader allReaders[] = {
    KV_READER(acb),         KV_READER(ase),     KV_READER(boundary), KV_READER(camera),
    KV_READER(cgats),       KV_READER(csv),     KV_READER(cxf),      KV_READER(gam),
    KV_READER(gpl),         KV_READER(jpeg),    KV_READER(png),      KV_READER(reference),
    KV_READER(saved_gamut), KV_READER(session), KV_READER(settings), KV_READER(tiff)};

void PrintTo(const Reader& reader, std::ostream* out)
{
    *out << reader.name;
}

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll();
}

/// The words of a dictionary in the form of libFuzzer: "text" with \\, \" and \xAB.
QList<QByteArray> dictionaryOf(const char* reader)
{
    QList<QByteArray> words;
    const QString name = QStringLiteral(FUZZ_DIR "/%1.dict").arg(QLatin1String(reader));
    for (const QByteArray& line : contentOf(name).split('\n')) {
        if (!line.startsWith('"'))
            continue;
        QByteArray word;
        for (qsizetype i = 1; i + 1 < line.size(); ++i) {
            const bool isEscape = line[i] == '\\';
            const bool isHex = isEscape && line[i + 1] == 'x';
            word += isHex ? QByteArray::fromHex(line.mid(i + 2, 2)) : line.mid(isEscape ? i + 1 : i, 1);
            i += isHex ? 3 : isEscape ? 1 : 0;
        }
        words.append(word);
    }
    return words;
}

/// Damages inputs at random, the same way in each run.
class Damage
{
public:
    explicit Damage(const QList<QByteArray>& dictionary) : m_dictionary(dictionary) {}

    QByteArray to(QByteArray bytes)
    {
        for (int count = 1 + number(4); count > 0; --count)
            change(bytes);
        return bytes;
    }

private:
    int number(qsizetype end)
    {
        return static_cast<int>(m_random() % static_cast<unsigned>(std::max<qsizetype>(1, end)));
    }
    QByteArray word() { return m_dictionary[number(m_dictionary.size())]; }

    void change(QByteArray& bytes)
    {
        const int at = number(bytes.size());
        switch (number(7)) {
        case 0:
            bytes.truncate(at);
            return;
        case 1:
            bytes.remove(at, number(20));
            return;
        case 2:
            bytes.insert(at, word());
            return;
        case 3: {
            const QByteArray other = word();
            bytes.replace(at, other.size(), other);
            return;
        }
        case 4:
            bytes.insert(at, bytes.mid(number(bytes.size()), number(50)));
            return;
        case 5:
            bytes.insert(at, QByteArray(number(300), static_cast<char>(number(256))));
            return;
        default:
            if (!bytes.isEmpty())
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << number(8)));
        }
    }

    const QList<QByteArray> m_dictionary;
    std::mt19937 m_random{1};
};

class FuzzReadersTest : public testing::TestWithParam<Reader>
{
protected:
    void SetUp() override
    {
        // Qt reports damaged pictures
        QLoggingCategory::setFilterRules(
            QStringLiteral("qt.gui.imageio*=false\nqt.gui.icc=false\ndefault.warning=false"));
        kvfuzz::violated = [](const char* property) { throw std::runtime_error(property); };
    }
    void TearDown() override
    {
        QLoggingCategory::setFilterRules({});
        kvfuzz::violated = kvfuzz::abortWith;
    }

    QStringList inputs() const
    {
        const QDir folder(QStringLiteral(FUZZ_SEEDS_DIR "/%1").arg(QLatin1String(GetParam().name)));
        QStringList files;
        for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
            files.append(folder.filePath(name));
        return files;
    }

    /// @return whether all properties hold
    bool read(const QByteArray& bytes) const
    {
        const auto before = kvtest::bytesAllocatedSoFar();
        try {
            GetParam().read(bytes);
        } catch (const std::runtime_error& violation) {
            ADD_FAILURE() << violation.what() << "\ninput: " << bytes.toBase64().constData();
            return false;
        }
        const auto allocated = kvtest::bytesAllocatedSoFar() - before;
        const auto budget = kvfuzz::Budget::of(GetParam().name, static_cast<std::size_t>(bytes.size()));
        EXPECT_LE(static_cast<std::ptrdiff_t>(allocated), budget.total) << bytes.toBase64().constData();
        return !HasFailure();
    }
};

TEST_P(FuzzReadersTest, acceptOrRefuseKeptInputs)
{
    const QStringList files = inputs();
    EXPECT_GE(files.size(), 2);
    for (const QString& file : files)
        EXPECT_TRUE(read(contentOf(file))) << qPrintable(file);
}

TEST_P(FuzzReadersTest, acceptOrRefuseDamagedInputs)
{
    constexpr int count = 3000;
    Damage damage(dictionaryOf(GetParam().name));
    const QStringList files = inputs();
    ASSERT_FALSE(files.isEmpty());
    QList<QByteArray> contents;
    for (const QString& file : files)
        contents.append(contentOf(file));
    for (int i = 0; i < count; ++i)
        if (!read(damage.to(contents[i % contents.size()])))
            return;
}

TEST(FuzzReaders, areTestedHereAndByFuzzers)
{
    QStringList here;
    for (const Reader& reader : allReaders)
        here.append(QLatin1String(reader.name));
    QStringList fuzzed = QStringLiteral(FUZZ_READERS).split(QLatin1Char(' '));
    fuzzed.sort();
    EXPECT_EQ(here, fuzzed);
}

TEST(FuzzReaders, takeLittleMemoryForASavedGamutOfLists)
{
    const QByteArray start = QByteArray::fromHex("d9d9f78367") + "KVGamut" + QByteArray::fromHex("01bf6161");
    const QByteArray lists = "\x9f" + QByteArray("\x81\x01").repeated(500'000) + "\xff\xff";
    const auto before = kvtest::bytesAllocatedSoFar();
    const Result<SavedGamut> saved = SavedGamut::read(start + lists);
    EXPECT_TRUE(saved);
    EXPECT_LE(kvtest::bytesAllocatedSoFar() - before, static_cast<std::uint64_t>(8 * lists.size()));
}

INSTANTIATE_TEST_SUITE_P(Of, FuzzReadersTest, testing::ValuesIn(allReaders),
                         [](const auto& reader) { return std::string(reader.param.name); });

} // namespace
