#pragma once

#include "settings/format/CardSheet.h"

#include <QObject>
#include <QString>

// The camera resets its touch-screen calibration at its next start when it
// finds an empty "Set_touch_cal.txt" in the card's root folder; the empty file
// is the whole request.
namespace TouchCalibration {

inline const QString kMarkerFileName = QStringLiteral("Set_touch_cal.txt");

QString markerPath(const QString& cardRoot);

// Leaves the empty marker in the card's root folder; an existing file of that
// name is replaced atomically by an empty one. False when it can't be written
// (the old file, if any, is then left as it was).
bool writeMarker(const QString& cardRoot);

} // namespace TouchCalibration

// initializeTouchButtonTouched as a state machine without widgets: the
// question, then (on "예") the marker written off the user-interface thread and
// the completion sheet. "아니오" writes nothing.
class TouchCalibrationFlow final : public QObject {
    Q_OBJECT

public:
    enum class State { Idle, Asking, Writing, Done };

    explicit TouchCalibrationFlow(QObject* parent = nullptr);

    // Shows the question for the card in `cardRoot`. Ignored while a sheet is open.
    void start(const QString& cardRoot);
    // The button chosen on the open sheet (1000 first, 1001 second).
    void answer(int returnCode);

    State state() const { return m_state; }
    const CardSheet& sheet() const { return m_sheet; }
    // Whether the marker was written (the completion sheet shows either way).
    bool written() const { return m_written; }

signals:
    void sheetChanged();

private:
    void show(State state, CardSheet sheet);

    State m_state = State::Idle;
    CardSheet m_sheet;
    QString m_cardRoot;
    bool m_written = false;
};
