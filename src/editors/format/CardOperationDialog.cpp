#include "editors/format/CardOperationDialog.h"

#include "editors/EditorsLogging.h"
#include "editors/format/CardSheetDialog.h"
#include "settings/format/CardFormatFlow.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/TouchCalibrationReset.h"

#include <QWidget>

CardOperationDialog::CardOperationDialog(QWidget* parent)
    : QObject(parent)
    , m_dialog(new CardSheetDialog(parent))
{
}

CardOperationDialog::~CardOperationDialog()
{
    delete m_dialog; // a QPointer: already gone when the editor window went first
}

template <typename Flow> void CardOperationDialog::attach(Flow* flow)
{
    connect(m_dialog, &CardSheetDialog::answered, flow, &Flow::answer);
    connect(flow, &Flow::sheetChanged, this, [this, flow] {
        const CardSheet& sheet = flow->sheet();
        if (sheet.isOpen()) {
            m_dialog->showSheet(sheet);
            if (!m_dialog->isVisible())
                m_dialog->open();
            return;
        }
        m_dialog->hide();
        if (flow->state() != Flow::State::Idle)
            return; // between two sheets: the next one follows
        emit finished();
        deleteLater();
    });
}

CardOperationDialog* askFormat(
    QWidget* parent, const QString& cardRoot, std::unique_ptr<CardFormatEngine> engine)
{
    auto* operation = new CardOperationDialog(parent);
    operation->m_engine = engine ? std::move(engine) : std::make_unique<CardFormatter>();
    auto* flow = new CardFormatFlow(*operation->m_engine, operation);
    QObject::connect(
        flow, &CardFormatFlow::formatFinished, operation, &CardOperationDialog::formatFinished);
    operation->attach(flow);
    qCDebug(lcEditors) << "format asked for" << cardRoot;
    flow->start(cardRoot);
    return operation;
}

CardOperationDialog* askTouchCalibrationReset(QWidget* parent, const QString& cardRoot)
{
    auto* operation = new CardOperationDialog(parent);
    auto* flow = new TouchCalibrationFlow(operation);
    operation->attach(flow);
    flow->start(cardRoot);
    return operation;
}
