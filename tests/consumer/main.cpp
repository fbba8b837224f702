// SPDX-License-Identifier: Apache-2.0
// Shows sRGB, waits until it is drawn and looks at what came of it. Exits 0 when the library, its
// resources and its colour engine do as they should; otherwise it says what did not.
//
//   consumer [picture.png]

#include <KVGamut3DViewer.h>

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QTimer>
#include <QtGui/QColorSpace>
#include <QtGui/QGuiApplication>

#include <cmath>
#include <cstdio>
#include <set>

namespace {

// As published for D50: the volume of sRGB in Lab.
constexpr float srgbVolume = 832000.0f;

bool isVolumeOfSrgb(float volume)
{
    return std::fabs(volume / srgbVolume - 1.0f) < 0.01f;
}

/// Which sixths of the hue circle the picture shows in strong colours.
std::set<int> strongHues(const QImage& picture)
{
    std::set<int> sixths;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.hsvSaturation() > 128 && colour.value() > 128)
                sixths.insert(colour.hsvHue() * 6 / 360);
        }
    return sixths;
}

int refuse(const char* what, double value)
{
    std::fprintf(stderr, "consumer: %s: %g\n", what, value);
    return 1;
}

int judge(const KVGamut3DViewer& viewer, const QImage& picture)
{
    if (!isVolumeOfSrgb(viewer.volume(QStringLiteral("sRGB"))))
        return refuse("wrong volume of sRGB in the viewer", viewer.volume(QStringLiteral("sRGB")));
    // From above, the surface shows every hue; without shaders the picture would be all background.
    if (strongHues(picture).size() != 6)
        return refuse("sixths of the hue circle that were drawn", double(strongHues(picture).size()));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QByteArray profile = QColorSpace(QColorSpace::SRgb).iccProfile();

    // The engine by itself.
    const KVProfilePtr opened(KVProfileCreateWithData(profile.constData(), int(profile.size())),
                              KVProfileRelease);
    KVGamut::GamutObject gamut;
    gamut.init(opened, KVVMRenderRelativeColorimetric, false, false, 10.0f, -1, 0, nullptr);
    if (!isVolumeOfSrgb(gamut.volume()))
        return refuse("wrong volume of sRGB in the engine", gamut.volume());

    // The engine behind the viewer.
    KVGamut3DViewer viewer;
    viewer.resize(320, 240);
    const QHash<QString, QVariant> relative{{QStringLiteral("Link_ICCRendering"), 1}};
    viewer.load(QStringLiteral("sRGB"),
                {{QStringLiteral("ProfileData"), profile}, {QStringLiteral("AdditionnalParam"), relative}},
                [](const QString&, bool loaded) {
                    if (!loaded)
                        QCoreApplication::exit(refuse("sRGB loaded", 0));
                });
    viewer.show();

    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        const QImage picture = viewer.picture();
        if (viewer.volume(QStringLiteral("sRGB")) == 0.0f || picture.isNull() || !viewer.isSettled())
            return;
        look.stop();
        if (argc > 1)
            picture.save(QString::fromLocal8Bit(argv[1]));
        QCoreApplication::exit(judge(viewer, picture));
    });
    look.start(50);
    QTimer::singleShot(60000, [] { QCoreApplication::exit(refuse("seconds without a picture", 60)); });
    return QGuiApplication::exec();
}
