#include "settings/native/TimeZoneLists.h"

namespace {

TimeZoneLists build()
{
    TimeZoneLists lists;
    lists.gmtDescList = {
        QStringLiteral("UTC-12:00"),
        QStringLiteral("UTC-11:00"),
        QStringLiteral("UTC-10:00"),
        QStringLiteral("UTC-09:30"),
        QStringLiteral("UTC-09:00"),
        QStringLiteral("UTC-08:00"),
        QStringLiteral("UTC-07:00"),
        QStringLiteral("UTC-06:00"),
        QStringLiteral("UTC-05:00"),
        QStringLiteral("UTC-04:30"),
        QStringLiteral("UTC-04:00"),
        QStringLiteral("UTC-03:30"),
        QStringLiteral("UTC-03:00"),
        QStringLiteral("UTC-02:00"),
        QStringLiteral("UTC-01:00"),
        QStringLiteral("UTC"),
        QStringLiteral("UTC+01:00"),
        QStringLiteral("UTC+02:00"),
        QStringLiteral("UTC+03:00"),
        QStringLiteral("UTC+03:30"),
        QStringLiteral("UTC+04:00"),
        QStringLiteral("UTC+04:30"),
        QStringLiteral("UTC+05:00"),
        QStringLiteral("UTC+05:30"),
        QStringLiteral("UTC+05:45"),
        QStringLiteral("UTC+06:00"),
        QStringLiteral("UTC+06:30"),
        QStringLiteral("UTC+07:00"),
        QStringLiteral("UTC+08:00"),
        QStringLiteral("UTC+09:00"),
        QStringLiteral("UTC+09:30"),
        QStringLiteral("UTC+10:00"),
        QStringLiteral("UTC+10:30"),
        QStringLiteral("UTC+11:00"),
        QStringLiteral("UTC+11:30"),
        QStringLiteral("UTC+12:00"),
        QStringLiteral("UTC+12:45"),
        QStringLiteral("UTC+13:00"),
        QStringLiteral("UTC+14:00"),
    };
    for (const QString& label : lists.gmtDescList)
        lists.gmtHourList.append(TimeZoneLists::minutesOfLabel(label));
    lists.timezoneNameList = {
        QStringLiteral("Samoa Standard Time"),
        QStringLiteral("New Zealand Standard Time"),
        QStringLiteral("Central Pacific Standard Time"),
        QStringLiteral("E. Australia Standard Time"),
        QStringLiteral("AUS Central Standard Time"),
        QStringLiteral("Korea Standard Time"),
        QStringLiteral("Singapore Standard Time"),
        QStringLiteral("SE Asia Standard Time"),
        QStringLiteral("Myanmar Standard Time"),
        QStringLiteral("Central Asia Standard Time"),
        QStringLiteral("Nepal Standard Time"),
        QStringLiteral("India Standard Time"),
        QStringLiteral("West Asia Standard Time"),
        QStringLiteral("Afghanistan Standard Time"),
        QStringLiteral("Arabian Standard Time"),
        QStringLiteral("Iran Standard Time"),
        QStringLiteral("E. Africa Standard Time"),
        QStringLiteral("E. Europe Standard Time"),
        QStringLiteral("W. Europe Standard Time"),
        QStringLiteral("GMT Standard Time"),
        QStringLiteral("Azores Standard Time"),
        QStringLiteral("Mid-Atlantic Standard Time"),
        QStringLiteral("E. South America Standard Time"),
        QStringLiteral("Newfoundland Standard Time"),
        QStringLiteral("SA Western Standard Time"),
        QStringLiteral("Eastern Standard Time"),
        QStringLiteral("Central Standard Time"),
        QStringLiteral("Mountain Standard Time"),
        QStringLiteral("Pacific Standard Time"),
        QStringLiteral("Alaskan Standard Time"),
        QStringLiteral("Hawaiian Standard Time"),
        QStringLiteral("Dateline Standard Time"),
    };
    return lists;
}

} // namespace

const TimeZoneLists& TimeZoneLists::insertGMTData()
{
    static const TimeZoneLists kLists = build();
    return kLists;
}

int TimeZoneLists::minutesOfLabel(const QString& label)
{
    // "UTC±hh:mm": the hours carry the sign, the minutes follow it.
    if (label.size() != 9)
        return 0;
    bool hoursOk = false;
    bool minutesOk = false;
    const int hours = label.mid(3, 3).toInt(&hoursOk);
    int minutes = label.mid(7, 2).toInt(&minutesOk);
    if (!hoursOk || !minutesOk)
        return 0;
    if (hours < 0)
        minutes = -minutes;
    return hours * 60 + minutes;
}
