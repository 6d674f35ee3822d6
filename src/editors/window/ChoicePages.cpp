#include "editors/window/ChoicePages.h"

#include "editors/page/EditorStyle.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

constexpr int kChoicePageWidth = 460;

// Title, body, then Cancel and OK at the bottom right.
QVBoxLayout* choiceLayout(SettingPage* page, QLabel*& title, QPushButton*& ok, QPushButton*& cancel)
{
    page->setObjectName(QStringLiteral("choicePage"));
    page->setAttribute(Qt::WA_StyledBackground);
    page->setStyleSheet(EditorStyle::pageStyleSheet());
    page->setMinimumWidth(kChoicePageWidth);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(20, 18, 20, 16);
    layout->setSpacing(12);
    title = new QLabel(page);
    title->setObjectName(QStringLiteral("sectionTitle"));
    title->setWordWrap(true);
    layout->addWidget(title);
    ok = new QPushButton(page);
    ok->setObjectName(QStringLiteral("okButton"));
    cancel = new QPushButton(page);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    return layout;
}

void addButtons(QVBoxLayout* layout, QPushButton* ok, QPushButton* cancel)
{
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(cancel);
    row->addWidget(ok);
    layout->addLayout(row);
}

} // namespace

SelectFlashMemoryView::SelectFlashMemoryView(const QStringList& cardNames, QWidget* parent)
    : SettingPage(parent)
{
    QVBoxLayout* layout = choiceLayout(this, m_title, m_ok, m_cancel);
    m_list = new QListWidget(this);
    m_list->addItems(cardNames);
    m_list->setMinimumHeight(140);
    if (!cardNames.isEmpty())
        m_list->setCurrentRow(int(cardNames.size()) - 1);
    m_empty = new QLabel(this);
    m_empty->setProperty("secondary", true);
    m_empty->setVisible(cardNames.isEmpty());
    layout->addWidget(m_list, 1);
    layout->addWidget(m_empty);
    addButtons(layout, m_ok, m_cancel);
    m_ok->setEnabled(!cardNames.isEmpty());
    connect(m_ok, &QPushButton::clicked, this, [this] { confirm(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { cancel(); });
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { confirm(); });
    applyLanguageSettings();
    observeLanguage();
}

bool SelectFlashMemoryView::canConfirm() const
{
    return m_ok->isEnabled() && selectedIndex() >= 0;
}

int SelectFlashMemoryView::selectedIndex() const
{
    return m_list->count() > 0 ? m_list->currentRow() : -1;
}

void SelectFlashMemoryView::applyLanguageSettings()
{
    m_title->setText(localized(LocalizationKeys::kChooseCardTitle));
    m_empty->setText(localized(LocalizationKeys::kNoCardConnected));
    m_ok->setText(QStringLiteral("OK"));
    m_cancel->setText(localized(LocalizationKeys::kCancel));
}

SelectDeviceView::SelectDeviceView(const QStringList& modelNames, QWidget* parent)
    : SettingPage(parent)
{
    QVBoxLayout* layout = choiceLayout(this, m_title, m_ok, m_cancel);
    m_models = new QComboBox(this);
    m_models->addItems(modelNames);
    m_models->setCurrentIndex(modelNames.isEmpty() ? -1 : 0);
    layout->addWidget(m_models);
    layout->addStretch(1);
    addButtons(layout, m_ok, m_cancel);
    connect(m_ok, &QPushButton::clicked, this, [this] { confirm(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { cancel(); });
    applyLanguageSettings();
    observeLanguage();
}

qint64 SelectDeviceView::selectedModelType() const
{
    return m_models->currentIndex();
}

void SelectDeviceView::applyLanguageSettings()
{
    m_title->setText(localized(LocalizationKeys::kChooseModelTitle));
    m_ok->setText(QStringLiteral("OK"));
    m_cancel->setText(localized(LocalizationKeys::kCancel));
}
