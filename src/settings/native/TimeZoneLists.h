#pragma once

#include <QList>
#include <QStringList>

// The time-zone lists of the native settings page (insertGMTData): the
// combo box's labels, each label's offset in minutes, and the camera's zone
// keys. The labels and the zone keys are two separate lists of different
// lengths; the page pairs them by position, as the camera's own program does.
struct TimeZoneLists {
    QStringList gmtDescList; // 39 labels, "UTC-12:00" … "UTC+14:00"
    QList<int> gmtHourList; // the offset of each label in minutes
    QStringList timezoneNameList; // 32 zone keys, "Samoa Standard Time" … "Dateline Standard Time"

    static const TimeZoneLists& insertGMTData();

    // "UTC-09:30" → -570, "UTC+05:45" → 345; any label not nine characters
    // long ("UTC") → 0.
    static int minutesOfLabel(const QString& label);
};
