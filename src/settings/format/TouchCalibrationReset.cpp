#include "settings/format/TouchCalibrationReset.h"

#include "config/AlertSink.h"
#include "settings/format/BackgroundJob.h"
#include "settings/format/FormatLog.h"

#include <QDir>
#include <QSaveFile>

namespace TouchCalibration {

QString markerPath(const QString& cardRoot)
{
    return QDir(cardRoot).filePath(kMarkerFileName);
}

bool writeMarker(const QString& cardRoot)
{
    if (cardRoot.isEmpty() || !QDir(cardRoot).exists())
        return false;
    QSaveFile file(markerPath(cardRoot));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return file.commit();
}

} // namespace TouchCalibration

TouchCalibrationFlow::TouchCalibrationFlow(QObject* parent)
    : QObject(parent)
{
}

void TouchCalibrationFlow::show(State state, CardSheet sheet)
{
    m_state = state;
    m_sheet = std::move(sheet);
    emit sheetChanged();
}

void TouchCalibrationFlow::start(const QString& cardRoot)
{
    if (m_state != State::Idle)
        return;
    m_cardRoot = cardRoot;
    m_written = false;
    CardSheet question;
    question.kind = CardSheet::Kind::Question;
    question.messageKey = CardSheetKeys::kTouchTitle;
    question.informativeKey = CardSheetKeys::kTouchQuestion;
    question.buttonKeys = { CardSheetKeys::kNo, CardSheetKeys::kYes };
    show(State::Asking, question);
}

void TouchCalibrationFlow::answer(int returnCode)
{
    if (m_state == State::Done) {
        show(State::Idle, {});
        return;
    }
    if (m_state != State::Asking)
        return;
    if (returnCode < AlertSink::kSecondButtonReturn) {
        show(State::Idle, {});
        return;
    }
    // The question closes; the completion sheet follows once the card has the file.
    show(State::Writing, {});
    const QString root = m_cardRoot;
    runInBackground<bool>(
        this, [root] { return TouchCalibration::writeMarker(root); },
        [this](const bool& written) {
            m_written = written;
            qCDebug(lcFormat) << "touch calibration marker written:" << written;
            CardSheet done;
            done.kind = CardSheet::Kind::Result;
            done.messageKey = CardSheetKeys::kTouchTitle;
            done.informativeKey = CardSheetKeys::kTouchDone;
            done.buttonKeys = { CardSheetKeys::kOk };
            show(State::Done, done);
        });
}
