#pragma once

#include "settings/SettingsPageModel.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QRadioButton;
class QWidget;
class TickSlider;

// The widgets of one control of a settings page: its caption and, by kind,
// a slider with tick marks and a guide label, a row of radio buttons, a combo
// box or a check box. It draws the model's state (refresh) and reports the
// user's actions through the callbacks; it decides nothing itself.
class SettingControlRow : public QObject {
    Q_OBJECT
public:
    struct Callbacks {
        std::function<void(const QString& name, int value)> changed;
        std::function<void(const QString& name)> sliderPressed;
        std::function<void(const QString& name, int value)> sliderMoved;
        std::function<void(const QString& name)> sliderReleased;
    };

    // Radio buttons per line before they wrap.
    static constexpr int kRadiosPerLine = 4;

    SettingControlRow(const SettingControl& control, Callbacks callbacks, QWidget* parent);

    const QString& name() const { return m_name; }
    QLabel* caption() const { return m_caption; }
    // The widget that holds the control (placed beside the caption).
    QWidget* field() const { return m_field; }

    TickSlider* slider() const { return m_slider; }
    QLabel* guide() const { return m_guide; }
    QList<QRadioButton*> radios() const { return m_radios; }
    QComboBox* comboBox() const { return m_combo; }
    QCheckBox* checkBox() const { return m_check; }

    // Shows the control's state: value, enabled, visible and titles.
    void refresh(const SettingControl& control, const QString& guideKey);
    void applyLanguageSettings();

private:
    void buildSlider(const SettingControl& control);
    void buildRadios(const SettingControl& control);
    void buildComboBox(const SettingControl& control);
    void buildCheckBox(const SettingControl& control);
    void setRadioTitles(const QStringList& titles);

    QString m_name;
    SettingControlKind m_kind;
    QString m_captionKey;
    QStringList m_titles;
    QString m_guideKey;
    Callbacks m_callbacks;
    QLabel* m_caption = nullptr;
    QWidget* m_field = nullptr;
    TickSlider* m_slider = nullptr;
    QLabel* m_guide = nullptr;
    QButtonGroup* m_group = nullptr;
    QList<QRadioButton*> m_radios;
    QComboBox* m_combo = nullptr;
    QCheckBox* m_check = nullptr;
};
