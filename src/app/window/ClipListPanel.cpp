#include "app/window/ClipListPanel.h"

#include "app/session/SessionTexts.h"
#include "app/session/TripLibrary.h"
#include "app/window/ImageButton.h"
#include "display/SpeedUnit.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "library/ClipLibrary.h"
#include "library/TavroNotifier.h"
#include "style/TavroStyle.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QStackedWidget>
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
            showTrips(false);
            if (m_library)
                m_library->videoFileFilterTouched(button);
        });
    }
    m_tripsButton = new ImageButton(QLatin1String(ClipLibrary::kNormalFilterImage), this);
    m_tripsButton->setObjectName(QStringLiteral("tripsButton"));
    m_tripsButton->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    filters->addWidget(m_tripsButton, 1, 2);
    connect(m_tripsButton, &ImageButton::clicked, this, [this] { showTrips(true); });
    layout->addLayout(filters);

    m_lists = new QStackedWidget(this);
    m_table = new QListWidget(this);
    m_table->setObjectName(QStringLiteral("fileListTableView"));
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setUniformItemSizes(true);
    m_table->setItemDelegate(new ClipRowDelegate(m_table));
    m_table->setFocusPolicy(Qt::ClickFocus);
    m_table->setFont(TavroStyle::tabularFont());
    m_lists->addWidget(m_table);
    m_tripTable = new QListWidget(this);
    m_tripTable->setObjectName(QStringLiteral("tripListView"));
    m_tripTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tripTable->setFocusPolicy(Qt::ClickFocus);
    m_tripTable->setWordWrap(true);
    m_tripTable->setItemDelegate(new ClipRowDelegate(m_tripTable));
    m_tripTable->setSpacing(2);
    m_lists->addWidget(m_tripTable);
    layout->addWidget(m_lists, 1);
    connect(m_tripTable, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        const QVariant index = item->data(Qt::UserRole);
        if (index.isValid())
            emit tripDoubleClicked(index.toInt());
    });
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
    m_tripsButton->setText(localized(LocalizationKeys::kFilterTrips));
    m_tripsButton->setToolTip(localized(LocalizationKeys::kFilterTrips));
    reloadTripRows();
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
    // Delete acts on the clip list's selection: not while trips are shown.
    m_removeFileButton->setEnabled(enabled && !m_showingTrips);
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
        const bool pressed = i == pressedIndex && !m_showingTrips;
        m_filterButtons[i]->setImageName(QLatin1String(
            pressed ? ClipLibrary::kPressedFilterImage : ClipLibrary::kNormalFilterImage));
        m_filterButtons[i]->setHoverImageEnabled(!pressed);
    }
}

void ClipListPanel::setTripLibrary(TripLibrary* trips)
{
    m_trips = trips;
    connect(trips, &TripLibrary::tripsChanged, this, &ClipListPanel::reloadTripRows);
    // Distances and speeds follow the speed unit.
    connect(&TavroNotifier::shared(), &TavroNotifier::refreshSpeedUnit, this,
        &ClipListPanel::reloadTripRows);
    reloadTripRows();
}

void ClipListPanel::showTrips(bool shown)
{
    m_showingTrips = shown;
    m_lists->setCurrentWidget(shown ? m_tripTable : m_table);
    m_tripsButton->setImageName(
        QLatin1String(shown ? ClipLibrary::kPressedFilterImage : ClipLibrary::kNormalFilterImage));
    m_tripsButton->setHoverImageEnabled(!shown);
    if (m_library) {
        showFilterButtons(0, m_library->videoFileFilterGroupA());
        m_removeFileButton->setEnabled(!shown && m_library->canRemoveOrSave());
    }
    if (shown && m_trips)
        m_trips->load();
}

void ClipListPanel::selectTrip(int index)
{
    for (int row = 0; row < m_tripTable->count(); ++row) {
        QListWidgetItem* item = m_tripTable->item(row);
        if (item->data(Qt::UserRole) == QVariant(index)) {
            m_tripTable->setCurrentItem(item, QItemSelectionModel::ClearAndSelect);
            m_tripTable->scrollToItem(item);
        }
    }
}

void ClipListPanel::reloadTripRows()
{
    if (!m_tripTable)
        return;
    const int selected
        = m_tripTable->currentItem() ? m_tripTable->currentItem()->data(Qt::UserRole).toInt() : -1;
    m_tripTable->clear();
    if (!m_trips)
        return;
    const auto notice = [this](const char* key) {
        auto* item = new QListWidgetItem(localized(key), m_tripTable);
        item->setFlags(Qt::ItemIsEnabled);
        item->setForeground(TavroStyle::kSecondaryText);
    };
    if (!m_trips->isLoaded()) {
        if (m_trips->isLoading())
            notice(LocalizationKeys::kTripsLoading);
        return;
    }
    if (m_trips->trips().isEmpty()) {
        notice(LocalizationKeys::kNoTrips);
        return;
    }
    const bool miles = SpeedUnit::storedSpeedUnit() != SpeedUnit::kKmph;
    for (int i = 0; i < m_trips->trips().size(); ++i) {
        const Trip& trip = m_trips->trips()[i];
        auto* item = new QListWidgetItem(SessionTexts::tripRowText(trip, miles), m_tripTable);
        item->setData(Qt::UserRole, i);
        item->setForeground(TavroStyle::kText);
        item->setToolTip(
            QStringLiteral("%1 – %2").arg(QFileInfo(trip.clips.constFirst().path).fileName(),
                QFileInfo(trip.clips.constLast().path).fileName()));
    }
    if (selected >= 0)
        selectTrip(selected);
}
