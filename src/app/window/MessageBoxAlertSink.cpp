#include "app/window/MessageBoxAlertSink.h"

#include "i18n/TavroLanguages.h"

#include <QMessageBox>
#include <QPushButton>

MessageBoxAlertSink::MessageBoxAlertSink(QWidget* parent)
    : m_parent(parent)
{
}

int MessageBoxAlertSink::showAlert(const AlertRequest& request)
{
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    QMessageBox box(m_parent);
    box.setWindowTitle(languages.localized(request.titleKey));
    box.setText(languages.localized(request.titleKey));
    box.setInformativeText(languages.localized(request.messageKey));
    switch (request.style) {
    case 0:
        box.setIcon(QMessageBox::Warning);
        break;
    case 2:
        box.setIcon(QMessageBox::Critical);
        break;
    default:
        box.setIcon(QMessageBox::Information);
        break;
    }
    QList<QAbstractButton*> buttons;
    for (const QString& key : request.buttonKeys) {
        if (key == QLatin1String("OK"))
            buttons.append(box.addButton(QMessageBox::Ok));
        else
            buttons.append(box.addButton(languages.localized(key), QMessageBox::AcceptRole));
    }
    if (!buttons.isEmpty())
        box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box.exec();
    const int index = int(buttons.indexOf(box.clickedButton()));
    return kFirstButtonReturn + qMax(0, index);
}
