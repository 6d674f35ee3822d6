#include "config/TimeDatFile.h"

#include "config/CardFiles.h"

#include <QFile>

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

} // namespace TimeDatFile
