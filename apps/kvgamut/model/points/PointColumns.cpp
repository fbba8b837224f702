// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"

#include "ColumnNames.h"
#include "model/inputs/BuiltInProfiles.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <version>

namespace {

struct Range
{
    const char* name;
    float min, max;
};

constexpr float maxAb = 500.0f; // beyond every colour, real or of a wide RGB space
constexpr Range lightnessRange{"L*", -10.0f, 150.0f};

/// What is accepted in a column; a spectrum has the same range in all of its columns.
Range rangeOf(PointSpace space, std::size_t index)
{
    static constexpr Range lab[] = {lightnessRange, {"a*", -maxAb, maxAb}, {"b*", -maxAb, maxAb}};
    static constexpr Range lch[] = {lightnessRange, {"C*", 0.0f, maxAb}, {"h", -360.0f, 360.0f}};
    static constexpr Range xyz[] = {{"X", -10.0f, 500.0f}, {"Y", -10.0f, 500.0f}, {"Z", -10.0f, 500.0f}};
    static constexpr Range rgb[] = {{"R", 0.0f, 255.0f}, {"G", 0.0f, 255.0f}, {"B", 0.0f, 255.0f}};
    static constexpr Range cmyk[] = {
        {"C", 0.0f, 100.0f}, {"M", 0.0f, 100.0f}, {"Y", 0.0f, 100.0f}, {"K", 0.0f, 100.0f}};
    switch (space) {
    case PointSpace::Lab:
        return lab[index];
    case PointSpace::LCh:
        return lch[index];
    case PointSpace::Xyz:
        return xyz[index];
    case PointSpace::Spectrum:
        return {"reflectance", -10.0f, 500.0f};
    case PointSpace::Rgb:
    case PointSpace::Hex:
        return rgb[index];
    case PointSpace::Cmyk:
        return cmyk[index];
    }
    return {};
}

Result<float> valueOf(const QString& field, const Range& range, int line)
{
    const auto value = numberOf(field);
    const auto number = [line] { return QString::number(line); };
    if (!value && field.trimmed().isEmpty())
        return failure(ProblemCode::RowMissesValue, {number(), QLatin1String(range.name)});
    if (!value)
        return failure(ProblemCode::RowNotNumber, {number(), QLatin1String(range.name), field});
    if (*value < range.min || *value > range.max)
        return failure(ProblemCode::RowOutOfRange,
                       {number(), QLatin1String(range.name), field, QString::number(double(range.min)),
                        QString::number(double(range.max))});
    return *value;
}

using Found = std::optional<QList<qsizetype>>;

Found findRgb(const ColumnNames& names)
{
    return names.findAll({{"RGBR", "R", "RED"}, {"RGBG", "G", "GREEN"}, {"RGBB", "B", "BLUE"}});
}

Found findCmyk(const ColumnNames& names)
{
    return names.findAll({{"CMYKC", "C", "CYAN"},
                          {"CMYKM", "M", "MAGENTA"},
                          {"CMYKY", "Y", "YELLOW"},
                          {"CMYKK", "K", "BLACK", "KEY"}});
}

Found findColourimetric(const ColumnNames& names, PointSpace space)
{
    if (space == PointSpace::Lab)
        return names.findAll({{"LABL", "L*", "CIEL*", "CIEL", "LSTAR", "L"},
                              {"LABA", "a*", "CIEA*", "CIEA", "ASTAR", "a"},
                              {"LABB", "b*", "CIEB*", "CIEB", "BSTAR", "b"}});
    if (space == PointSpace::LCh)
        return names.findAll({{"LCHL", "LABL", "L*", "CIEL*", "CIEL", "LSTAR", "L"},
                              {"LCHC", "LABC", "C*", "C*ab", "Cab", "CIEC", "CSTAR", "CHROMA", "C"},
                              {"LCHH", "LABH", "h*", "hab", "h°", "CIEH", "HUE", "h"}});
    return names.findAll({{"XYZX", "CIEX", "X"}, {"XYZY", "CIEY", "Y"}, {"XYZZ", "CIEZ", "Z"}});
}

/// Columns of reflectances, sorted by wavelength.
Found findSpectrum(const ColumnNames& names, QList<double>& wavelengths)
{
    constexpr qsizetype minBands = 3; // fewer are columns of another meaning, such as R400
    QList<std::pair<double, qsizetype>> bands;
    for (qsizetype i = 0; i < names.count(); ++i)
        if (const auto wavelength = names.wavelengthOf(i))
            bands.append({*wavelength, i});
    if (bands.size() < minBands)
        return {};
    std::sort(bands.begin(), bands.end());
    QList<qsizetype> columns;
    for (const auto& [wavelength, column] : std::as_const(bands)) {
        wavelengths.append(wavelength);
        columns.append(column);
    }
    return columns;
}

/// RGB columns, also those whose names say of which space, which is then @p declared.
Found findRgb(const ColumnNames& names, QString& declared)
{
    for (const QString& space : BuiltInProfiles::names())
        if (const Found columns = names.findChannels(space, QStringLiteral("RGB"))) {
            declared = space;
            return columns;
        }
    return findRgb(names);
}

/// The columns with the values of a point, and their space.
bool findValues(const ColumnNames& names, PointColumns& columns)
{
    const auto take = [&columns](const Found& found, PointSpace space) {
        columns.space = space;
        columns.values = found.value_or(QList<qsizetype>());
        return found.has_value();
    };
    for (const PointSpace space : {PointSpace::Lab, PointSpace::LCh, PointSpace::Xyz})
        if (take(findColourimetric(names, space), space))
            return true;
    if (take(findSpectrum(names, columns.wavelengths), PointSpace::Spectrum) ||
        take(findRgb(names, columns.declared), PointSpace::Rgb))
        return true;
    return take(names.findAll({{"HEX", "RGBHEX", "HEXRGB", "HEXCODE", "HTML", "WEB"}}), PointSpace::Hex) ||
           take(findCmyk(names), PointSpace::Cmyk);
}

void takeWeights(PointColumns& columns)
{
    if (columns.space != PointSpace::Spectrum)
        return;
    if (auto weights = SpectralWeights::of(columns.wavelengths))
        columns.weights = *std::move(weights);
    else
        columns.problem = weights.error();
}

/// The columns of the inks of a chart with more than four: "6CLR_1", "CMYKOG_O", or columns of CMYK and of
/// further inks. Empty if there are not as many.
QList<qsizetype> manyInks(const ColumnNames& names, const QList<qsizetype>& values)
{
    constexpr qsizetype maxInks = 4; // of which a model is made
    QList<qsizetype> numbered, lettered, single;
    const Found cmyk = findCmyk(names);
    for (qsizetype i = 0; i < names.count(); ++i) {
        static const QRegularExpression number(QStringLiteral("^[0-9]{1,2}CLR[0-9]{1,2}$"));
        static const QRegularExpression letter(QStringLiteral("^(?=CMYK)([A-Za-z]{5,15})[A-Za-z]$"));
        static const QStringList spots{
            QStringLiteral("O"),          QStringLiteral("ORANGE"), QStringLiteral("V"),
            QStringLiteral("VIOLET"),     QStringLiteral("G"),      QStringLiteral("GREEN"),
            QStringLiteral("R"),          QStringLiteral("RED"),    QStringLiteral("B"),
            QStringLiteral("BLUE"),       QStringLiteral("LC"),     QStringLiteral("LIGHTCYAN"),
            QStringLiteral("LM"),         QStringLiteral("LK"),     QStringLiteral("LIGHTMAGENTA"),
            QStringLiteral("LIGHTBLACK"), QStringLiteral("SPOT1"),  QStringLiteral("SPOT2"),
            QStringLiteral("SPOT3")};
        if (values.contains(i))
            continue;
        const QString& name = names.at(i);
        if (number.match(name).hasMatch())
            numbered.append(i);
        else if (letter.match(name).hasMatch() && name.chopped(1).contains(name.back()))
            lettered.append(i);
        else if (spots.contains(name, Qt::CaseInsensitive))
            single.append(i);
    }
    // beside CMYK, R, G and B are a conversion of it
    const bool isRgb = findRgb(names) && single.size() == 3;
    if (cmyk && !single.isEmpty() && !isRgb)
        return *cmyk + single;
    return numbered.size() > maxInks ? numbered : lettered.size() > maxInks ? lettered : QList<qsizetype>();
}

/// Device values beside others. @return the columns of inks that are too many
QList<qsizetype> takeDevice(const ColumnNames& names, PointColumns& columns)
{
    if (columns.space == PointSpace::Rgb || columns.space == PointSpace::Cmyk)
        return {};
    const QList<qsizetype> inks = manyInks(names, columns.values);
    columns.inks = static_cast<int>(inks.size());
    if (!inks.isEmpty())
        return inks;
    const Found rgb = findRgb(names);
    columns.device = (rgb ? rgb : findCmyk(names)).value_or(QList<qsizetype>());
    return {};
}

/// Columns that measuring devices write and that are of no use here.
bool isExpected(const QString& name)
{
    static constexpr const char* starts[] = {"SAMPLE", "STDEV", "MEAN_", "CHI_",  "D_",    "LAB_",
                                             "XYZ_",   "RGB_",  "CMYK_", "SPEC",  "INDEX", "STRING",
                                             "XYY_",   "nCLR",  "CLR_",  "FILE_", "KEY"};
    return std::any_of(std::begin(starts), std::end(starts),
                       [&name](const char* start) { return name.startsWith(QLatin1String(start)); });
}

} // namespace

std::optional<PointColumns> PointColumns::named(const QStringList& fields)
{
    const ColumnNames names(fields);
    PointColumns columns;
    if (!findValues(names, columns))
        return {};
    columns.color = names.find({"colour", "color"});
    columns.name = names.find({"SAMPLENAME", "NAME", "COLOURNAME", "COLORNAME", "PATCHNAME", "SWATCHNAME",
                               "SWATCH", "PATCH", "LABEL", "TITLE", "SAMPLE", "FARBNAME", "BEZEICHNUNG",
                               "SAMPLEID", "PATCHID", "ID", "SAMPLELOC"});
    takeWeights(columns);
    const QList<qsizetype> inks = takeDevice(names, columns);
    const auto shares = [&columns](qsizetype column) { return columns.values.contains(column); };
    if (std::any_of(columns.device.cbegin(), columns.device.cend(), shares))
        columns.device.clear();
    for (qsizetype i = 0; i < fields.size(); ++i)
        if (!shares(i) && !columns.device.contains(i) && !inks.contains(i) && i != columns.color &&
            i != columns.name && !fields[i].isEmpty() && !isExpected(fields[i]))
            columns.unknown.append(i);
    return columns;
}

void PointColumns::findName(const QStringList& row)
{
    if (name >= 0)
        return;
    const QString shown = row.value(color);
    if (!shown.isEmpty() && !QColor(shown).isValid()) {
        name = std::exchange(color, -1);
        return;
    }
    const auto isText = [&row](qsizetype column) {
        return !row.value(column).isEmpty() && !numberOf(row.value(column));
    };
    if (std::count_if(unknown.cbegin(), unknown.cend(), isText) == 1) {
        const auto only = std::find_if(unknown.begin(), unknown.end(), isText);
        name = *only;
        unknown.erase(only);
    }
}

namespace {

/// The device values of @p row in the columns @p columns; 0 channels if one is missing or no number.
void readDevice(MeasuredPoint& point, const QStringList& row, const QList<qsizetype>& columns)
{
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const auto value = numberOf(row.value(columns[i]));
        if (!value)
            return;
        point.device[static_cast<std::size_t>(i)] = *value;
    }
    point.deviceChannels = static_cast<int>(columns.size());
}

Result<void> readHex(MeasuredPoint& point, QString field, int line)
{
    if (!field.startsWith(QLatin1Char('#')))
        field.prepend(QLatin1Char('#'));
    const bool isHex = field.size() == 7 || field.size() == 4;
    const QColor color = isHex ? QColor(field) : QColor();
    if (!color.isValid())
        return failure(ProblemCode::RowNotHex, {QString::number(line), field.mid(1)});
    point.device = {float(color.red()), float(color.green()), float(color.blue()), 0.0f};
    point.deviceChannels = 3;
    return {};
}

Result<void> readColor(MeasuredPoint& point, const QString& field, int line)
{
    point.color = field.isEmpty() ? QColor() : QColor(field);
    if (!field.isEmpty() && !point.color.isValid())
        return failure(ProblemCode::RowNotColor, {QString::number(line), field});
    return {};
}

} // namespace

Result<std::array<float, 3>> PointColumns::spectrumOf(const QStringList& row, int line) const
{
    std::vector<float> reflectances;
    for (const qsizetype column : values) {
        const Result<float> value = valueOf(row.value(column), rangeOf(space, 0), line);
        if (!value)
            return failure(value.error());
        reflectances.push_back(*value);
    }
    return weights.xyzOf(reflectances);
}

Result<MeasuredPoint> PointColumns::pointOf(const QStringList& row, int line) const
{
    MeasuredPoint point;
    point.name = row.value(name);
    if (const Result<void> read = readColor(point, row.value(color), line); !read)
        return failure(read.error());
    if (space == PointSpace::Hex)
        return readHex(point, row.value(values[0]).trimmed(), line).map([&point] { return point; });
    if (space == PointSpace::Spectrum)
        return spectrumOf(row, line).map([&](const std::array<float, 3>& xyz) {
            readDevice(point, row, device);
            point.lab = {xyz[0], xyz[1], xyz[2]};
            return point;
        });
    std::array<float, 4> numbers{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(values.size()); ++i) {
        const Result<float> value =
            valueOf(row.value(values[static_cast<qsizetype>(i)]), rangeOf(space, i), line);
        if (!value)
            return failure(value.error());
        numbers[i] = *value;
    }
    const std::array<float, 3> first{numbers[0], numbers[1], numbers[2]};
    if (space == PointSpace::Rgb || space == PointSpace::Cmyk) {
        point.device = numbers;
        point.deviceChannels = static_cast<int>(values.size());
        return point;
    }
    readDevice(point, row, device);
    point.lab = space == PointSpace::LCh ? labOfLCh(first) : KVGamut::LabPoint{first[0], first[1], first[2]};
    return point;
}

namespace {

#ifdef __cpp_lib_to_chars // not in libc++ before version 20
/// The number in @p field if it is written in the most common way, "-12.5": QString takes several times as
/// long. nullopt for all others.
std::optional<float> plainNumber(const QString& field)
{
    constexpr qsizetype maxLength = 24;
    std::array<char, maxLength> letters;
    if (field.isEmpty() || field.size() > maxLength || !field.back().isDigit())
        return {};
    for (qsizetype i = 0; i < field.size(); ++i) {
        const char16_t c = field[i].unicode();
        if (!(c >= u'0' && c <= u'9') && c != u'.' && !(c == u'-' && i == 0))
            return {};
        letters[static_cast<std::size_t>(i)] = static_cast<char>(c);
    }
    const char* const end = letters.data() + field.size();
    double value = 0.0;
    const auto [stop, error] = std::from_chars(letters.data(), end, value, std::chars_format::fixed);
    if (error != std::errc() || stop != end)
        return {};
    return static_cast<float>(value);
}
#else
std::optional<float> plainNumber(const QString&)
{
    return {}; // the general way takes longer
}
#endif

} // namespace

std::optional<float> numberOf(const QString& field)
{
    if (const auto number = plainNumber(field))
        return number;
    bool ok = false;
    float value = field.toFloat(&ok);
    if (!ok && field.contains(QLatin1Char(','))) // as in "50,5"
        value = QString(field).replace(QLatin1Char(','), QLatin1Char('.')).toFloat(&ok);
    if (!ok || !std::isfinite(value))
        return {};
    return value;
}

KVGamut::LabPoint labOfLCh(const std::array<float, 3>& values)
{
    const double angle = double(values[2]) * M_PI / 180.0;
    return {values[0], static_cast<float>(double(values[1]) * std::cos(angle)),
            static_cast<float>(double(values[1]) * std::sin(angle))};
}

bool isPossible(const KVGamut::LabPoint& lab)
{
    return lab.L >= lightnessRange.min && lab.L <= lightnessRange.max && std::fabs(lab.a) <= maxAb &&
           std::fabs(lab.b) <= maxAb; // false for NaN
}
