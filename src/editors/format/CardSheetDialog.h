#pragma once

#include "settings/format/CardSheet.h"

#include <QDialog>
#include <QList>

class QLabel;
class QProgressBar;
class QPushButton;
class QHBoxLayout;

// One card-operation sheet over an editor window: the message, the
// informative text, a busy progress bar while the format runs, and the
// buttons in the order given (the first answers 1000, the second 1001).
// Window-modal, so the editor stays drawn and the rest of the viewer runs.
// Return, Escape and the close box answer with the first button ("아니오"
// on a question); while the buttons are disabled they do nothing.
class CardSheetDialog final : public QDialog {
    Q_OBJECT

public:
    explicit CardSheetDialog(QWidget* parent = nullptr);

    // Draws the sheet (texts looked up in the viewer's language).
    void showSheet(const CardSheet& sheet);

    // The buttons of the sheet on show, in order.
    const QList<QPushButton*>& buttons() const { return m_buttons; }
    QProgressBar* progressBar() const { return m_progress; }
    QString informativeText() const;

signals:
    void answered(int returnCode);

protected:
    void reject() override;

private:
    QLabel* m_message;
    QLabel* m_informative;
    QLabel* m_note;
    QProgressBar* m_progress;
    QHBoxLayout* m_buttonRow;
    QList<QPushButton*> m_allButtons;
    QList<QPushButton*> m_buttons; // the ones the sheet shows, in order
    bool m_buttonsEnabled = true;
};
