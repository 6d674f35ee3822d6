#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The widget-free model of one settings page: every control as data, and
// every rule that runs when the page is filled, when the user touches a
// control, on Reset and on OK. The editor pages draw a model and forward the
// user's actions to it; `tavro settings` drives the same model without a
// window, so both write the card the same way.
//
// A freshly built page has every control at its lowest position, unchecked
// and enabled; filling it from the card then moves only the controls whose
// rules say so ("untouched" controls keep the position they had).

enum class SettingControlKind {
    Slider, // value = position in [minimum, maximum]
    RadioGroup, // value = selected row or column, 0-based
    ComboBox, // value = selected index, -1 = none
    CheckBox, // value = 0 unchecked, 1 checked
};

struct SettingControl {
    QString name; // the control's name in the editor's design, e.g. "commonFrontBrightnessSlider"
    SettingControlKind kind = SettingControlKind::Slider;
    QString section; // localisation key of the tab or section that holds it
    int minimum = 0;
    int maximum = 0;
    int value = 0;
    bool enabled = true;
    bool visible = true;
    // Localisation keys of the rows / columns / items, in order. Where the
    // captions change with state (the lane-speed rows follow the speed unit)
    // they are kept current here.
    QStringList titles;
    // True where `titles` change with the page's state, so `tavro settings
    // show` lists them.
    bool titlesFollowState = false;
    // Localisation key of the label drawn beside the control ("" for none).
    QString caption;

    bool operator==(const SettingControl&) const = default;
};

// The clock group of a page: "set the camera's clock to this time on OK".
struct SettingClock {
    bool checked = false;
    QDateTime value;
    bool operator==(const SettingClock&) const = default;
};

// One bar of a memory-partition graph: the share of the card a recording
// kind gets, drawn as percent x full width / 100 and labelled "N%".
struct PartitionBar {
    QString key; // "continuous", "event", "park", "manual" (or the family's own kinds)
    int percent = 0;
    bool operator==(const PartitionBar&) const = default;
};

class SettingsPageModel {
public:
    // Result of a user's change of one control.
    enum class Change {
        Applied,
        UnknownControl, // no control of that name on this page
        OutOfRange, // value outside [minimum, maximum] (combo boxes also allow -1 only when
                    // the page says so), or the control is hidden / disabled
    };

    virtual ~SettingsPageModel() = default;

    // "Orlo", "Dravi", "Ruva", "Tolm", "Pesk", "Kimbo", "Yarro" or "Kel".
    virtual QString family() const = 0;
    virtual qint64 modelType() const = 0;

    // Every control of the page in page order (tab by tab, top to bottom).
    virtual QList<SettingControl> controls() const = 0;
    std::optional<SettingControl> control(const QString& name) const;

    // Fills the controls from the loaded configuration (applySettingData and
    // applySettingTime); writes nothing.
    virtual void applySettingData() = 0;

    // A user's change of one control: runs exactly the handlers the page runs
    // when the user sets that control (a slider as if pressed, moved to the
    // value and released). Questions the handlers ask go to the AlertSink.
    virtual Change userChange(const QString& name, int value) = 0;

    // Slider handling as the page sees it, for the rules that differ while a
    // slider is pressed (guide labels, writes that happen only while pressed).
    virtual void sliderPressed(const QString& name);
    virtual Change sliderMoved(const QString& name, int value);
    virtual void sliderReleased(const QString& name);
    // The guide label (localisation key) shown beside a pressed slider, or "".
    virtual QString sliderGuide(const QString& name) const;

    // The Reset button: loads the defaults into the controls; writes nothing.
    virtual void pressReset() = 0;
    // The OK button: saves the page (family save, then the clock). False when
    // a card write failed (the memory-card alert has been shown then).
    virtual bool pressOk() = 0;
    // The Cancel button: writes nothing.
    virtual void pressCancel() { }

    virtual SettingClock clock() const { return {}; }
    virtual void setClock(const SettingClock&) { }
    virtual bool hasClock() const { return false; }

    // The memory-partition graph for the selected partition type, in drawing
    // order; empty for pages without one.
    virtual QList<PartitionBar> partitionGraph() const { return {}; }

    // The camera language the user chose on the page (written to the record's
    // cur_language on save), or none for pages without one.
    virtual std::optional<int> userSelectedLanguage() const { return std::nullopt; }
};
