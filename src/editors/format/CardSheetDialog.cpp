#include "editors/format/CardSheetDialog.h"
#include "style/TavroStyle.h"

#include "config/AlertSink.h"
#include "i18n/TavroLanguages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString displayed(const QString& key)
{
    // "OK" is a button title, not a key: it is shown as it stands.
    if (key.isEmpty() || key == CardSheetKeys::kOk)
        return key;
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

// The card texts break lines with "\r\n"; a label wants "\n".
QString lines(const QString& text)
{
    QString plain = text;
    return plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

CardSheetDialog::CardSheetDialog(QWidget* parent)
    : QDialog(parent)
    , m_message(new QLabel(this))
    , m_informative(new QLabel(this))
    , m_note(new QLabel(this))
    , m_progress(new QProgressBar(this))
    , m_buttonRow(new QHBoxLayout)
{
    setWindowModality(Qt::WindowModal);
    setObjectName(QStringLiteral("cardSheetDialog"));
    setMinimumWidth(480);
    m_message->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 14px;"));
    for (QLabel* label : { m_informative, m_note }) {
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    m_note->setStyleSheet(TavroStyle::withPalette(QStringLiteral("color: @accent;")));
    m_progress->setRange(0, 0); // busy: the tools report no progress
    m_progress->setTextVisible(false);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(m_message);
    layout->addWidget(m_informative);
    layout->addWidget(m_note);
    layout->addWidget(m_progress);
    m_buttonRow->addStretch();
    layout->addLayout(m_buttonRow);
}

void CardSheetDialog::showSheet(const CardSheet& sheet)
{
    setWindowTitle(displayed(sheet.messageKey));
    m_message->setText(displayed(sheet.messageKey));
    m_informative->setText(lines(displayed(sheet.informativeKey)));
    m_note->setText(lines(displayed(sheet.noteKey)));
    m_note->setVisible(!sheet.noteKey.isEmpty());
    m_progress->setVisible(sheet.progressVisible);
    m_buttonsEnabled = sheet.buttonsEnabled;

    // Two buttons at most ("아니오" / "예", or "OK"), made once and relabelled.
    while (m_allButtons.size() < sheet.buttonKeys.size()) {
        auto* button = new QPushButton(this);
        button->setAutoDefault(false);
        const int code = AlertSink::kFirstButtonReturn + int(m_allButtons.size());
        connect(button, &QPushButton::clicked, this, [this, code] { emit answered(code); });
        m_buttonRow->addWidget(button);
        m_allButtons.append(button);
    }
    m_buttons.clear();
    for (int i = 0; i < m_allButtons.size(); ++i) {
        QPushButton* button = m_allButtons[i];
        const bool used = i < sheet.buttonKeys.size();
        button->setVisible(used);
        button->setDefault(false);
        if (!used)
            continue;
        button->setText(displayed(sheet.buttonKeys[i]));
        button->setEnabled(sheet.buttonsEnabled);
        m_buttons.append(button);
    }
    // Return answers the safe choice: "아니오" on a question that would erase
    // the card or its calibration, the only button otherwise. "예" takes a
    // click (or Tab and Space).
    if (!m_buttons.isEmpty() && sheet.buttonsEnabled) {
        m_buttons.first()->setDefault(true);
        m_buttons.first()->setFocus();
    }
    adjustSize();
}

QString CardSheetDialog::informativeText() const
{
    return m_informative->text();
}

void CardSheetDialog::reject()
{
    // Escape or the close box: the first button ("아니오" or "OK"), unless
    // the sheet can't be dismissed yet.
    if (m_buttonsEnabled && !m_buttons.isEmpty())
        emit answered(AlertSink::kFirstButtonReturn);
}
