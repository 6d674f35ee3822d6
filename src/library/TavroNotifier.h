#pragma once

#include <QObject>
#include <QString>

// The viewer's app-wide notification centre. Each signal stands for one of the
// notification names below; objects that re-apply texts or redraw on a
// preference change connect to it. One instance per process (`shared()`),
// created on first use and living until exit.
class TavroNotifier : public QObject {
    Q_OBJECT
public:
    static constexpr const char* kRefreshLanguageNotification = "RefreshLanguageNotification";
    static constexpr const char* kRefreshSpeedUnitNotification = "RefreshSpeedUnitNotification";

    static TavroNotifier& shared();

    // Posts the notification with that name; unknown names are ignored.
    void post(const QString& name);

signals:
    void refreshLanguage();  // "RefreshLanguageNotification": viewer language switched
    void refreshSpeedUnit(); // "RefreshSpeedUnitNotification": speed unit switched
    void volumeMounted(const QString& rootPath);
    void volumeUnmounted(const QString& rootPath);

private:
    TavroNotifier() = default;
};
