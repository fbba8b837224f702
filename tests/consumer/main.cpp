// SPDX-License-Identifier: Apache-2.0
// Shows sRGB, waits until it is drawn and checks the picture. The exit code is 0 if the library, its
// resources and its colour engine work; otherwise an error is printed.
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
    KVGamut::GamutObject gamut;
    gamut.init(opened, KVVMRenderRelativeColorimetric, false, false, 10.0f, -1, 0, nullptr);
    if (!isVolumeOfSrgb(gamut.volume()))
        return fail("wrong volume of sRGB in the engine", gamut.volume());

    // The colour engine in the viewer.
    KVGamut3DViewer viewer;
    viewer.resize(320, 240);
    const QHash<QString, QVariant> relative{{QStringLiteral("Link_ICCRendering"), 1}};
    viewer.load(QStringLiteral("sRGB"),
                {{QStringLiteral("ProfileData"), profile}, {QStringLiteral("AdditionnalParam"), relative}},
                [](const QString&, bool loaded) {
                    if (!loaded)
                        QCoreApplication::exit(fail("sRGB was not loaded", 0));
                });
    viewer.show();

    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        const QImage picture = viewer.picture();
        if (viewer.volume(QStringLiteral("sRGB")) == 0.0f || picture.isNull() || !viewer.isSettled())
            return;
        poll.stop();
        if (argc > 1)
            picture.save(QString::fromLocal8Bit(argv[1]));
        QCoreApplication::exit(check(viewer, picture));
    });
    poll.start(50);
    QTimer::singleShot(300000, [] { QCoreApplication::exit(fail("seconds without a picture", 300)); });
    return QGuiApplication::exec();
}
