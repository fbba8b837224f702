// SPDX-License-Identifier: Apache-2.0
#include "GamutPage.h"

#include "PageSurface.h"
#include "PageText.h"
#include "model/inputs/ProfileFacts.h"
#include "model/pictures/BodyLooks.h"
#include "model/pictures/PictureStyle.h"
#include "model/reports/GamutWords.h"
#include "model/text/ListOf.h"
#include "model/text/SafeText.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cmath>
#include <cstddef>
#include <vector>

namespace {

using GamutPage::Gamut;

/// Scripts in the order in which they use each other.
constexpr const char* scripts[] = {"data.js",   "colour.js", "lines.js",  "bodies.js", "section.js",
                                   "camera.js", "axes.js",   "tables.js", "panel.js",  "main.js"};

QByteArray resource(const char* name)
{
    QFile file(QLatin1String(":/page/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray script()
{
    QByteArray all;
    for (const char* name : scripts)
        all += resource(name);
    return all;
}

QString program()
{
    return QStringLiteral("kvgamut " KVGAMUT_VERSION);
}

QString title(const QList<Gamut>& gamuts)
{
    QStringList names;
    for (const Gamut& gamut : gamuts)
        names.append(gamut.name);
    return QStringLiteral("%1 - gamut").arg(names.join(QStringLiteral(", ")));
}

QJsonArray labJson(const KVGamut::LabPoint& lab)
{
    return {double(lab.L), double(lab.a), double(lab.b)};
}

QJsonObject gamutJson(const Gamut& gamut)
{
    const KVGamut::Report report = gamut.gamut.report();
    return {{QStringLiteral("name"), SafeText::shown(gamut.name)},
            {QStringLiteral("description"), SafeText::shown(gamut.description)},
            {QStringLiteral("key"), gamut.key.name()},
            {QStringLiteral("darkKey"), gamut.darkKey.name()},
            {QStringLiteral("visible"), gamut.visible},
            {QStringLiteral("opacity"), std::round(100.0 * double(gamut.opacity)) / 100.0},
            {QStringLiteral("intent"), GamutWords::intent(report)},
            {QStringLiteral("bpc"), GamutWords::blackPointCompensated(report)},
            {QStringLiteral("notes"), QJsonArray::fromStringList(GamutWords::notes(report))},
            {QStringLiteral("volume"), GamutWords::writtenVolume(report.volume)},
            {QStringLiteral("uncertainty"), GamutWords::writtenVolume(report.volumeUncertainty)},
            {QStringLiteral("white"), labJson(report.white)},
            {QStringLiteral("black"), labJson(report.black)},
            {QStringLiteral("surface"), PageSurface::of(gamut.gamut).json()}};
}

/// A share and its uncertainty.
QJsonObject shareJson(float share, double uncertainty)
{
    return {{QStringLiteral("share"), double(share)}, {QStringLiteral("uncertainty"), uncertainty}};
}

/// Row i, column j: the share of gamut i that gamut j covers; null if the memory does not suffice to compare
/// them, and on the diagonal.
QJsonArray coverageJson(const QList<Gamut>& gamuts, const GamutPage::Shown& shown)
{
    const qsizetype size = gamuts.size();
    const auto count = static_cast<std::size_t>(size);
    std::vector<std::vector<QJsonValue>> shares(count, std::vector<QJsonValue>(count, QJsonValue::Null));
    qsizetype done = 0;
    for (qsizetype i = 0; i < size; ++i)
        for (qsizetype j = i + 1; j < size; ++j) {
            const auto [found, uncertainty, problem] =
                gamuts[i].gamut.compareWithUncertainty(gamuts[j].gamut);
            if (!problem) {
                const auto row = static_cast<std::size_t>(i), column = static_cast<std::size_t>(j);
                shares[row][column] = shareJson(found.firstCovered, uncertainty.firstCovered);
                shares[column][row] = shareJson(found.secondCovered, uncertainty.secondCovered);
            }
            if (shown)
                shown(static_cast<float>(++done) / static_cast<float>(size * (size - 1) / 2));
        }
    QJsonArray rows;
    for (const std::vector<QJsonValue>& share : shares) {
        QJsonArray row;
        for (const QJsonValue& value : share)
            row.append(value);
        rows.append(row);
    }
    return rows;
}

QByteArray dataJson(const QList<Gamut>& gamuts, const GamutPage::Shown& shown)
{
    QJsonArray all;
    for (const Gamut& gamut : gamuts)
        all.append(gamutJson(gamut));
    return QJsonDocument(QJsonObject{{QStringLiteral("program"), program()},
                                     {QStringLiteral("coverage"), coverageJson(gamuts, shown)},
                                     {QStringLiteral("gamuts"), all}})
        .toJson(QJsonDocument::Compact);
}

} // namespace

QString GamutPage::descriptionOf(const GamutSource& source)
{
    if (source.profile())
        return ProfileFacts::of(source.profile()->bytes).description;
    return source.isSaved() ? QString() : source.kind();
}

void GamutPage::chooseKeys(QList<Gamut>& gamuts)
{
    const PictureStyle onLight = PictureStyle::named(QStringLiteral("paper"));
    const PictureStyle onDark = PictureStyle::named(QStringLiteral("dark"));
    for (qsizetype i = 0; i < gamuts.size(); ++i) {
        Gamut& gamut = gamuts[i];
        if (!gamut.darkKey.isValid())
            gamut.darkKey = gamut.key.isValid() ? gamut.key : onDark.key(i);
        if (!gamut.key.isValid())
            gamut.key = onLight.key(i);
    }
}

void GamutPage::chooseOpacities(QList<Gamut>& gamuts)
{
    QList<KVGamut::GamutObject> bodies;
    for (const Gamut& gamut : gamuts)
        bodies.append(gamut.gamut);
    const QList<BodyLook> looks = bodyLooks(bodies);
    for (qsizetype i = 0; i < gamuts.size(); ++i)
        switch (looks[i]) {
        case BodyLook::Solid:
            gamuts[i].opacity = 1.0f;
            break;
        case BodyLook::Translucent:
            gamuts[i].opacity = translucent;
            break;
        case BodyLook::Lines:
            gamuts[i].opacity = faint;
            break;
        }
}

QByteArray GamutPage::of(const QList<Gamut>& gamuts, const Shown& shown)
{
    const QByteArray style = resource("page.css"), library = resource("three.min.js"), own = script();
    return PageText::filled(resource("page.html"),
                            {{"title", PageText::html(title(gamuts))},
                             {"program", PageText::html(program())},
                             {"policy", PageText::policy(listOf(library, own), style)},
                             {"style", style},
                             {"library", library},
                             {"script", own},
                             {"licence", PageText::html(QString::fromUtf8(resource("MIT-three.txt")))},
                             {"data", PageText::jsonInScript(dataJson(gamuts, shown))}});
}
