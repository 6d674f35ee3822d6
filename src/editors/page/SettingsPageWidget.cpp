#include "editors/page/SettingsPageWidget.h"

#include "editors/EditorsLogging.h"
#include "editors/page/EditorStyle.h"
#include "editors/page/PartitionGraphView.h"
#include "editors/page/SettingControlRow.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "settings/SettingsPageModel.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace {

QString localized(const QString& key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

constexpr int kSectionColumns = 2;

} // namespace

SettingsPageWidget::SettingsPageWidget(
    std::unique_ptr<SettingsPageModel> model, Layout layout, QWidget* parent)
    : SettingPage(parent)
    , m_model(std::move(model))
{
    setObjectName(QStringLiteral("settingsPage"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(EditorStyle::pageStyleSheet());
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(16, 16, 16, 16);
    page->setSpacing(12);
    buildSections(layout);
    buildButtons();
    refreshFromModel();
    applyLanguageSettings();
    observeLanguage();
}

SettingsPageWidget::~SettingsPageWidget() = default;

bool SettingsPageWidget::isClockControl(const QString& name) const
{
    return m_model->hasClock() && name.endsWith(QLatin1String("ateTimeCheckBox"));
}

bool SettingsPageWidget::isPartitionControl(const QString& name) const
{
    return name.endsWith(QLatin1String("MemoryPartitionRadioGroup"), Qt::CaseInsensitive);
}

void SettingsPageWidget::buildSections(Layout layout)
{
    const QList<SettingControl> controls = m_model->controls();
    for (const SettingControl& c : controls) {
        if (!m_sections.contains(c.section))
            m_sections << c.section;
    }
    if (m_sections.isEmpty())
        m_sections << QString();

    SettingControlRow::Callbacks callbacks;
    callbacks.changed = [this](const QString& name, int value) { forwardChange(name, value); };
    callbacks.sliderPressed = [this](const QString& name) {
        m_model->sliderPressed(name);
        refreshFromModel();
    };
    callbacks.sliderMoved = [this](const QString& name, int value) {
        m_model->sliderMoved(name, value);
        refreshFromModel();
    };
    callbacks.sliderReleased = [this](const QString& name) {
        m_model->sliderReleased(name);
        refreshFromModel();
    };

    auto* content = static_cast<QVBoxLayout*>(this->layout());
    QList<QVBoxLayout*> columns;
    QList<int> columnRows;
    if (layout == Layout::Tabs) {
        m_tabs = new QTabWidget(this);
        content->addWidget(m_tabs, 1);
    } else {
        auto* row = new QHBoxLayout;
        row->setSpacing(16);
        for (int i = 0; i < kSectionColumns; ++i) {
            columns << new QVBoxLayout;
            columnRows << 0;
            row->addLayout(columns.last(), 1);
        }
        content->addLayout(row, 1);
    }

    const bool anyPartition = std::any_of(controls.begin(), controls.end(),
        [this](const SettingControl& c) { return isPartitionControl(c.name); });
    for (qsizetype s = 0; s < m_sections.size(); ++s) {
        const QString& section = m_sections[s];
        auto* box = new QWidget;
        box->setObjectName(QStringLiteral("section"));
        box->setAttribute(Qt::WA_StyledBackground);
        auto* boxLayout = new QVBoxLayout(box);
        boxLayout->setContentsMargins(14, 10, 14, 12);
        auto* title = new QLabel(box);
        title->setObjectName(QStringLiteral("sectionTitle"));
        m_sectionTitles << title;
        if (layout == Layout::Sections) {
            boxLayout->addWidget(title);
            auto* line = new QWidget(box);
            line->setObjectName(QStringLiteral("sectionLine"));
            line->setAttribute(Qt::WA_StyledBackground);
            line->setFixedHeight(1);
            boxLayout->addWidget(line);
        } else {
            title->hide();
        }
        auto* grid = new QGridLayout;
        grid->setHorizontalSpacing(14);
        grid->setVerticalSpacing(10);
        grid->setColumnStretch(1, 1);
        boxLayout->addLayout(grid);
        boxLayout->addStretch(1);
        int r = 0;
        bool clockPlaced = false;
        for (const SettingControl& c : controls) {
            if (c.section != section)
                continue;
            if (isClockControl(c.name) && m_clockControl.isEmpty()) {
                m_clockControl = c.name;
                addClockGroup(grid, r++, box);
                clockPlaced = true;
                continue;
            }
            auto* rowWidgets = new SettingControlRow(c, callbacks, box);
            m_rows.insert(c.name, rowWidgets);
            if (c.caption.isEmpty()) {
                grid->addWidget(rowWidgets->field(), r++, 0, 1, 2);
            } else {
                grid->addWidget(rowWidgets->caption(), r, 0, Qt::AlignVCenter);
                grid->addWidget(rowWidgets->field(), r++, 1);
            }
            if (isPartitionControl(c.name) && !m_graph) {
                m_graph = new PartitionGraphView(box);
                grid->addWidget(m_graph, r++, c.caption.isEmpty() ? 0 : 1, 1, 2);
            }
        }
        if (s == 0 && m_model->hasClock() && !clockPlaced && m_clockControl.isEmpty())
            addClockGroup(grid, r++, box);
        if (s == m_sections.size() - 1 && !anyPartition && !m_model->partitionGraph().isEmpty()) {
            m_graph = new PartitionGraphView(box);
            grid->addWidget(m_graph, r++, 0, 1, 2);
        }
        if (m_tabs) {
            m_tabs->addTab(box, QString());
        } else {
            // The shorter column takes the next section.
            const int column = columnRows[0] <= columnRows[1] ? 0 : 1;
            columns[column]->addWidget(box);
            columnRows[column] += r + 2;
        }
    }
    for (QVBoxLayout* column : columns)
        column->addStretch(1);
}

void SettingsPageWidget::addClockGroup(QGridLayout* grid, int row, QWidget* parent)
{
    // The check box in the caption column, the picker and button beside it.
    QWidget* group = buildClockGroup(parent);
    grid->addWidget(m_clockCheck, row, 0, Qt::AlignVCenter);
    grid->addWidget(group, row, 1);
}

QWidget* SettingsPageWidget::buildClockGroup(QWidget* parent)
{
    auto* group = new QWidget(parent);
    group->setObjectName(QStringLiteral("clockGroup"));
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    m_clockCheck = new QCheckBox(parent);
    m_clockEdit = new QDateTimeEdit(group);
    // The camera's clock is shown the same way in every language.
    m_clockEdit->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    m_clockEdit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    m_clockEdit->setCalendarPopup(true);
    m_nowButton = new QPushButton(group);
    m_nowButton->setObjectName(QStringLiteral("currentTimeButton"));
    row->addWidget(m_clockEdit);
    row->addWidget(m_nowButton);
    row->addStretch(1);
    connect(m_clockCheck, &QCheckBox::clicked, this, &SettingsPageWidget::clockChanged);
    connect(m_clockEdit, &QDateTimeEdit::dateTimeChanged, this, [this](const QDateTime& value) {
        m_model->setClock({ m_model->clock().checked, value });
    });
    connect(m_nowButton, &QPushButton::clicked, this, [this] {
        m_model->setClock({ m_model->clock().checked, QDateTime::currentDateTime() });
        refreshFromModel();
    });
    return group;
}

void SettingsPageWidget::buildButtons()
{
    auto* row = new QHBoxLayout;
    m_resetButton = new QPushButton(this);
    m_resetButton->setObjectName(QStringLiteral("resetButton"));
    m_cancelButton = new QPushButton(this);
    m_cancelButton->setObjectName(QStringLiteral("cancelButton"));
    m_okButton = new QPushButton(this);
    m_okButton->setObjectName(QStringLiteral("okButton"));
    m_okButton->setDefault(false);
    row->addWidget(m_resetButton);
    row->addStretch(1);
    m_buttonRow = row;
    row->addWidget(m_cancelButton);
    row->addWidget(m_okButton);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(m_resetButton, &QPushButton::clicked, this, &SettingsPageWidget::resetButtonTouched);
    connect(m_cancelButton, &QPushButton::clicked, this, &SettingsPageWidget::cancel);
    connect(m_okButton, &QPushButton::clicked, this, &SettingsPageWidget::okButtonTouched);
}

SettingControlRow* SettingsPageWidget::row(const QString& controlName) const
{
    return m_rows.value(controlName);
}

void SettingsPageWidget::forwardChange(const QString& name, int value)
{
    const SettingsPageModel::Change change = m_model->userChange(name, value);
    if (change != SettingsPageModel::Change::Applied)
        qCWarning(lcEditors) << "page refused" << name << value;
    refreshFromModel();
}

void SettingsPageWidget::clockChanged(bool checked)
{
    m_model->setClock({ checked, m_clockEdit->dateTime() });
    refreshFromModel();
}

void SettingsPageWidget::refreshFromModel()
{
    for (const SettingControl& c : m_model->controls()) {
        if (SettingControlRow* r = m_rows.value(c.name))
            r->refresh(c, m_model->sliderGuide(c.name));
        if (c.name == m_clockControl && m_clockCheck) {
            m_clockCheck->setEnabled(c.enabled);
            m_clockCheck->setVisible(c.visible);
        }
    }
    if (m_clockCheck) {
        const SettingClock clock = m_model->clock();
        const QSignalBlocker blockEdit(m_clockEdit);
        m_clockCheck->setChecked(clock.checked);
        m_clockEdit->setDateTime(clock.value);
        // Grey and untouchable until the box is ticked.
        m_clockEdit->setEnabled(clock.checked);
        m_nowButton->setEnabled(clock.checked);
    }
    if (m_graph)
        m_graph->setBars(m_model->partitionGraph());
}

QPushButton* SettingsPageWidget::addCardAction(const char* titleKey, std::function<void()> action)
{
    auto* button = new QPushButton(localized(titleKey), this);
    // After Reset and the card actions already there, before the stretch.
    m_buttonRow->insertWidget(int(m_cardActions.size()) + 1, button);
    m_cardActions.append({ button, titleKey });
    connect(button, &QPushButton::clicked, this, [action = std::move(action)] { action(); });
    return button;
}

void SettingsPageWidget::applyLanguageSettings()
{
    for (qsizetype i = 0; i < m_sections.size(); ++i) {
        const QString title = m_sections[i].isEmpty() ? QString() : localized(m_sections[i]);
        m_sectionTitles[i]->setText(title);
        if (m_tabs)
            m_tabs->setTabText(int(i), title);
    }
    for (SettingControlRow* r : std::as_const(m_rows))
        r->applyLanguageSettings();
    if (m_clockCheck) {
        const std::optional<SettingControl> control = m_model->control(m_clockControl);
        const bool own = control.has_value();
        m_clockCheck->setText(
            own ? localized(control->caption) : localized(LocalizationKeys::kSetDateTime));
        m_nowButton->setText(own && !control->titles.isEmpty()
                ? localized(control->titles.first())
                : localized(LocalizationKeys::kCurrentTime));
    }
    if (m_graph)
        m_graph->applyLanguageSettings();
    m_resetButton->setText(localized(LocalizationKeys::kResetSettings));
    for (const auto& [button, key] : std::as_const(m_cardActions))
        button->setText(localized(key));
    m_cancelButton->setText(localized(LocalizationKeys::kCancel));
    m_okButton->setText(QStringLiteral("OK"));
}

void SettingsPageWidget::okButtonTouched()
{
    // A failed write has shown the memory-card alert; the page ends all the same.
    m_model->pressOk();
    emit finished(1);
}

void SettingsPageWidget::cancel()
{
    m_model->pressCancel();
    emit finished(0);
}

void SettingsPageWidget::resetButtonTouched()
{
    m_model->pressReset();
    refreshFromModel();
}
