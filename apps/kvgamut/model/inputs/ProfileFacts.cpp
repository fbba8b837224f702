// SPDX-License-Identifier: Apache-2.0
#include "ProfileFacts.h"

#include "LittleCms.h"
#include "model/reports/GamutWords.h"
#include "model/text/SafeText.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <vector>

using LittleCms::Context;
using LittleCms::Profile;

namespace {

/// A signature as text, without padding spaces.
QString signatureText(cmsUInt32Number signature)
{
    QString text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text.append(QLatin1Char(static_cast<char>(signature >> shift & 0xff)));
    return text.trimmed();
}

// Signatures are handled as numbers: a profile may have values that the enumerations of Little CMS do not
// have.

QString classOf(const Profile& profile)
{
    switch (const cmsUInt32Number signature = cmsGetDeviceClass(profile.get())) {
    case cmsSigInputClass:
        return QStringLiteral("input");
    case cmsSigDisplayClass:
        return QStringLiteral("display");
    case cmsSigOutputClass:
        return QStringLiteral("output");
    case cmsSigLinkClass:
        return QStringLiteral("device link");
    case cmsSigAbstractClass:
        return QStringLiteral("abstract");
    case cmsSigColorSpaceClass:
        return QStringLiteral("colour space");
    case cmsSigNamedColorClass:
        return QStringLiteral("named colours");
    default:
        return signatureText(signature);
    }
}

/// Whether the tag of a text is large enough for the translations that it declares. Little CMS allocates
/// memory for them before it reads: half a gigabyte for a few bytes.
bool holdsItsTranslations(const Profile& profile, cmsTagSignature tag)
{
    constexpr quint32 headerSize = 16, entrySize = 12;
    std::array<uchar, headerSize> header{};
    const quint32 size = cmsReadRawTag(profile.get(), tag, nullptr, 0);
    if (size < headerSize || cmsReadRawTag(profile.get(), tag, header.data(), headerSize) != headerSize)
        return true; // nothing is declared
    return qFromBigEndian<quint32>(header.data()) != cmsSigMultiLocalizedUnicodeType ||
           qFromBigEndian<quint32>(header.data() + 8) <= (size - headerSize) / entrySize;
}

/// Empty if the profile has none, or a damaged one.
QString textOf(const Profile& profile, cmsTagSignature tag, cmsInfoType what)
{
    if (!holdsItsTranslations(profile, tag))
        return {};
    // a description may have millions of letters
    constexpr cmsUInt32Number maxSize = (SafeText::maxLength + 1) * sizeof(wchar_t);
    const auto size = std::min(cmsGetProfileInfo(profile.get(), what, "en", "US", nullptr, 0), maxSize);
    std::vector<wchar_t> text(size / sizeof(wchar_t) + 1);
    cmsGetProfileInfo(profile.get(), what, "en", "US", text.data(), size);
    return QString::fromWCharArray(text.data());
}

bool has(const Profile& profile, cmsTagSignature tag)
{
    return cmsIsTag(profile.get(), tag) != 0;
}

/// Whether the profile is a matrix/TRC profile, or a grey profile with a curve.
bool isShaper(const Profile& profile)
{
    return cmsIsMatrixShaper(profile.get()) != 0;
}

QStringList tablesOf(const Profile& profile)
{
    QStringList tables;
    if (isShaper(profile))
        tables.append(has(profile, cmsSigGrayTRCTag) ? QStringLiteral("curve") : QStringLiteral("matrix"));
    constexpr std::array tags{cmsSigAToB0Tag, cmsSigAToB1Tag, cmsSigAToB2Tag, cmsSigDToB0Tag, cmsSigDToB1Tag,
                              cmsSigDToB2Tag, cmsSigDToB3Tag, cmsSigBToA0Tag, cmsSigBToA1Tag, cmsSigBToA2Tag,
                              cmsSigBToD0Tag, cmsSigBToD1Tag, cmsSigBToD2Tag, cmsSigBToD3Tag, cmsSigGamutTag};
    for (const auto tag : tags)
        if (has(profile, tag))
            tables.append(signatureText(tag));
    return tables;
}

/// The absolute intent follows from the relative one and the white point, unless it has a table of its own.
QStringList intentsOf(const Profile& profile)
{
    const bool relative = has(profile, cmsSigAToB1Tag) || has(profile, cmsSigDToB1Tag) || isShaper(profile);
    QStringList intents;
    if (has(profile, cmsSigAToB0Tag) || has(profile, cmsSigDToB0Tag))
        intents.append(GamutWords::intent(KVVMRenderPerceptual));
    if (relative)
        intents.append(GamutWords::intent(KVVMRenderRelativeColorimetric));
    if (has(profile, cmsSigAToB2Tag) || has(profile, cmsSigDToB2Tag))
        intents.append(GamutWords::intent(KVVMRenderSaturation));
    if (relative || has(profile, cmsSigDToB3Tag))
        intents.append(GamutWords::intent(KVVMRenderAbsoluteColorimetric));
    return intents;
}

} // namespace

ProfileFacts ProfileFacts::of(const QByteArray& icc)
{
    ProfileFacts facts;
    const Context context(cmsCreateContext(nullptr, nullptr));
    const Profile profile(
        cmsOpenProfileFromMemTHR(context.get(), icc.constData(), static_cast<cmsUInt32Number>(icc.size())));
    if (!profile)
        return facts;
    const cmsUInt32Number space = cmsGetColorSpace(profile.get());
    facts.deviceClass = classOf(profile);
    facts.deviceSpace = signatureText(space);
    facts.pcs = signatureText(cmsGetPCS(profile.get()));
    facts.channels = static_cast<int>(cmsChannelsOf(static_cast<cmsColorSpaceSignature>(space)));
    facts.version = QString::number(cmsGetProfileVersion(profile.get()), 'f', 1);
    facts.intents = intentsOf(profile);
    facts.tables = tablesOf(profile);
    facts.description = textOf(profile, cmsSigProfileDescriptionTag, cmsInfoDescription);
    facts.copyright = textOf(profile, cmsSigCopyrightTag, cmsInfoCopyright);
    return facts;
}
