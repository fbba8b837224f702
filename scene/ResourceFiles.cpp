// SPDX-License-Identifier: Apache-2.0
#include <scene/ResourceFiles.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <utility>

// The macro declares a function and must not be used inside a namespace. It also makes the linker keep the
// files when the library is linked statically.
static void initCompiledInFiles()
{
    Q_INIT_RESOURCE(kv3dviewer);
}

namespace {

constexpr qint64 maxShaderBytes = qint64(1) << 20;
constexpr qint64 maxImageBytes = qint64(64) << 20;

QString compiledIn(const char* file)
{
    initCompiledInFiles();
    return QLatin1String(":/kv3dviewer/") + QLatin1String(file);
}

tl::unexpected<KVProblem> failure(KVProblemCode code, const QString& path, const QStringList& arguments = {})
{
    return tl::unexpected<KVProblem>(KVProblem{code, arguments, QDir::cleanPath(path)});
}

tl::expected<QByteArray, KVProblem> contentsOf(const QString& path, qint64 maxBytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        return failure(KVProblemCode::FileNotFound, path);
    if (!info.isFile())
        return failure(KVProblemCode::NotAFile, path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failure(KVProblemCode::FileUnreadable, path, {file.errorString()});
    if (file.size() > maxBytes)
        return failure(KVProblemCode::ShaderTooLarge, path);
    QByteArray bytes = file.read(maxBytes);
    if (file.error() != QFileDevice::NoError)
        return failure(KVProblemCode::FileUnreadable, path, {file.errorString()});
    bytes.squeeze(); // it has room for the largest file
    return bytes;
}

} // namespace

QString ResourceFiles::folder()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/../Resources");
}

tl::expected<ShaderSources, KVProblem> ResourceFiles::shaders(const QString& vertexPath,
                                                              const QString& fragmentPath)
{
    const bool own = QFile::exists(vertexPath) || QFile::exists(fragmentPath);
    const QString vertexFile = own ? vertexPath : compiledIn("Shaders/simple.vert");
    const QString fragmentFile = own ? fragmentPath : compiledIn("Shaders/simple.frag");
    auto vertex = contentsOf(vertexFile, maxShaderBytes);
    if (!vertex)
        return tl::unexpected<KVProblem>(std::move(vertex.error()));
    auto fragment = contentsOf(fragmentFile, maxShaderBytes);
    if (!fragment)
        return tl::unexpected<KVProblem>(std::move(fragment.error()));
    return ShaderSources{QDir::cleanPath(vertexFile), QDir::cleanPath(fragmentFile), *vertex, *fragment};
}

QImage ResourceFiles::planeImage(const QString& folder)
{
    const bool own = QFileInfo::exists(folder);
    const auto bytes = contentsOf(own ? folder + QLatin1String("/gamut.png") : compiledIn("Images/gamut.png"),
                                  maxImageBytes);
    return bytes ? QImage::fromData(*bytes) : QImage();
}
