#pragma once

#include "editors/window/SettingPage.h"

#include <QHash>
#include <QStringList>

#include <functional>
#include <memory>

class PartitionGraphView;
class QCheckBox;
class QDateTimeEdit;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QTabWidget;
class SettingControlRow;
class SettingsPageModel;

// Draws any settings page model (SettingsPageModel) and forwards the user's
// actions to it; every rule stays in the model. Used for the Kel editor and
// the native editor alike, so a model plugs in without widget work.
//
// What it draws, from the model:
// - Tabs (Layout::Tabs) or titled sections in two columns (Layout::Sections),
//   one per distinct SettingControl::section, in the order they first appear;
//   the section key is the tab's or section's title.
// - One row per control: its caption (SettingControl::caption, fixed-width
//   column; none = the control takes the row) and by kind:
//   Slider    a slider with a tick mark per position; while pressed, the
//             model's sliderGuide() beside it. Drags go to sliderPressed /
//             sliderMoved / sliderReleased; keys and clicks beside the
//             handle to userChange.
//   RadioGroup one radio button per title, up to four on a line; -1 checks
//             none; a click is userChange(row).
//   ComboBox  the titles; a choice is userChange(index).
//   CheckBox  a check box, its first title (if any) as its text; a click is
//             userChange(0 or 1).
//   Titles and captions are localisation keys; a title with no entry in the
//   table shows as it stands (time-zone labels, unit texts).
// - The memory-partition graph (partitionGraph()) under the radio group whose
//   name ends in "MemoryPartitionRadioGroup" (any case), or at the end of the
//   last section when there is no such group.
// - The clock group when hasClock(): a check box, a date-time picker (English
//   locale, greyed while unchecked) and a current-time button. It takes the
//   place of a check box control whose name ends in "ateTimeCheckBox" (its
//   caption titles the check box, its first title the button); otherwise it
//   ends the first section. Ticking, picking and the button go to setClock().
// - Reset (pressReset, then redraw), Cancel (pressCancel, page result 0) and
//   OK (pressOk, page result 1) at the bottom. Escape cancels.
// After every forwarded action the whole page is redrawn from the model, so
// enabled states and captions that follow other controls stay current. The
// texts follow "RefreshLanguageNotification".
class SettingsPageWidget : public SettingPage {
    Q_OBJECT
public:
    enum class Layout { Tabs, Sections };

    SettingsPageWidget(
        std::unique_ptr<SettingsPageModel> model, Layout layout, QWidget* parent = nullptr);
    ~SettingsPageWidget() override;

    SettingsPageModel& model() const { return *m_model; }

    void applyLanguageSettings() override;
    // Redraws every control from the model.
    void refreshFromModel();

    // A button beside Reset for an operation on the card itself (format,
    // touch-calibration reset), titled by a localisation key; the page only
    // draws it and calls `action` when it is clicked.
    QPushButton* addCardAction(const char* titleKey, std::function<void()> action);

    // The widgets, for the window's tests.
    SettingControlRow* row(const QString& controlName) const;
    QStringList sectionKeys() const { return m_sections; }
    QTabWidget* tabs() const { return m_tabs; }
    PartitionGraphView* partitionGraph() const { return m_graph; }
    QCheckBox* clockCheckBox() const { return m_clockCheck; }
    QDateTimeEdit* clockEdit() const { return m_clockEdit; }
    QPushButton* currentTimeButton() const { return m_nowButton; }
    QPushButton* okButton() const { return m_okButton; }
    QPushButton* cancelButton() const { return m_cancelButton; }
    QPushButton* resetButton() const { return m_resetButton; }

protected:
    void cancel() override;

private:
    void buildSections(Layout layout);
    QWidget* buildClockGroup(QWidget* parent);
    void addClockGroup(QGridLayout* grid, int row, QWidget* parent);
    void buildButtons();
    void forwardChange(const QString& name, int value);
    void clockChanged(bool checked);
    void okButtonTouched();
    void resetButtonTouched();
    bool isClockControl(const QString& name) const;
    bool isPartitionControl(const QString& name) const;

    std::unique_ptr<SettingsPageModel> m_model;
    QStringList m_sections;
    QList<QLabel*> m_sectionTitles;
    QHash<QString, SettingControlRow*> m_rows;
    QString m_clockControl;
    QTabWidget* m_tabs = nullptr;
    PartitionGraphView* m_graph = nullptr;
    QCheckBox* m_clockCheck = nullptr;
    QDateTimeEdit* m_clockEdit = nullptr;
    QPushButton* m_nowButton = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
    QPushButton* m_resetButton = nullptr;
    QHBoxLayout* m_buttonRow = nullptr;
    QList<QPair<QPushButton*, const char*>> m_cardActions;
};
