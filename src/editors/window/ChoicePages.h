#pragma once

#include "editors/window/SettingPage.h"

#include <QStringList>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

// "SelectFlashMemoryView": the memory cards to choose from, by the last
// component of their path, the last one pre-selected; OK is disabled when
// there is none. Result 1 with selectedIndex(), or 0.
class SelectFlashMemoryView : public SettingPage {
    Q_OBJECT
public:
    explicit SelectFlashMemoryView(const QStringList& cardNames, QWidget* parent = nullptr);

    void applyLanguageSettings() override;
    // The chosen card, or -1.
    int selectedIndex() const;

    QListWidget* list() const { return m_list; }
    QLabel* emptyLabel() const { return m_empty; }
    QPushButton* okButton() const { return m_ok; }
    QPushButton* cancelButton() const { return m_cancel; }

protected:
    void confirm() override { emit finished(1); }
    bool canConfirm() const override;

private:
    QLabel* m_title = nullptr;
    QLabel* m_empty = nullptr;
    QListWidget* m_list = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};

// "SelectDeviceView": every model name in list order, the first pre-selected,
// under the two-line title saying that the card's camera could not be read
// and that the chosen model's defaults apply. Result 1 with
// selectedModelType(), or 0.
class SelectDeviceView : public SettingPage {
    Q_OBJECT
public:
    explicit SelectDeviceView(const QStringList& modelNames, QWidget* parent = nullptr);

    void applyLanguageSettings() override;
    qint64 selectedModelType() const;

    QLabel* title() const { return m_title; }
    QComboBox* models() const { return m_models; }
    QPushButton* okButton() const { return m_ok; }
    QPushButton* cancelButton() const { return m_cancel; }

protected:
    void confirm() override { emit finished(1); }
    bool canConfirm() const override { return true; }

private:
    QLabel* m_title = nullptr;
    QComboBox* m_models = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
