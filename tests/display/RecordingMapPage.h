#pragma once

#include "display/MapPage.h"

#include <QStringList>
#include <QUrl>

// A map page that only records what the controller asks of it.
class RecordingMapPage : public MapPage {
public:
    struct Log {
        QList<QUrl> loads;
        QStringList scripts;
    };

    explicit RecordingMapPage(Log& log)
        : m_log(log)
    {
    }
    void load(const QUrl& url) override { m_log.loads.append(url); }
    void runJavaScript(const QString& script) override { m_log.scripts.append(script); }

private:
    Log& m_log;
};
