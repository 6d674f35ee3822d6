#include "config/KelSettingManager.h"

#include "config/AlertSink.h"
#include "config/CardFiles.h"
#include "config/ConfigLog.h"
#include "config/ModelCatalogue.h"
#include "config/TolmSettingManager.h"

#include <QFile>

namespace {

const QString kBlackboxFile = QStringLiteral("blackbox.cfg");
const QString kDefaultResource = QStringLiteral(":/config/default_Wenna.cfg");
const QString kClockSetKey = QStringLiteral("set=");
const QStringList kClockKeys { QStringLiteral("year="), QStringLiteral("month="),
    QStringLiteral("day="), QStringLiteral("hour="), QStringLiteral("min="),
    QStringLiteral("sec=") };

KelSettingManager& sharedManager()
{
    static KelSettingManager manager;
    return manager;
}

qsizetype indexOfKey(const QStringList& lines, const QString& key)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].startsWith(key))
            return i;
    }
    return -1;
}

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

} // namespace

KelSettingManager* KelSettingManager::SharedKelSettingManager()
{
    return &sharedManager();
}

KelSettingManager* KelSettingManager::setSharedKelSettingManager(
    std::unique_ptr<KelSettingManager> manager)
{
    KelSettingManager& shared = sharedManager();
    if (!manager)
        shared = KelSettingManager();
    else if (manager.get() != &shared)
        shared = std::move(*manager);
    else
        (void)manager.release(); // the shared instance itself is never freed
    return &shared;
}

QStringList KelSettingManager::linesFromText(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    // Only CRLF ends a line: a bare line feed stays inside its line.
    return text.mid(begin, end - begin).split(QStringLiteral("\r\n"));
}

QByteArray KelSettingManager::textFromLines(const QStringList& lines)
{
    return lines.join(QStringLiteral("\r\n")).toUtf8();
}

QByteArray KelSettingManager::defaultFileText()
{
    QFile file(kDefaultResource);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

void KelSettingManager::loadData()
{
    const QString root = TolmSettingManager::SharedTolmSettingManager()->settingDirPath();
    const QString path = CardFiles::findSettingFile(root, kBlackboxFile);
    if (root.isEmpty() || path.isEmpty()) {
        loadDefaultData_Wenna();
        return;
    }
    QByteArray text;
    if (!CardFiles::readWhole(path, text)) {
        qCWarning(lcConfig) << "cannot read" << path;
        m_linedSettings.clear();
        m_cardFileUnread = true;
        return;
    }
    m_linedSettings = linesFromText(text);
    m_cardFileUnread = false;
}

void KelSettingManager::loadDefaultValue()
{
    if (TolmSettingManager::SharedTolmSettingManager()->modelType()
        == ModelCatalogue::kWennaModelType)
        loadDefaultData_Wenna();
}

void KelSettingManager::loadDefaultData_Wenna()
{
    const QByteArray text = defaultFileText();
    m_linedSettings = text.isEmpty() ? QStringList() : linesFromText(text);
    m_cardFileUnread = false;
}

bool KelSettingManager::saveData()
{
    const QString root = TolmSettingManager::SharedTolmSettingManager()->settingDirPath();
    if (m_cardFileUnread) {
        qCWarning(lcConfig) << "blackbox.cfg was not read; the card's file is kept";
        showMemoryCardAlert();
        return false;
    }
    if (root.isEmpty()
        || !CardFiles::writeSettingFile(root, kBlackboxFile, textFromLines(m_linedSettings))) {
        showMemoryCardAlert();
        return false;
    }
    return true;
}

void KelSettingManager::removeTimeDateDelimiters()
{
    for (const QString& key : kClockKeys) {
        const qsizetype index = indexOfKey(m_linedSettings, key);
        if (index >= 0)
            m_linedSettings.removeAt(index);
    }
}

void KelSettingManager::addTimeDateDelimiters(const QStringList& lines)
{
    const qsizetype setLine = indexOfKey(m_linedSettings, kClockSetKey);
    qsizetype position = setLine >= 0 ? setLine + 1 : 1;
    position = std::min(position, m_linedSettings.size());
    for (const QString& line : lines)
        m_linedSettings.insert(position++, line);
}

QStringList KelSettingManager::clockLines(const QDateTime& dateTime)
{
    const QDate date = dateTime.date();
    const QTime time = dateTime.time();
    const int values[]
        = { date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second() };
    QStringList lines;
    for (qsizetype i = 0; i < kClockKeys.size(); ++i)
        lines.append(kClockKeys[i] + QString::number(values[i]));
    return lines;
}

bool KelSettingManager::setCameraClock(const QDateTime& dateTime)
{
    removeTimeDateDelimiters();
    addTimeDateDelimiters(clockLines(dateTime.toLocalTime()));
    return saveData();
}

QString KelSettingManager::valueForKey(const QString& key) const
{
    const qsizetype index = indexOfKey(m_linedSettings, key);
    return index < 0 ? QString() : m_linedSettings[index].mid(key.size());
}

bool KelSettingManager::setValueForKey(const QString& key, const QString& value)
{
    const qsizetype index = indexOfKey(m_linedSettings, key);
    if (index < 0)
        return false;
    m_linedSettings[index] = key + value;
    return true;
}

const QList<QMap<QString, QString>>& KelSettingManager::memoryPartitionRatiosArray()
{
    // Each type leaves 5 % of the card unallocated; the camera expects that.
    static const QList<QMap<QString, QString>> kRatios = [] {
        const auto entry
            = [](const char* continuous, const char* event, const char* park, const char* manual) {
                  return QMap<QString, QString> {
                      { QStringLiteral("continuous"), QString::fromLatin1(continuous) },
                      { QStringLiteral("event"), QString::fromLatin1(event) },
                      { QStringLiteral("park"), QString::fromLatin1(park) },
                      { QStringLiteral("manual"), QString::fromLatin1(manual) },
                  };
              };
        return QList<QMap<QString, QString>> { entry("60", "22", "4", "9"),
            entry("35", "17", "4", "39"), entry("53", "19", "14", "9") };
    }();
    return kRatios;
}

void KelSettingManager::showMemoryCardAlert() const
{
    AlertSink& sink = m_alertSink ? *m_alertSink : AlertSink::shared();
    sink.showAlert(AlertRequest::memoryCardError());
}
