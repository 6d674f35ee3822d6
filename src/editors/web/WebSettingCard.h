#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

// The card files the web settings window touches, all under the card's
// "SETTING" folder, and the clock request the page edits.
namespace WebSettingCard {

// The address of <folder>/SETTING/html/index.html, made from the path so
// that every character of the folder stays part of the path: a blank is
// written "%20", and "#", "?" or "%" in a card's folder name neither start a
// fragment or query nor an escape.
QUrl indexHtmlFilename(const QString& folder);
QString cfgFilename(const QString& folder);
QString defaultCfgFilename(const QString& folder);
QString adasFilename(const QString& folder);
QString timedateFilename(const QString& folder);
// The folder the page may read from: <folder>/SETTING/html.
QString htmlFolder(const QString& folder);

// A record file read whole; a missing, unreadable or implausibly large file
// (a record is a few hundred bytes) reads as no data.
QByteArray readRecord(const QString& path);

// The clock request as the page shows and edits it.
struct TimeRequest {
    QString date; // "yyyy,MM,dd"
    QString hour; // two characters as sent
    QString min;
};

// time.dat read as UTF-8: characters 0–9 the date, 11–12 the hour, 14–15 the
// minute. Nothing when the file is missing, unreadable or not UTF-8.
std::optional<TimeRequest> readTimeDat(const QString& path);
// The same from the file's bytes.
std::optional<TimeRequest> timeRequestFromBytes(const QByteArray& bytes);

// "<date>,<hour>,<min>,00,+0900": the camera takes the clock request in its
// home zone with whole minutes, whatever the computer's zone.
QByteArray timeDatText(const TimeRequest& request);

// Writes a card file atomically under the card's SETTING folder; false on failure.
bool writeSettingFile(const QString& folder, const QString& name, const QByteArray& bytes);

} // namespace WebSettingCard
