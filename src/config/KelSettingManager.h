#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>

class AlertSink;

// The Kel-family camera's settings file SETTING/blackbox.cfg, kept as its
// ordered list of lines. Edits replace whole lines, so lines, keys, comments
// and sections the viewer does not know survive a save untouched.
class KelSettingManager {
public:
    // The shared instance lives as long as the process, like the shared
    // TolmSettingManager: a page holding it stays valid across a replacement.
    static KelSettingManager* SharedKelSettingManager();
    // The shared instance takes over the contents of `manager` (of a fresh
    // one when null); returns the shared instance.
    static KelSettingManager* setSharedKelSettingManager(
        std::unique_ptr<KelSettingManager> manager);

    QStringList linedSettings() const { return m_linedSettings; }
    void setLinedSettings(const QStringList& lines) { m_linedSettings = lines; }

    // Lines from the card (the card folder of the shared TolmSettingManager),
    // or from the built-in default file when the card has none. A card file
    // that exists but can't be read leaves no lines, and the card file is
    // then not written over until lines are loaded again (see saveData).
    void loadData();
    void loadDefaultValue();
    void loadDefaultData_Wenna();
    // Writes the lines to SETTING/blackbox.cfg; false (after the memory-card
    // alert) without a card, when the write fails, or when the lines are not
    // the card's because its file could not be read: an empty or partial
    // file must not take the place of the camera's settings.
    bool saveData();

    // The clock lines of the [time] section.
    void removeTimeDateDelimiters();
    void addTimeDateDelimiters(const QStringList& lines);
    // Replaces the clock lines with those of `dateTime` and saves.
    bool setCameraClock(const QDateTime& dateTime);
    static QStringList clockLines(const QDateTime& dateTime);

    // The value after the first line beginning with `key` (key includes its
    // "="), or a null string when no line has the key.
    QString valueForKey(const QString& key) const;
    // Replaces the first line beginning with `key` by key + value; false when
    // no line has the key.
    bool setValueForKey(const QString& key, const QString& value);

    // Memory-partition percentages of the editor's types A, B and C, each a
    // map of "continuous", "event", "park" and "manual".
    static const QList<QMap<QString, QString>>& memoryPartitionRatiosArray();

    // The line model of a file's text and back: blanks and tabs trimmed from
    // both ends, split at CRLF only; joined with CRLF, none after the last.
    static QStringList linesFromText(const QByteArray& text);
    static QByteArray textFromLines(const QStringList& lines);

    // The built-in default file.
    static QByteArray defaultFileText();

    void setAlertSink(std::shared_ptr<AlertSink> sink) { m_alertSink = std::move(sink); }

private:
    void showMemoryCardAlert() const;

    QStringList m_linedSettings;
    bool m_cardFileUnread = false;
    std::shared_ptr<AlertSink> m_alertSink;
};
