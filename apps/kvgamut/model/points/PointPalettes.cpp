// SPDX-License-Identifier: Apache-2.0
#include "PointBuilder.h"
#include "PointColumns.h"
#include "PointReaders.h"

#include <QtCore/QtEndian>

#include <bit>
#include <cstring>
#include <utility>

// Palettes of colours. Every length is compared with the bytes that are left.
//
// ASE, a swatch exchange file: "ASEF", version, the number of blocks; each block has a type and a length. A
// block of a colour contains its name, the colour model and its values as floats.
//
// ACB, a colour book: "8BCB", version, identifier, title, prefix, postfix and description, the number of
// colours and their model; each colour has a name, a code of six characters and its values as bytes.
//
// GPL, a GIMP palette: text with red, green and blue from 0 to 255 and a name on each line.

namespace {

/// Reads numbers in big endian and texts in UTF-16. After the end of the bytes everything is 0 and empty, and
/// isDamaged() is true.
class PaletteBytes
{
public:
    explicit PaletteBytes(QByteArrayView bytes) : m_bytes(bytes) {}

    bool isDamaged() const { return m_damaged; }
    qsizetype left() const { return m_bytes.size() - m_at; }

    QByteArrayView take(qsizetype count)
    {
        m_damaged = m_damaged || count < 0 || count > left();
        if (m_damaged)
            return {};
        m_at += count;
        return m_bytes.sliced(m_at - count, count);
    }
    template <typename Number>
    Number number()
    {
        const QByteArrayView bytes = take(sizeof(Number));
        return bytes.isEmpty() ? Number(0) : qFromBigEndian<Number>(bytes.data());
    }
    float real() { return std::bit_cast<float>(number<quint32>()); }
    float byte() { return static_cast<float>(number<quint8>()); }
    /// @param units of two bytes; a NUL at the end is cut
    QString text(qsizetype units)
    {
        const QByteArrayView bytes = take(2 * units);
        QString result;
        for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
            if (const auto unit = qFromBigEndian<quint16>(bytes.data() + i); unit != 0)
                result += QChar(unit);
        return result;
    }

private:
    const QByteArrayView m_bytes;
    qsizetype m_at = 0;
    bool m_damaged = false;
};

tl::unexpected<Problem> damagedPalette(const char* format)
{
    return failure(ProblemCode::PaletteDamaged, {QLatin1String(format)});
}

PointBuilder binaryBuilder(const PointOptions& options, const KVCompletionProtocolPtr& task)
{
    PointBuilder builder(options, task);
    builder.declared.maxRgb = 1.0;
    builder.declared.maxCmyk = 1.0;
    builder.declared.areNumbered = true;
    return builder;
}

MeasuredPoint deviceColor(const QString& name, std::array<float, 4> values, int channels)
{
    MeasuredPoint point;
    point.name = name;
    point.device = values;
    point.deviceChannels = channels;
    return point;
}

/// Adds a colour, or leaves it out if a device value is outside of 0 to 1.
Result<void> addPaletteColor(PointBuilder& builder, const MeasuredPoint& point, PointSpace space, int number)
{
    for (const float value : point.device)
        if (!(value >= 0.0f && value <= 1.0f)) {
            builder.leaveOut(Problem(ProblemCode::PaletteValueInvalid,
                                     {QString::number(number), QString::number(double(value))}),
                             number);
            return {};
        }
    return builder.add(point, space, number);
}

Result<void> addSwatch(PointBuilder& builder, PaletteBytes& block, int number)
{
    const QString name = block.text(block.number<quint16>());
    const QByteArray model = block.take(4).toByteArray();
    const auto real = [&block] { return block.real(); };
    MeasuredPoint point;
    PointSpace space = PointSpace::Lab;
    if (model == "RGB ") {
        const float red = real(), green = real(), blue = real();
        point = deviceColor(name, {red, green, blue, 0.0f}, 3);
        space = PointSpace::Rgb;
    } else if (model == "CMYK") {
        const float cyan = real(), magenta = real(), yellow = real(), black = real();
        point = deviceColor(name, {cyan, magenta, yellow, black}, 4);
        space = PointSpace::Cmyk;
    } else if (model == "LAB ") {
        const float L = real() * 100.0f, a = real(), b = real();
        point.name = name;
        point.lab = {L, a, b};
    } else if (!block.isDamaged()) {
        builder.leaveOut(Problem(ProblemCode::PaletteModelUnknown,
                                 {QString::number(number), QString::fromLatin1(model.trimmed())}),
                         number);
        return {};
    }
    return block.isDamaged() ? damagedPalette("ASE") : addPaletteColor(builder, point, space, number);
}

/// The text after "=" in a name such as "$$$/colorbook/BOOK/TITLE=Title", else all of it.
QString shownText(const QString& text)
{
    return text.startsWith(QLatin1String("$$$/")) ? text.section(QLatin1Char('='), 1) : text;
}

/// What a colour book says about all of its colours.
struct Book
{
    QString prefix, postfix;
    int space = 0;
};

constexpr int bookRgb = 0, bookCmyk = 2, bookLab = 7;

Result<void> addBookColor(PointBuilder& builder, PaletteBytes& bytes, const Book& book, int number)
{
    constexpr float full = 255.0f, centre = 128.0f;
    constexpr qsizetype codeLength = 6;
    const QString name = shownText(bytes.text(bytes.number<quint32>()));
    bytes.take(codeLength);
    std::array<float, 4> values{};
    for (std::size_t i = 0; i < (book.space == bookCmyk ? 4u : 3u); ++i)
        values[i] = bytes.byte();
    if (bytes.isDamaged())
        return damagedPalette("ACB");
    if (name.isEmpty()) // fills a page
        return {};
    const QString whole = book.prefix + name + book.postfix;
    if (book.space == bookLab) {
        MeasuredPoint point;
        point.name = whole;
        point.lab = {values[0] * 100.0f / full, values[1] - centre, values[2] - centre};
        return builder.add(point, PointSpace::Lab, number);
    }
    const bool isCmyk = book.space == bookCmyk; // stored as the part without ink
    for (float& value : values)
        value = isCmyk ? 1.0f - value / full : value / full;
    return builder.add(deviceColor(whole, values, isCmyk ? 4 : 3),
                       isCmyk ? PointSpace::Cmyk : PointSpace::Rgb, number);
}

} // namespace

Result<PointSet> PointReaders::readAse(const QByteArray& bytes, const PointOptions& options,
                                       const KVCompletionProtocolPtr& task)
{
    constexpr quint16 colorBlock = 0x0001;
    PaletteBytes reader(bytes);
    reader.take(8); // "ASEF", version
    const auto blocks = reader.number<quint32>();
    PointBuilder builder = binaryBuilder(options, task);
    int number = 0;
    for (quint32 i = 0; i < blocks && !reader.isDamaged(); ++i) {
        const auto type = reader.number<quint16>();
        PaletteBytes block(reader.take(reader.number<quint32>()));
        if (type != colorBlock || reader.isDamaged())
            continue;
        if (const Result<void> added = addSwatch(builder, block, ++number); !added)
            return failure(added.error());
    }
    return reader.isDamaged() ? damagedPalette("ASE") : builder.finish();
}

Result<PointSet> PointReaders::readAcb(const QByteArray& bytes, const PointOptions& options,
                                       const KVCompletionProtocolPtr& task)
{
    PaletteBytes reader(bytes);
    reader.take(8); // "8BCB", version, identifier
    const auto text = [&reader] { return shownText(reader.text(reader.number<quint32>())); };
    text(); // the title
    Book book;
    book.prefix = text();
    book.postfix = text();
    text(); // the description
    const auto count = reader.number<quint16>();
    reader.take(4); // colours on a page, the page that is shown first
    book.space = reader.number<quint16>();
    if (reader.isDamaged())
        return damagedPalette("ACB");
    if (book.space != bookRgb && book.space != bookCmyk && book.space != bookLab)
        return failure(ProblemCode::PaletteModelUnknown, {QString::number(1), QString::number(book.space)});
    PointBuilder builder = binaryBuilder(options, task);
    for (int number = 1; number <= count; ++number)
        if (const Result<void> added = addBookColor(builder, reader, book, number); !added)
            return failure(added.error());
    return builder.finish();
}

Result<PointSet> PointReaders::readGpl(const QByteArray& text, const PointOptions& options,
                                       const KVCompletionProtocolPtr& task)
{
    PointBuilder builder(options, task);
    builder.declared.space = QStringLiteral("sRGB");
    builder.declared.maxRgb = 255.0;
    PointColumns columns;
    columns.space = PointSpace::Rgb;
    columns.values = {0, 1, 2};
    int line = 0;
    for (qsizetype at = 0; at < text.size(); ++line) {
        const qsizetype end = text.indexOf('\n', at);
        const QString content =
            QString::fromUtf8(QByteArrayView(text).sliced(at, (end < 0 ? text.size() : end) - at))
                .simplified();
        at = end < 0 ? text.size() : end + 1;
        const bool isKey =
            content.startsWith(QLatin1String("Name:")) || content.startsWith(QLatin1String("Columns:"));
        if (line == 0 || content.isEmpty() || isKey || content.startsWith(QLatin1Char('#')))
            continue;
        Result<MeasuredPoint> point =
            columns.pointOf(content.section(QLatin1Char(' '), 0, 2).split(QLatin1Char(' ')), line + 1);
        if (!point) {
            builder.leaveOut(point.error(), line + 1);
            continue;
        }
        point->name = content.section(QLatin1Char(' '), 3);
        if (const Result<void> added = builder.add(*point, PointSpace::Rgb, line + 1); !added)
            return failure(added.error());
    }
    return builder.finish();
}
