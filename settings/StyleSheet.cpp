#include "settings/StyleSheet.h"

#include <QFile>

#include <algorithm>

std::optional<QString> StyleSheet::read(const QString &appDir)
{
    QFile file(appDir + QStringLiteral("sarvify.qss"));
    if (!file.exists())
        return std::nullopt;
    return file.open(QIODevice::ReadOnly) ? fromBytes(file.readAll(), appDir) : QString();
}

QString StyleSheet::fromBytes(const QByteArray &bytes, const QString &appDir)
{
    const auto end = std::find(bytes.begin(), bytes.end(), '\0');
    QString sheet = QString::fromUtf8(bytes.constData(), static_cast<int>(end - bytes.begin()));
    const QString url = QStringLiteral("url(");
    return sheet.replace(url, url + appDir);
}
