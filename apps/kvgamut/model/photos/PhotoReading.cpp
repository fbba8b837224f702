// SPDX-License-Identifier: Apache-2.0
#include "PhotoReading.h"

#include "model/inputs/BuiltInProfiles.h"

namespace {

Result<QByteArray> profileFor(const PhotoFacts& facts, const PhotoReading& reading, QList<Problem>& notes)
{
    if (!facts.profile.isEmpty())
        return facts.profile;
    if (!reading.defaultProfile.isEmpty())
        return reading.defaultProfile;
    if (facts.space == PhotoFacts::Space::Cmyk || facts.sample == PhotoFacts::Sample::Float)
        return failure(ProblemCode::PictureNeedsProfile);
    notes.append(Problem(ProblemCode::PictureTakenAsSrgb));
    return BuiltInProfiles::profile(QStringLiteral("sRGB"));
}

} // namespace

Result<PhotoSpace> spaceOf(const PhotoFacts& facts, const PhotoReading& reading, QList<Problem>& notes)
{
    return profileFor(facts, reading, notes).and_then([&](const QByteArray& icc) {
        return PhotoSpace::open(icc, facts.space, reading.absolute);
    });
}
