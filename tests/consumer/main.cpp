// SPDX-License-Identifier: Apache-2.0
// Shows sRGB with both public classes, waits until it is drawn and checks the picture. The exit code is 0 if
// the library, its shaders and its colour engine work; otherwise an error is printed.
//
//   consumer [picture.png]

#include <KVGamut3DViewer.h>
#include <KVGamutView.h>
#include <platform/KVVelmoraFramework.h>

#include <QtCore/QTimer>
#include <QtGui/QColorSpace>
#include <QtGui/QGuiApplication>

#include <cmath>
#include <cstdio>
#include <set>

namespace {

// The published volume of sRGB in Lab (D50).
constexpr float srgbVolume = 832000.0f;

bool isVolumeOfSrgb(float volume)
{
    return std::fabs(volume / srgbVolume - 1.0f) < 0.01f;
}

/// The sixths of the hue circle that the picture shows in saturated colours.
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

int fail(const char* what, double value)
{
    std::fprintf(stderr, "consumer: %s: %g\n", what, value);
    return 1;
}

int check(const KVGamut3DViewer& viewer, const QImage& picture)
{
    if (!isVolumeOfSrgb(viewer.volume(QStringLiteral("sRGB"))))
        return fail("wrong volume of sRGB in the viewer", viewer.volume(QStringLiteral("sRGB")));
    // From above, the surface shows every hue. Without shaders there would be only background.
    if (strongHues(picture).size() != 6)
        return fail("wrong number of drawn sixths of the hue circle", double(strongHues(picture).size()));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QByteArray profile = QColorSpace(QColorSpace::SRgb).iccProfile();

    // The colour engine alone.
    const KVProfilePtr opened(KVProfileCreateWithData(profile.constData(), int(profile.size())),
                              KVProfileRelease);
    KVGamut::Settings settings;
    settings.intent = KVVMRenderRelativeColorimetric;
    KVGamut::GamutObject gamut;
    gamut.init(opened, settings);
    if (!isVolumeOfSrgb(gamut.volume()))
        return fail("wrong volume of sRGB in the engine", gamut.volume());

    // The viewer with the view attached to it, and a load by each of them.
    KVGamut3DViewer viewer;
    viewer.resize(320, 240);
    KVGamutView view(&viewer);
    QObject::connect(&view, &KVGamutView::failed, [](const QString&, const KVProblem& problem) {
        std::fprintf(stderr, "consumer: %s\n", qPrintable(problem.text()));
        QCoreApplication::exit(1);
    });
    view.show(QStringLiteral("sRGB"), gamut);
    const QHash<QString, QVariant> relative{{QStringLiteral("Link_ICCRendering"), 1}};
    viewer.load(QStringLiteral("from the profile"),
                {{QStringLiteral("ProfileData"), profile}, {QStringLiteral("AdditionnalParam"), relative}},
                [&](const QString& id, bool loaded) {
                    if (!loaded || !isVolumeOfSrgb(viewer.volume(id)))
                        QCoreApplication::exit(fail("wrong volume of a loaded profile", viewer.volume(id)));
                });
    viewer.show();

    QObject::connect(&view, &KVGamutView::settled, [&] {
        if (view.isLoading() || viewer.gamuts().size() != 2)
            return;
        const QImage picture = viewer.picture();
        if (argc > 1)
            picture.save(QString::fromLocal8Bit(argv[1]));
        QCoreApplication::exit(check(viewer, picture));
    });
    QTimer::singleShot(300000, [] { QCoreApplication::exit(fail("seconds without a picture", 300)); });
    return QGuiApplication::exec();
}
