#pragma once

#include "DemoOptions.h"

#include <QString>
#include <QTextStream>

// Writes the demo card (and the small cards beside it) as options say.
class DemoCard {
public:
    explicit DemoCard(DemoOptions options)
        : m_options(std::move(options))
    {
    }

    // False with errorString() on failure. A card made earlier with the same
    // options is left as it is (unless forced).
    bool generate(QTextStream& log);
    QString errorString() const { return m_error; }

    // The small cards beside the main one.
    static QString kelCardPath(const QString& outDir) { return outDir + QStringLiteral("-kel"); }
    static QString webCardPath(const QString& outDir) { return outDir + QStringLiteral("-web"); }

private:
    bool prepareFolder(const QString& dir, bool& upToDate);
    bool writeClips(QTextStream& log, QStringList& written);
    bool writeExtraCards(const QStringList& written);
    // The stamp marks a folder as ours; an unfinished one is written again next time.
    bool writeStamp(const QString& dir, bool finished);

    DemoOptions m_options;
    QString m_error;
};
