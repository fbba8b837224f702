// SPDX-License-Identifier: Apache-2.0
#include "GamutFile.h"

#include "model/export/MeshFormat.h"
#include "model/export/OutputFile.h"
#include "model/inputs/SavedGamut.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>

std::optional<Problem> GamutFile::write(const QString& file, const KVGamut::GamutObject& gamut,
                                        const QString& profile)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix == QLatin1String("kvgamut"))
        return writeOutput(file, SavedGamut{gamut.serialize(), profile}.bytes());
    const MeshFormat* format = MeshFormat::ofSuffix(suffix);
    if (!format)
        return Problem(ProblemCode::MeshFormatUnknown).about(file);
    const MeshNote note{SafeText::shown(profile, SafeText::maxPathLength), gamut.report()};
    return writeOutput(file, format->write(ColoredMesh::of(gamut.mesh()), note));
}
