// SPDX-License-Identifier: Apache-2.0
// Writes small initial inputs of every kind for the fuzzers:  make_fuzz_seeds FOLDER KEPT
// For each reader there are a folder FOLDER/reader, and FOLDER/reader.list, which lists its files in the form
// of the fuzzers' option -seed_inputs. Binary inputs are made here, texts are copied from KEPT/seeds/reader,
// and inputs that once failed from KEPT/found/reader, except for those of the engine.

#include "app/support/TestPictures.h"
#include "engine/TestProfiles.h"
#include "model/inputs/SavedGamut.h"

#include <QtCore/QCborMap>
#include <QtCore/QCborValue>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QIODevice>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>
#include <QtCore/QtEndian>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>

using namespace testprofiles;

namespace {

bool write(const QString& folder, const char* name, const QByteArray& bytes)
{
    QFile file(QDir(folder).filePath(QLatin1String(name)));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

Lab box(const std::vector<double>& d)
{
    return {100 * d[0], -50 + 100 * d[1 % d.size()], -50 + 100 * d.back()};
}

Lab folded(const std::vector<double>& d)
{
    return {10 + 80 * d[0], -40 + 80 * d[1], 60.0 * (1.0 - 4.0 * (d[2] - 0.5) * (d[2] - 0.5))};
}

Lab wound(const std::vector<double>& d)
{
    const double angle = 3.0 * M_PI * d[1], radius = 40.0 + 10.0 * d[2];
    return {45 + 10 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
}

QByteArray matrixProfile(double version)
{
    const cmsCIExyY white{0.3457, 0.3585, 1.0};
    const cmsCIExyYTRIPLE primaries{{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, 2.2);
    cmsToneCurve* curves[] = {curve, curve, curve};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsSetProfileVersion(profile, version);
    const QByteArray bytes = saved(profile);
    cmsCloseProfile(profile);
    cmsFreeToneCurve(curve);
    return bytes;
}

// A version 2 table, of eight or sixteen bits.
QByteArray legacyTable(bool eightBits)
{
    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 2.1);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 4, 3);
    cmsStage* table = cmsStageAllocCLut16bit(nullptr, 2, 4, 3, nullptr);
    const auto sample = [](const cmsUInt16Number in[], cmsUInt16Number out[], void*) -> cmsInt32Number {
        for (int i = 0; i < 3; ++i)
            out[i] = static_cast<cmsUInt16Number>(65535 - (in[i] / 2 + in[3] / 2));
        return TRUE;
    };
    cmsStageSampleCLut16bit(table, sample, nullptr, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 4, nullptr));
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
    cmsPipelineSetSaveAs8bitsFlag(pipeline, eightBits);
    cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
    const QByteArray bytes = saved(profile);
    cmsPipelineFree(pipeline);
    cmsCloseProfile(profile);
    return bytes;
}

// Processing elements: a curve, a matrix.
QByteArray elementProfile()
{
    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, cmsSigDisplayClass);
    cmsSetColorSpace(profile, cmsSigRgbData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 3, 3);
    cmsCurveSegment segment{-1e22f, 1e22f, 6, {1, 1, 0, 0}, 0, nullptr};
    cmsToneCurve* curve = cmsBuildSegmentedToneCurve(nullptr, 1, &segment);
    cmsToneCurve* curves[] = {curve, curve, curve};
    const double matrix[] = {100, 0, 0, 0, 100, -20, 10, 0, 100}, offset[] = {0, -50, -50};
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, curves));
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocMatrix(nullptr, 3, 3, matrix, offset));
    cmsWriteTag(profile, cmsSigDToB1Tag, pipeline);
    const QByteArray bytes = saved(profile);
    cmsPipelineFree(pipeline);
    cmsFreeToneCurve(curve);
    cmsCloseProfile(profile);
    return bytes;
}

bool writeProfiles(const QString& folder)
{
    return write(folder, "matrix2.icc", matrixProfile(2.1)) &&
           write(folder, "matrix4.icc", matrixProfile(4.3)) &&
           write(folder, "legacy8.icc", legacyTable(true)) &&
           write(folder, "legacy16.icc", legacyTable(false)) &&
           write(folder, "elements.icc", elementProfile()) &&
           write(folder, "box.icc", tableProfile(cmsSigRgbData, 2, box)) &&
           write(folder, "folded.icc", tableProfile(cmsSigYCbCrData, 5, folded)) &&
           write(folder, "wound.icc", tableProfile(cmsSigRgbData, 9, wound)) &&
           write(folder, "four.icc", tableProfile(cmsSigCmykData, 2, box)) &&
           write(folder, "six.icc", tableProfile(cmsSig6colorData, 2, box)) &&
           write(folder, "seven.icc", tableProfile(cmsSig7colorData, 2, box)) &&
           write(folder, "grey.icc", tableProfile(cmsSigGrayData, 2, box));
}

bool writeHashes(const QString& folder)
{
    const auto gamut = gamutOf(opened(tableProfile(cmsSigRgbData, 2, box)), 3);
    const auto rounded = gamutOf(opened(matrixProfile(4.3)), 4);
    const auto hash = gamut.serialize();
    const QByteArray key = hash.value(QStringLiteral("Gamut")).toByteArray();
    QByteArray stream;
    QDataStream out(&stream, QIODevice::WriteOnly);
    out << hash;
    return write(folder, "body", QByteArray(1, '\4') + QByteArray::fromBase64(key)) &&
           write(folder, "rounded",
                 QByteArray(1, '\4') +
                     QByteArray::fromBase64(
                         rounded.serialize().value(QStringLiteral("Gamut")).toByteArray())) &&
           write(folder, "stream", QByteArray(1, '\1') + stream) &&
           write(folder, "cbor",
                 QByteArray(1, '\2') + QCborMap::fromVariantHash(hash).toCborValue().toCbor()) &&
           write(folder, "json",
                 QByteArray(1, '\3') + QJsonDocument(QJsonObject::fromVariantHash(hash)).toJson());
}

bool writeSavedGamuts(const QString& folder)
{
    const auto gamut = gamutOf(opened(tableProfile(cmsSigRgbData, 2, box)), 3);
    return write(folder, "box.kvgamut", SavedGamut{gamut.serialize(), QStringLiteral("box.icc")}.bytes()) &&
           write(folder, "unnamed.kvgamut", SavedGamut{gamut.serialize(), {}}.bytes());
}

template <typename Number>
QByteArray big(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray utf16(const char* text)
{
    QByteArray bytes;
    for (const char* at = text; *at != '\0'; ++at)
        bytes.append('\0').append(*at);
    return bytes;
}

// A colour of a swatch exchange file.
QByteArray swatch(const char* name, const QByteArray& model, const QList<float>& values)
{
    const QByteArray text = utf16(name) + QByteArray(2, '\0');
    QByteArray body = big(quint16(text.size() / 2)) + text + model;
    for (const float value : values)
        body += big(std::bit_cast<quint32>(value));
    body += big(quint16(0));
    return big(quint16(1)) + big(quint32(body.size())) + body;
}

// A profile with nothing but the tag @p name: a gamut boundary, a tetrahedron.
QByteArray boundary(const char* name, const char* pcs, quint16 deviceChannels, const QList<float>& points)
{
    QByteArray tag =
        "gbd " + big(quint32(0)) + big(quint16(3)) + big(deviceChannels) + big(quint32(4)) + big(quint32(4));
    for (const quint32 vertex : {0, 1, 2, 0, 2, 3, 0, 3, 1, 1, 3, 2})
        tag += big(vertex);
    for (const float value : points)
        tag += big(std::bit_cast<quint32>(value));
    tag += QByteArray(4 * 4 * deviceChannels, '\0');
    QByteArray file(128, '\0');
    file.replace(8, 4, big(quint32(0x05000000))).replace(20, 4, pcs).replace(36, 4, "acsp");
    return file + big(quint32(1)) + name + big(quint32(144)) + big(quint32(tag.size())) + tag;
}

bool writeBoundaries(const QString& folder)
{
    return write(folder, "lab.icc",
                 boundary("gbd1", "Lab ", 0, {20, 0, 0, 50, 0, 0, 20, 30, 0, 20, 0, 30})) &&
           write(folder, "xyz.icc",
                 boundary("gbd3", "XYZ ", 4, {.96f, 1, .82f, 0, 0, 0, .4f, .2f, .05f, .1f, .1f, .6f}));
}

bool writeSwatches(const QString& folder)
{
    const auto file = [](const QList<QByteArray>& blocks) {
        return "ASEF" + big(quint32(0x10000)) + big(quint32(blocks.size())) + blocks.join();
    };
    const QByteArray groupEnd = big(quint16(0xC002)) + big(quint32(0));
    return write(folder, "lab.ase",
                 file({swatch("lab", "LAB ", {0.5f, 1, 2}), swatch("g", "Gray", {0.5f})})) &&
           write(folder, "mixed.ase",
                 file({swatch("red", "RGB ", {1, 0, 0}), groupEnd, swatch("c", "CMYK", {1, 0, 0, 0})}));
}

bool writeBooks(const QString& folder)
{
    const auto text = [](const char* words) { return big(quint32(std::strlen(words))) + utf16(words); };
    const auto file = [&text](int space, const QByteArray& values) {
        return "8BCB" + big(quint32(0x10000)) + text("$$$/colorbook/x/title=A book") + text("BOOK ") +
               text(" C") + text("") + big(quint16(1)) + big(quint16(7)) + big(quint16(3)) +
               big(quint16(space)) + text("185") + "000001" + values + "spflspot";
    };
    return write(folder, "lab.acb", file(7, "\x80\x90\x70")) &&
           write(folder, "rgb.acb", file(0, "\xff\x10\x10"));
}

// With a profile of three, one or four channels, and without one.
void writePictures(const QDir& root)
{
    const QByteArray rgb = matrixProfile(4.3);
    const QByteArray grey = tableProfile(cmsSigGrayData, 2, box);
    const QByteArray cmyk = tableProfile(cmsSigCmykData, 2, box);
    const auto pathOf = [&root](const char* name) { return root.filePath(QLatin1String(name)); };
    testpictures::writePng(pathOf("png/rgb.png"), rgb);
    testpictures::writePng(pathOf("png/plain.png"), {});
    testpictures::writePng(pathOf("reference/rgb.png"), rgb);
    testpictures::writePng(pathOf("reference/plain.png"), {});
    testpictures::writeJpeg(pathOf("jpeg/rgb.jpg"), rgb);
    testpictures::writeJpeg(pathOf("jpeg/grey.jpg"), grey);
    testpictures::writeJpeg(pathOf("jpeg/plain.jpg"), {});
    testpictures::writeCmykJpeg(pathOf("jpeg/cmyk.jpg"), cmyk);
    for (const char* mode : {"l", "b", "l8", "b8"})
        testpictures::writeCmykTiff(pathOf("tiff/cmyk-") + QLatin1String(mode), cmyk, mode);
    testpictures::writeCmykTiff(pathOf("tiff/plain"), {});
}

// The files of KEPT/seeds and KEPT/found.
bool copyKept(const QDir& root, const QDir& kept)
{
    QDirIterator files(kept.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        const QString relative = kept.relativeFilePath(file.path()); // seeds/reader or found/reader
        const QString kind = relative.section(QLatin1Char('/'), 0, 0);
        const QString reader = relative.section(QLatin1Char('/'), 1);
        // those of the engine take seconds each, with the sanitizers; test_fuzz_found reads them
        const bool isSlow = reader == QLatin1String("profile") || reader == QLatin1String("gamut_hash");
        if (kind != QLatin1String("seeds") && (kind != QLatin1String("found") || isSlow))
            continue;
        const QString folder = root.filePath(reader);
        const QString copy = QStringLiteral("%1/%2-%3").arg(folder, kind, file.fileName());
        if (!root.mkpath(folder) || !QFile::copy(file.filePath(), copy))
            return false;
    }
    return true;
}

bool writeList(const QString& folder)
{
    QStringList paths;
    for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files, QDir::Name))
        paths.append(info.absoluteFilePath());
    QFile file(folder + QStringLiteral(".list"));
    return file.open(QIODevice::WriteOnly) && file.write(paths.join(QLatin1Char(',')).toLocal8Bit()) > 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_fuzz_seeds FOLDER KEPT\n");
        return 2;
    }
    const QDir root(QString::fromLocal8Bit(argv[1]));
    for (const char* reader : {"profile", "gamut_hash", "saved_gamut", "png", "reference", "jpeg", "tiff",
                               "ase", "acb", "boundary"})
        root.mkpath(QLatin1String(reader));
    bool done = copyKept(root, QDir(QString::fromLocal8Bit(argv[2]))) &&
                writeProfiles(root.filePath(QStringLiteral("profile"))) &&
                writeHashes(root.filePath(QStringLiteral("gamut_hash"))) &&
                writeSavedGamuts(root.filePath(QStringLiteral("saved_gamut"))) &&
                writeSwatches(root.filePath(QStringLiteral("ase"))) &&
                writeBooks(root.filePath(QStringLiteral("acb"))) &&
                writeBoundaries(root.filePath(QStringLiteral("boundary")));
    writePictures(root);
    for (const QString& reader : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        done = done && writeList(root.filePath(reader));
    if (!done)
        std::fprintf(stderr, "make_fuzz_seeds: cannot write to %s\n", argv[1]);
    return done ? 0 : 1;
}
