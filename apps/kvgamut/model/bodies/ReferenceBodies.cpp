// SPDX-License-Identifier: Apache-2.0
#include "ReferenceBodies.h"

#include "SpectralLimit.h"
#include "SurfaceColours.h"
#include "model/points/OptimalColours.h"

namespace {

using Maker = Result<GivenGamut> (*)(KVCompletionProtocolPtr& task);

Result<GivenGamut> bodyOf(const KVGamut::Mesh& surface, double uncertainty, const QString& title,
                          const QStringList& notes, KVCompletionProtocolPtr& task)
{
    GivenGamut body{{}, title, notes};
    if (!body.gamut.initWithSurface(surface, uncertainty, &task))
        return failure(Problem(body.gamut.problem().value_or(KVProblem())));
    return body;
}

Result<GivenGamut> optimalColors(KVCompletionProtocolPtr& task)
{
    const OptimalColours colours = OptimalColours::create();
    KVGamut::Mesh surface;
    surface.lab = colours.points;
    surface.triangles = colours.faces;
    return bodyOf(surface, OptimalColours::volumeUncertainty,
                  QStringLiteral("reference body: optimal colours (D50, 2 degree observer)"),
                  {QStringLiteral("All colours of surfaces without fluorescence lie inside (Schroedinger, "
                                  "MacAdam), for D50 and the CIE 1931 2 degree observer. Computed from "
                                  "reflectances of 0 and 1 with two transitions at steps of 5 nm.")},
                  task);
}

Result<GivenGamut> surfaceColors(KVCompletionProtocolPtr& task)
{
    return bodyOf(
        SurfaceColours::surface(), SurfaceColours::volumeUncertainty(),
        QStringLiteral("reference body: real surface colours (Pointer 1980)"),
        {QStringLiteral("The largest chroma of 4,089 samples for 36 hues at L* 15 to 90, published for "
                        "the illuminant C and adapted to D50 (Bradford). The uncertainty is that of "
                        "the rounding to whole numbers; there are real surfaces outside.")},
        task);
}

Result<GivenGamut> spectralLimit(KVCompletionProtocolPtr& task)
{
    return bodyOf(SpectralLimit::surface(), SpectralLimit::volumeUncertainty,
                  QStringLiteral("reference body: spectral limit (D50, 2 degree observer)"),
                  {QStringLiteral("The chromaticities of lights of one wavelength, 380 to 780 nm in steps of "
                                  "5 nm, and of their mixtures, at the luminance of each L* from 0 to 100, "
                                  "for D50 and the CIE 1931 2 degree observer. No light has a chromaticity "
                                  "outside; what surfaces can have is OptimalColors.")},
                  task);
}

struct Body
{
    QLatin1String name;
    Maker make;
};

constexpr Body bodies[] = {{QLatin1String("OptimalColors"), optimalColors},
                           {QLatin1String("SurfaceColors"), surfaceColors},
                           {QLatin1String("SpectralLimit"), spectralLimit}};

} // namespace

std::optional<Result<GivenGamut>> ReferenceBodies::create(const QString& name, KVCompletionProtocolPtr task)
{
    for (const Body& body : bodies)
        if (name.compare(body.name, Qt::CaseInsensitive) == 0)
            return body.make(task);
    return {};
}
