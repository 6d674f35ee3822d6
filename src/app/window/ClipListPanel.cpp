#include "app/window/ClipListPanel.h"

#include "app/window/ImageButton.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "library/ClipLibrary.h"
#include "style/TavroStyle.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace {

// Filter buttons in the order that gives the filter index 0 to 4.
constexpr const char* kFilterKeys[] = { LocalizationKeys::kFilterAll,
    LocalizationKeys::kFilterContinuous, LocalizationKeys::kFilterMotion,
    LocalizationKeys::kFilterEvent, LocalizationKeys::kFilterManual };
constexpr const char* kFilterNames[] = { "fileListAllButton_OEM", "fileListAlwaysButton_OEM",
    "fileListMotionButton_OEM", "fileListEventButton_OEM", "fileListManualButton_OEM" };
constexpr int kFilterColumns = 3;

// Rows keep their own text colour when selected, so that a selected
// "Saved_Videos" clip stays magenta.
class ClipRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QVariant foreground = index.data(Qt::ForegroundRole);
        if (foreground.canConvert<QBrush>())
            option->palette.setBrush(QPalette::HighlightedText, foreground.value<QBrush>());
    }
};

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

} // namespace

ClipListPanel::ClipListPanel(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("panel"));
    setAttribute(Qt::WA_StyledBackground);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setSpacing(8);

    auto* filters = new QGridLayout;
    filters->setSpacing(6);
    for (int i = 0; i < 5; ++i) {
        auto* button = new ImageButton(QLatin1String(ClipLibrary::kNormalFilterImage), this);
        button->setObjectName(QLatin1String(kFilterNames[i]));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        filters->addWidget(button, i / kFilterColumns, i % kFilterColumns);
        m_filterButtons.append(button);
        connect(button, &ImageButton::clicked, this, [this, button] {
            if (m_library)
                m_library->videoFileFilterTouched(button);
        });
    }
    layout->addLayout(filters);

    m_table = new QListWidget(this);
    m_table->setObjectName(QStringLiteral("fileListTableView"));
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setUniformItemSizes(true);
    m_table->setItemDelegate(new ClipRowDelegate(m_table));
    m_table->setFocusPolicy(Qt::ClickFocus);
    m_table->setFont(TavroStyle::tabularFont());
    layout->addWidget(m_table, 1);
    connect(m_table, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_library && row >= 0)
            m_library->setSelectedRow(row);
    });
    connect(m_table, &QListWidget::itemDoubleClicked, this,
        [this](QListWidgetItem* item) { emit rowDoubleClicked(m_table->row(item)); });

    m_selectedDirTextField = new QLineEdit(this);
    m_selectedDirTextField->setObjectName(QStringLiteral("selectedDirTextField"));
    m_selectedDirTextField->setReadOnly(true);
    m_selectedDirTextField->setFocusPolicy(Qt::ClickFocus);
    m_selectFolderButton = new ImageButton(QStringLiteral("open_folder"), this);
    m_selectFolderButton->setObjectName(QStringLiteral("selectFolderButton"));
    m_removeFileButton = new ImageButton(QStringLiteral("delete"), this);
    m_removeFileButton->setObjectName(QStringLiteral("removeFileButton"));
    m_removeFileButton->setEnabled(false);
    connect(m_selectFolderButton, &ImageButton::clicked, this,
        &ClipListPanel::selectFolderButtonTouched);
    connect(
        m_removeFileButton, &ImageButton::clicked, this, &ClipListPanel::removeFileButtonTouched);
    auto* folderRow = new QHBoxLayout;
    folderRow->setSpacing(6);
    folderRow->addWidget(m_selectedDirTextField, 1);
    folderRow->addWidget(m_selectFolderButton);
    folderRow->addWidget(m_removeFileButton);
    layout->addLayout(folderRow);
    applyLanguageSettings();
}

void ClipListPanel::setLibrary(ClipLibrary* library)
{
    m_library = library;
    QList<const QObject*> groupA;
    for (ImageButton* button : m_filterButtons)
        groupA.append(button);
    library->setFilterButtons(groupA);
    connect(library, &ClipLibrary::rowsReloaded, this, &ClipListPanel::reloadRows);
    connect(library, &ClipLibrary::rowSelected, this, &ClipListPanel::selectRow);
    connect(library, &ClipLibrary::filterButtonsChanged, this, &ClipListPanel::showFilterButtons);
    connect(
        library, &ClipLibrary::selectedDirTextChanged, m_selectedDirTextField, &QLineEdit::setText);
    m_selectedDirTextField->setText(library->selectedDirText());
    showFilterButtons(0, library->videoFileFilterGroupA());
    reloadRows();
}

void ClipListPanel::applyLanguageSettings()
{
    for (int i = 0; i < m_filterButtons.size(); ++i) {
        m_filterButtons[i]->setText(localized(kFilterKeys[i]));
        m_filterButtons[i]->setToolTip(localized(kFilterKeys[i]));
    }
    m_table->setToolTip(QString());
    m_selectedDirTextField->setPlaceholderText(localized(LocalizationKeys::kClipFolder));
    m_selectedDirTextField->setToolTip(localized(LocalizationKeys::kClipFolder));
    m_selectFolderButton->setToolTip(localized(LocalizationKeys::kOpenFolder));
    m_removeFileButton->setToolTip(localized(LocalizationKeys::kDeleteClip));
}

void ClipListPanel::reloadRows()
{
    const QSignalBlocker blocker(m_table);
    m_table->clear();
    const QList<ClipLibrary::Row> rows = m_library->rows();
    for (const ClipLibrary::Row& row : rows) {
        auto* item = new QListWidgetItem(row.name, m_table);
        item->setToolTip(row.path);
        item->setForeground(row.saved ? TavroStyle::kSavedVideo : TavroStyle::kText);
    }
    const int selected = m_library->selectedRow();
    if (selected >= 0 && selected < m_table->count())
        m_table->setCurrentRow(selected);
    const bool enabled = m_library->canRemoveOrSave();
    m_removeFileButton->setEnabled(enabled);
    emit canRemoveOrSaveChanged(enabled);
}

void ClipListPanel::selectRow(int row)
{
    if (row < 0 || row >= m_table->count())
        return;
    const QSignalBlocker blocker(m_table);
    m_table->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
    m_table->scrollToItem(m_table->item(row));
}

void ClipListPanel::showFilterButtons(int group, int pressedIndex)
{
    if (group != 0)
        return; // the second group has no buttons
    for (int i = 0; i < m_filterButtons.size(); ++i) {
        const bool pressed = i == pressedIndex;
        m_filterButtons[i]->setImageName(QLatin1String(
            pressed ? ClipLibrary::kPressedFilterImage : ClipLibrary::kNormalFilterImage));
        m_filterButtons[i]->setHoverImageEnabled(!pressed);
    }
}
