#pragma once

#include <QString>
#include <QStringList>

#include <memory>

// One modal alert as the engine asks for it. Texts are localisation keys;
// the face that shows the alert looks them up. Buttons are answered with
// return codes from 1000 upwards in button order (first 1000, second 1001).
struct AlertRequest {
    QString titleKey;
    QString messageKey;
    QStringList buttonKeys { QStringLiteral("OK") };
    int style = 1; // 0 warning, 1 informational, 2 critical

    // The card-file error shown when a configuration file can't be written.
    static AlertRequest memoryCardError();
};

// Where the engine sends its alerts: the viewer shows a dialog, the command
// line prints the message, tests record it. The engine never opens a window.
class AlertSink {
public:
    static constexpr int kFirstButtonReturn = 1000;
    static constexpr int kSecondButtonReturn = 1001;

    static inline const QString kMemoryCardErrorTitleKey = QStringLiteral("메모리카드 오류");
    static inline const QString kMemoryCardErrorMessageKey
        = QStringLiteral("메모리카드를 확인하여 주시기 바랍니다.");

    virtual ~AlertSink() = default;

    // Shows the alert modally and returns the code of the chosen button.
    virtual int showAlert(const AlertRequest& request) = 0;

    // The sink used by the settings managers. Until one is installed, alerts
    // go to a sink that only logs them and answers with the first button.
    static AlertSink& shared();
    static void setShared(std::shared_ptr<AlertSink> sink);
};
