#include "config/TimeDatFile.h"

#include "config/CardFiles.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTimeZone>

namespace TimeDatFile {

namespace {
const QString kTimeFile = QStringLiteral("time.dat");
}

QByteArray format(const QDateTime& dateTime)
{
    const int offsetMinutes = dateTime.offsetFromUtc() / 60;
    const int magnitude = offsetMinutes < 0 ? -offsetMinutes : offsetMinutes;
    const QString zone = QStringLiteral("%1%2%3")
                             .arg(QChar(offsetMinutes < 0 ? u'-' : u'+'))
                             .arg(magnitude / 60, 2, 10, QLatin1Char('0'))
                             .arg(magnitude % 60, 2, 10, QLatin1Char('0'));
    return (dateTime.toString(QStringLiteral("yyyy,MM,dd,HH,mm,ss,")) + zone).toUtf8();
}

bool write(const QString& cardRoot, const QDateTime& dateTime)
{
    return CardFiles::writeSettingFile(cardRoot, kTimeFile, format(dateTime));
}

bool remove(const QString& cardRoot)
{
    // Both spellings of the folder may hold one.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const QString path = CardFiles::findSettingFile(cardRoot, kTimeFile);
        if (path.isEmpty())
            return true;
        if (!QFile::remove(path))
            return false;
    }
    return CardFiles::findSettingFile(cardRoot, kTimeFile).isEmpty();
}

std::optional<QDateTime> parse(const QByteArray& bytes)
{
    // A request is one short line; anything longer is not one.
    constexpr qsizetype kLongestRequest = 64;
    if (bytes.size() > kLongestRequest)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = QString(decoder.decode(bytes)).trimmed();
    if (decoder.hasError())
        return std::nullopt;
    static const QRegularExpression kPattern(
        QStringLiteral("^([0-9]{4}),([0-9]{2}),([0-9]{2}),([0-9]{2}),([0-9]{2}),([0-9]{2}),([+-])(["
                       "0-9]{2})([0-9]{2})$"));
    const QRegularExpressionMatch match = kPattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    const QDate date(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6));
    const int zoneMinutes = number(8) * 60 + number(9);
    if (!date.isValid() || !time.isValid() || number(8) > 14 || number(9) > 59)
        return std::nullopt;
    const int offsetSeconds = (match.captured(7) == u'-' ? -zoneMinutes : zoneMinutes) * 60;
    const QDateTime dateTime(date, time, QTimeZone(offsetSeconds));
    if (!dateTime.isValid())
        return std::nullopt;
    return dateTime;
}

std::optional<QDateTime> read(const QString& cardRoot)
{
    const QString path = CardFiles::findSettingFile(cardRoot, kTimeFile);
    QByteArray bytes;
    if (cardRoot.isEmpty() || path.isEmpty() || !CardFiles::readWhole(path, bytes))
        return std::nullopt;
    return parse(bytes);
}

} // namespace TimeDatFile
