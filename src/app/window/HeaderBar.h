#pragma once

#include <QWidget>

class ImageButton;
class QLabel;

// The header of the main window: the brand, the camera model and firmware as
// identified on the card, the viewer's version and the settings button.
class HeaderBar : public QWidget {
    Q_OBJECT
public:
    explicit HeaderBar(QWidget* parent = nullptr);

    // The model name (or the localised "unknown") and the firmware version
    // text; an empty firmware hides its label.
    void setModelInfo(const QString& modelText, const QString& firmware);
    void setSettingsButtonEnabled(bool enabled);
    void applyLanguageSettings();

    QLabel* modelTextField() const { return m_modelTextField; }
    QLabel* mainVersionLabel() const { return m_mainVersionLabel; }
    ImageButton* settingsButton() const { return m_settingsButton; }

signals:
    void settingsButtonTouched();

private:
    QLabel* m_brand = nullptr;
    QLabel* m_modelTextField = nullptr;
    QLabel* m_firmwareLabel = nullptr;
    QLabel* m_mainVersionLabel = nullptr;
    ImageButton* m_settingsButton = nullptr;
    QString m_firmware;
};
