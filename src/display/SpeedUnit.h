#pragma once

#include <QObject>

// The speedometer as the speed-unit logic sees it: the last speed it was given
// (always km/h) and a way to show a speed again.
class SpeedUnitDisplay {
public:
    virtual ~SpeedUnitDisplay() = default;
    virtual int speed() const = 0;
    virtual void setSpeed(int kmh) = 0;
};

// The user's choice between km/h and mph: the "Speed unit" radio menu of the
// main window, the stored preference and the redraw of the speedometer when
// it changes. Holds no widgets; the window checks its menu items when
// `speedUnitItemMarked` fires.
class SpeedUnit : public QObject {
    Q_OBJECT
public:
    // Preference key in the user settings: 0 (or absent) km/h, 1 mph.
    static constexpr const char* kSpeedUnitKey = "TavroViewerSpeedUnit";
    static constexpr int kKmph = 0;
    static constexpr int kMph = 1;

    // Starts observing "RefreshSpeedUnitNotification".
    explicit SpeedUnit(QObject* parent = nullptr);

    // The stored value as it is (0 when absent). Views treat any non-zero value
    // as mph; the menu marks mph only for 1.
    static int storedSpeedUnit();

    // The speedometer redrawn on a unit change; not owned, may be null.
    void setSpeedometer(SpeedUnitDisplay* speedometer) { m_speedometer = speedometer; }

    void onMenuSpeedKmph();
    void onMenuSpeedMph();
    // Stores a changed unit at once and tells every view; choosing the unit
    // already stored does nothing.
    void setSpeedUnit(int unit);
    // Checks the menu item of the stored unit (start-up).
    void markCurrentSpeedUnit();
    // Shows the speedometer's last speed again in the new unit.
    void refreshSpeedUnitHandler();

signals:
    // The menu item of `unit` (kKmph or kMph) is now the checked radio item.
    void speedUnitItemMarked(int unit);

private:
    SpeedUnitDisplay* m_speedometer = nullptr;
};
