#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVariant>

class WebSettingWindowController;

// The object the camera's settings page knows as its global "Dashcam". Each
// entry point forwards to the settings window's controller; the entries the
// page may call without effect ("log", "getCfg", "popup", "setdate:ampm",
// "format", "reset") are accepted and do nothing.
//
// The page reaches these slots over a QWebChannel through a small script
// installed before its own scripts run (WebDashcamShim), which gives every
// script name of scriptNames() — "setdate:use" included — a function.
// Arguments arrive as the page passed them; only text is taken as text.
class WebDashcam : public QObject {
    Q_OBJECT
public:
    // The name the page calls, and the slot it reaches.
    using ScriptName = QPair<QString, QByteArray>;
    static const QList<ScriptName>& scriptNames();

    explicit WebDashcam(WebSettingWindowController* controller);

    WebSettingWindowController* controller() const { return m_controller; }

public slots:
    void log(const QVariant& message);
    void getCfg(const QVariant& ignored);
    void popup(const QVariant& ignored);
    void showPopup(const QVariant& fields);
    void SetDateUse(const QVariant& use);
    void SetDate(const QVariant& date);
    void SetDateAmPm(const QVariant& ignored);
    void SetDateMin(const QVariant& minute);
    void SetDateHour(const QVariant& hour);
    void format();
    void reset();
    void adasreset();
    void docLoadComplete();
    void languageSetComplete();
    void clickedList();

private:
    WebSettingWindowController* m_controller; // owns this object
};
