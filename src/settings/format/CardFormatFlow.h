#pragma once

#include "settings/format/CardFormatPlan.h"
#include "settings/format/CardSheet.h"

#include <QObject>

class CardFormatEngine;

// The format sequence of the settings editors as a state machine without
// widgets: check the folder, refuse or ask, run the format with the progress
// sheet whose button stays disabled until the tool has ended, then the result.
// The dialog draws sheet() whenever sheetChanged() is emitted and sends the
// button the user chose to answer().
class CardFormatFlow final : public QObject {
    Q_OBJECT

public:
    enum class State { Idle, Checking, Refused, Asking, Formatting, Finished };

    explicit CardFormatFlow(CardFormatEngine& engine, QObject* parent = nullptr);

    // memoryCardFormatButtonTouched / askFormat: checks the card's root folder,
    // then shows the refusal or the question. Ignored while a sheet is open.
    void start(const QString& cardRoot);

    // The button chosen on the open sheet (1000 first, 1001 second). On the
    // question, below 1001 ("아니오") closes it with nothing run; "예" starts
    // the format. On the refusal and result sheets it closes them; on the
    // progress sheet it is ignored (the button is disabled).
    void answer(int returnCode);

    State state() const { return m_state; }
    const CardSheet& sheet() const { return m_sheet; }
    const FormatPlan& plan() const { return m_plan; }
    const FormatResult& result() const { return m_result; }

signals:
    void sheetChanged();
    // The format has ended (the result sheet is up).
    void formatFinished(bool formatted);

private:
    void onInspected(const FormatPlan& plan);
    void onFormatted(const FormatResult& result);
    void show(State state, CardSheet sheet);

    CardFormatEngine& m_engine;
    State m_state = State::Idle;
    CardSheet m_sheet;
    FormatPlan m_plan;
    FormatResult m_result;
};
