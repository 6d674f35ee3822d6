#include "editors/page/SettingControlRow.h"

#include "editors/page/EditorStyle.h"
#include "editors/page/TickSlider.h"
#include "i18n/TavroLanguages.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>

namespace {

QString localized(const QString& key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

} // namespace

SettingControlRow::SettingControlRow(
    const SettingControl& control, Callbacks callbacks, QWidget* parent)
    : QObject(parent)
    , m_name(control.name)
    , m_kind(control.kind)
    , m_captionKey(control.caption)
    , m_titles(control.titles)
    , m_callbacks(std::move(callbacks))
{
    m_caption = new QLabel(parent);
    m_caption->setObjectName(QStringLiteral("caption"));
    m_caption->setWordWrap(true);
    m_caption->setMinimumWidth(EditorStyle::kCaptionWidth);
    m_caption->setMaximumWidth(EditorStyle::kCaptionWidth);
    m_caption->setVisible(!m_captionKey.isEmpty());
    m_field = new QWidget(parent);
    m_field->setObjectName(control.name);
    switch (control.kind) {
    case SettingControlKind::Slider:
        buildSlider(control);
        break;
    case SettingControlKind::RadioGroup:
        buildRadios(control);
        break;
    case SettingControlKind::ComboBox:
        buildComboBox(control);
        break;
    case SettingControlKind::CheckBox:
        buildCheckBox(control);
        break;
    }
    refresh(control, {});
    applyLanguageSettings();
}

void SettingControlRow::buildSlider(const SettingControl& control)
{
    auto* layout = new QHBoxLayout(m_field);
    layout->setContentsMargins(0, 0, 0, 0);
    m_slider = new TickSlider(m_field);
    m_slider->setRange(control.minimum, control.maximum);
    m_guide = new QLabel(m_field);
    m_guide->setObjectName(QStringLiteral("guide"));
    m_guide->setMinimumWidth(90);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_guide);
    connect(m_slider, &QSlider::sliderPressed, this, [this] {
        if (m_callbacks.sliderPressed)
            m_callbacks.sliderPressed(m_name);
    });
    connect(m_slider, &QSlider::sliderMoved, this, [this](int value) {
        if (m_callbacks.sliderMoved)
            m_callbacks.sliderMoved(m_name, value);
    });
    connect(m_slider, &QSlider::sliderReleased, this, [this] {
        if (m_callbacks.sliderReleased)
            m_callbacks.sliderReleased(m_name);
    });
    // Keys and clicks beside the handle move the slider without a drag:
    // each counts as a whole press, move and release.
    connect(m_slider, &QAbstractSlider::actionTriggered, this, [this](int action) {
        if (action == QAbstractSlider::SliderMove || m_slider->isSliderDown())
            return;
        if (m_callbacks.changed)
            m_callbacks.changed(m_name, m_slider->sliderPosition());
    });
}

void SettingControlRow::buildRadios(const SettingControl& control)
{
    auto* layout = new QGridLayout(m_field);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(18);
    m_group = new QButtonGroup(this);
    for (int i = 0; i < control.titles.size(); ++i) {
        auto* radio = new QRadioButton(m_field);
        m_group->addButton(radio, i);
        layout->addWidget(radio, i / kRadiosPerLine, i % kRadiosPerLine);
        m_radios << radio;
    }
    layout->setColumnStretch(kRadiosPerLine, 1);
    connect(m_group, &QButtonGroup::idClicked, this, [this](int id) {
        if (m_callbacks.changed)
            m_callbacks.changed(m_name, id);
    });
}

void SettingControlRow::buildComboBox(const SettingControl& control)
{
    auto* layout = new QHBoxLayout(m_field);
    layout->setContentsMargins(0, 0, 0, 0);
    m_combo = new QComboBox(m_field);
    m_combo->addItems(QStringList(control.titles));
    m_combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    layout->addWidget(m_combo);
    layout->addStretch(1);
    connect(m_combo, &QComboBox::activated, this, [this](int index) {
        if (m_callbacks.changed)
            m_callbacks.changed(m_name, index);
    });
}

void SettingControlRow::buildCheckBox(const SettingControl&)
{
    auto* layout = new QHBoxLayout(m_field);
    layout->setContentsMargins(0, 0, 0, 0);
    m_check = new QCheckBox(m_field);
    layout->addWidget(m_check);
    layout->addStretch(1);
    connect(m_check, &QCheckBox::clicked, this, [this](bool checked) {
        if (m_callbacks.changed)
            m_callbacks.changed(m_name, checked ? 1 : 0);
    });
}

void SettingControlRow::refresh(const SettingControl& control, const QString& guideKey)
{
    m_field->setEnabled(control.enabled);
    m_caption->setEnabled(control.enabled);
    m_field->setVisible(control.visible);
    m_caption->setVisible(control.visible && !m_captionKey.isEmpty());
    const bool retitle = control.titles != m_titles || guideKey != m_guideKey;
    m_titles = control.titles;
    m_guideKey = guideKey;
    if (m_slider) {
        const QSignalBlocker block(m_slider);
        if (!m_slider->isSliderDown())
            m_slider->setValue(control.value);
    } else if (m_group) {
        // No row stands for the file's value: nothing is checked.
        m_group->setExclusive(false);
        for (int i = 0; i < m_radios.size(); ++i)
            m_radios[i]->setChecked(i == control.value);
        m_group->setExclusive(true);
    } else if (m_combo) {
        const QSignalBlocker block(m_combo);
        m_combo->setCurrentIndex(control.value);
    } else if (m_check) {
        m_check->setChecked(control.value != 0);
    }
    if (retitle)
        applyLanguageSettings();
}

void SettingControlRow::setRadioTitles(const QStringList& titles)
{
    for (int i = 0; i < m_radios.size(); ++i)
        m_radios[i]->setText(localized(titles.value(i)));
}

void SettingControlRow::applyLanguageSettings()
{
    m_caption->setText(localized(m_captionKey));
    if (m_guide)
        m_guide->setText(m_guideKey.isEmpty() ? QString() : localized(m_guideKey));
    if (m_group)
        setRadioTitles(m_titles);
    if (m_combo) {
        for (int i = 0; i < m_combo->count(); ++i)
            m_combo->setItemText(i, localized(m_titles.value(i)));
    }
    // A check box's one title, if any, is its own text beside the box.
    if (m_check)
        m_check->setText(m_titles.isEmpty() ? QString() : localized(m_titles.first()));
}
