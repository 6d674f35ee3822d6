#include "settings/format/CardFormatFlow.h"

#include "config/AlertSink.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/FormatLog.h"

namespace {

CardSheet okSheet(CardSheet::Kind kind, const QString& informativeKey)
{
    CardSheet sheet;
    sheet.kind = kind;
    sheet.messageKey = CardSheetKeys::kFormatTitle;
    sheet.informativeKey = informativeKey;
    sheet.buttonKeys = { CardSheetKeys::kOk };
    return sheet;
}

} // namespace

CardFormatFlow::CardFormatFlow(CardFormatEngine& engine, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
{
}

void CardFormatFlow::show(State state, CardSheet sheet)
{
    m_state = state;
    m_sheet = std::move(sheet);
    emit sheetChanged();
}

void CardFormatFlow::start(const QString& cardRoot)
{
    if (m_state != State::Idle)
        return;
    m_state = State::Checking;
    m_plan = {};
    m_result = {};
    m_engine.inspect(cardRoot, this, [this](const FormatPlan& plan) { onInspected(plan); });
}

void CardFormatFlow::onInspected(const FormatPlan& plan)
{
    if (m_state != State::Checking)
        return;
    m_plan = plan;
    if (!plan.allowed()) {
        qCDebug(lcFormat) << "refused:" << plan.reason;
        show(State::Refused, okSheet(CardSheet::Kind::Refusal, CardSheetKeys::kCannotFormat));
        return;
    }
    CardSheet question;
    question.kind = CardSheet::Kind::Question;
    question.messageKey = CardSheetKeys::kFormatTitle;
    question.informativeKey = CardSheetKeys::kFormatQuestion;
    question.buttonKeys = { CardSheetKeys::kNo, CardSheetKeys::kYes };
    show(State::Asking, question);
}

void CardFormatFlow::answer(int returnCode)
{
    switch (m_state) {
    case State::Asking:
        if (returnCode < AlertSink::kSecondButtonReturn) {
            show(State::Idle, {});
            return;
        }
        {
            CardSheet progress = okSheet(CardSheet::Kind::Progress, CardSheetKeys::kFormatting);
            progress.buttonsEnabled = false;
            progress.progressVisible = true;
            show(State::Formatting, progress);
        }
        m_engine.format(m_plan, this, [this](const FormatResult& result) { onFormatted(result); });
        return;
    case State::Refused:
    case State::Finished:
        show(State::Idle, {});
        return;
    case State::Idle:
    case State::Checking:
    case State::Formatting:
        return;
    }
}

void CardFormatFlow::onFormatted(const FormatResult& result)
{
    if (m_state != State::Formatting)
        return;
    m_result = result;
    qCDebug(lcFormat) << "format ended" << int(result.outcome) << result.detail;
    CardSheet sheet = m_sheet;
    sheet.kind = CardSheet::Kind::Result;
    sheet.buttonsEnabled = true;
    sheet.progressVisible = false;
    // A tool that could not even start leaves the progress text standing.
    if (result.outcome == FormatResult::Outcome::Formatted)
        sheet.informativeKey = CardSheetKeys::kFormatDone;
    else if (result.outcome == FormatResult::Outcome::Failed)
        sheet.informativeKey = CardSheetKeys::kFormatFailed;
    if (!result.mounted)
        sheet.noteKey = CardSheetKeys::kCardLeftUnmounted;
    show(State::Finished, sheet);
    emit formatFinished(result.succeeded());
}
