#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <ctime>

// Runs a test on another computer's clock: TZ names the local zone (e.g.
// "Asia/Tokyo") until the object goes, then the zone before comes back.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone)
        : m_hadZone(qEnvironmentVariableIsSet("TZ"))
        , m_zone(qgetenv("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~ScopedTimeZone()
    {
        if (m_hadZone)
            qputenv("TZ", m_zone);
        else
            qunsetenv("TZ");
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    bool m_hadZone;
    QByteArray m_zone;
};
