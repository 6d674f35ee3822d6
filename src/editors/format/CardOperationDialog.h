#pragma once

#include "editors/format/CardSheetDialog.h"
#include "settings/format/CardFormatter.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class CardFormatFlow;
class QWidget;
class TouchCalibrationFlow;

// One card operation started from a settings editor, with its sheets over the
// editor's window. It returns at once; the sequence goes on from the event
// loop, and the object deletes itself (with its sheet) when the last sheet
// closes or the editor window goes.
class CardOperationDialog final : public QObject {
    Q_OBJECT

public:
    ~CardOperationDialog() override;

    CardSheetDialog* sheetDialog() const { return m_dialog; }

signals:
    // The format has ended (its result sheet is up).
    void formatFinished(bool formatted);
    // The last sheet has closed.
    void finished();

private:
    explicit CardOperationDialog(QWidget* parent);
    template <typename Flow> void attach(Flow* flow);

    friend CardOperationDialog* askFormat(
        QWidget*, const QString&, std::unique_ptr<CardFormatEngine>);
    friend CardOperationDialog* askTouchCalibrationReset(QWidget*, const QString&);

    std::unique_ptr<CardFormatEngine> m_engine;
    QPointer<CardSheetDialog> m_dialog;
};

// memoryCardFormatButtonTouched (native page) / askFormat (web settings
// window): checks that the card in `cardRoot` may be formatted, then shows the
// refusal, or the question and, on "예", the progress sheet and the result.
// `engine` is for tests; by default the real formatter runs.
CardOperationDialog* askFormat(
    QWidget* parent, const QString& cardRoot, std::unique_ptr<CardFormatEngine> engine = nullptr);

// initializeTouchButtonTouched (native page): asks, and on "예" leaves the
// empty Set_touch_cal.txt in `cardRoot` and shows the completion sheet.
CardOperationDialog* askTouchCalibrationReset(QWidget* parent, const QString& cardRoot);
