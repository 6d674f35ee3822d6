#include "editors/web/WebSettingCard.h"

#include "config/CardFiles.h"

#include <QFile>
#include <QStringDecoder>

namespace WebSettingCard {

namespace {

// Largest record file passed to the page (the longest layout has 596 bytes).
constexpr qint64 kMaxRecordBytes = 64 * 1024;
// time.dat is one short line; anything longer is not a clock request.
constexpr qint64 kMaxTimeDatBytes = 4 * 1024;

QString settingPath(const QString& folder, const char* name)
{
    return QStringLiteral("%1/SETTING/%2").arg(folder, QLatin1String(name));
}

std::optional<QByteArray> readBounded(const QString& path, qint64 limit)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > limit)
        return std::nullopt;
    QByteArray bytes = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > limit)
        return std::nullopt;
    return bytes;
}

} // namespace

QUrl indexHtmlFilename(const QString& folder)
{
    return QUrl::fromLocalFile(settingPath(folder, "html/index.html"));
}

QString cfgFilename(const QString& folder)
{
    return settingPath(folder, "setup.cfg");
}

QString defaultCfgFilename(const QString& folder)
{
    return settingPath(folder, "default.cfg");
}

QString adasFilename(const QString& folder)
{
    return settingPath(folder, "ADAS_CAL.dat");
}

QString timedateFilename(const QString& folder)
{
    return settingPath(folder, "time.dat");
}

QString htmlFolder(const QString& folder)
{
    return settingPath(folder, "html");
}

QByteArray readRecord(const QString& path)
{
    return readBounded(path, kMaxRecordBytes).value_or(QByteArray());
}

std::optional<TimeRequest> readTimeDat(const QString& path)
{
    const std::optional<QByteArray> bytes = readBounded(path, kMaxTimeDatBytes);
    if (!bytes)
        return std::nullopt;
    return timeRequestFromBytes(*bytes);
}

std::optional<TimeRequest> timeRequestFromBytes(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    if (utf8.hasError())
        return std::nullopt;
    return TimeRequest { text.mid(0, 10), text.mid(11, 2), text.mid(14, 2) };
}

QByteArray timeDatText(const TimeRequest& request)
{
    return QStringLiteral("%1,%2,%3,00,+0900")
        .arg(request.date, request.hour, request.min)
        .toUtf8();
}

bool writeSettingFile(const QString& folder, const QString& name, const QByteArray& bytes)
{
    return CardFiles::writeSettingFile(folder, name, bytes);
}

} // namespace WebSettingCard
