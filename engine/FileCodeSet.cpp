#include "engine/FileCodeSet.h"

#include "engine/CodeSet.h"
#include "engine/CodeSetDetector.h"
#include "engine/RegularFile.h"
#include "engine/TextDecoder.h"

#include <QByteArray>
#include <QDebug>

#include <algorithm>

namespace {

int sampleSizeOf(qint64 available, const DetectionSettings &settings)
{
    const int wanted = std::clamp(settings.sampleSize, 0, kLargestSample);
    return int(std::min<qint64>(available, wanted));
}

bool isTooLarge(qint64 fileSize, const DetectionSettings &settings)
{
    return fileSize > std::min(settings.sizeLimitBytes, kLargestText);
}

QByteArray readSample(RegularFile *file, const DetectionSettings &settings)
{
    QByteArray sample(sampleSizeOf(file->size(), settings), Qt::Uninitialized);
    sample.truncate(int(file->read(sample.data(), sample.size())));
    return sample;
}

int codeSetOfSample(const char *sample, int size, int *lineEnd, bool *bom,
                    const DetectionSettings &settings)
{
    if (isBinarySample(sample, size))
        return kFileRefused;
    return detectCodeSet(sample, size, lineEnd, bom, settings.detectSize);
}

int useFallback(int *lineEnd, bool *bom, const DetectionSettings &settings)
{
    *lineEnd = settings.fallbackLineEnd;
    *bom = settings.fallbackBom;
    return settings.fallbackCodeSet;
}

} // namespace

int codeSetOfContent(const char *bytes, qint64 readSize, qint64 fileSize,
                     const DetectionSettings &settings, int *lineEnd, bool *bom)
{
    if (lineEnd != nullptr)
        *lineEnd = CodeSet::CrLf;
    if (bom != nullptr)
        *bom = false;
    if (isTooLarge(fileSize, settings))
        return kFileRefused;
    const int size = sampleSizeOf(std::min(readSize, fileSize), settings);
    return codeSetOfSample(bytes, size, lineEnd, bom, settings);
}

int getFileCodeSet(const QString &path, int *lineEnd, const DetectionSettings &settings)
{
    RegularFile file(path);
    if (!file.isOpen()) {
        if (lineEnd != nullptr)
            *lineEnd = CodeSet::CrLf;
        return CodeSet::Default;
    }
    QByteArray sample;
    if (!isTooLarge(file.size(), settings))
        sample = readSample(&file, settings);
    return codeSetOfContent(sample.constData(), sample.size(), file.size(), settings, lineEnd);
}

int detectFileCodeSet(const QString &path, int *lineEnd, bool *bom,
                      const DetectionSettings &settings, const AutoDetectionBox &box)
{
    RegularFile file(path);
    if (!file.isOpen())
        return useFallback(lineEnd, bom, settings);
    *lineEnd = CodeSet::CrLf;
    *bom = false;
    const QByteArray sample = readSample(&file, settings);
    const int detected = codeSetOfSample(sample.constData(), sample.size(), lineEnd, bom, settings);
    if (detected == kFileRefused)
        return kFileRefused;
    qDebug() << "AutoDetection" << detected << "BOM=" << *bom;
    return codeSetOrFallback(detected, lineEnd, bom, settings, box);
}

int codeSetOrFallback(int detected, int *lineEnd, bool *bom, const DetectionSettings &settings,
                      const AutoDetectionBox &box)
{
    if (detected != CodeSet::Default)
        return detected;
    box(QStringLiteral("Auto Detection"),
        QStringLiteral("自動コード判定できませんでした。デフォルトにします。"));
    return useFallback(lineEnd, bom, settings);
}
