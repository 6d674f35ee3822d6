#include "editors/window/SettingWindow.h"

#include "editors/EditorsLogging.h"
#include "editors/window/SettingPage.h"
#include "i18n/LanguageRefreshObserver.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/SettingWindowLanguage.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"

#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QVBoxLayout>

SettingWindow::SettingWindow(QWidget* parentWindow, ViewerLanguage* mainWindowLanguage)
    : QDialog(parentWindow)
{
    setObjectName(QStringLiteral("settingWindow"));
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (mainWindowLanguage)
        buildLanguageMenu(*mainWindowLanguage);
    new LanguageRefreshObserver([this] { applyLanguageSettings(); }, this);
}

SettingWindow::~SettingWindow() = default;

void SettingWindow::buildLanguageMenu(ViewerLanguage& language)
{
    m_language = std::make_unique<SettingWindowLanguage>(language);
    auto* bar = new QMenuBar(this);
    layout()->setMenuBar(bar);
    m_languageMenu = bar->addMenu(QString());
    auto* group = new QActionGroup(this);
    group->setExclusive(true);
    using Item = ViewerLanguage::Item;
    const struct {
        Item item;
        void (SettingWindowLanguage::*change)();
    } entries[] = {
        { Item::English, &SettingWindowLanguage::languageChangeToEnglish },
        { Item::French, &SettingWindowLanguage::languageChangeToFrench },
        { Item::Japanese, &SettingWindowLanguage::languageChangeToJapanese },
        { Item::Portuguese, &SettingWindowLanguage::languageChangeToPortuguese },
    };
    for (const auto& entry : entries) {
        QAction* action = m_languageMenu->addAction(ViewerLanguage::menuTitle(entry.item));
        action->setCheckable(true);
        action->setChecked(language.markedItem() == entry.item);
        group->addAction(action);
        const auto change = entry.change;
        connect(
            action, &QAction::triggered, this, [this, change] { (m_language.get()->*change)(); });
        m_languageActions.append(action);
    }
    connect(&language, &ViewerLanguage::markedItemChanged, this, [this](ViewerLanguage::Item item) {
        const int index = int(item); // the entries are in Item order
        if (index >= 0 && index < m_languageActions.size())
            m_languageActions[index]->setChecked(true);
    });
    applyLanguageSettings();
}

void SettingWindow::applyLanguageSettings()
{
    if (m_languageMenu)
        m_languageMenu->setTitle(
            TavroLanguages::SharedTavroLanguages().localized(LocalizationKeys::kMenuLanguage));
}

QRect SettingWindow::centredOver(const QRect& parentFrame, const QSize& pageSize)
{
    const int x = parentFrame.x() + (parentFrame.width() - pageSize.width()) / 2;
    const int y = parentFrame.y() + (parentFrame.height() - pageSize.height()) / 2;
    return QRect(QPoint(x, y), pageSize);
}

int SettingWindow::showModalWindow(SettingPage* page, bool showTitleBar)
{
    m_page = page;
    page->setParent(this);
    layout()->addWidget(page);
    setWindowFlag(Qt::FramelessWindowHint, !showTitleBar);
    connect(page, &SettingPage::finished, this, &QDialog::done);
    adjustSize();
    if (QWidget* parent = parentWidget()) {
        const QRect frame = parent->window()->frameGeometry();
        move(centredOver(frame, size()).topLeft());
    }
    qCDebug(lcEditors) << "modal page" << page->objectName() << "title bar" << showTitleBar;
    const int result = exec();
    hide();
    return result;
}

void SettingWindow::keyPressEvent(QKeyEvent* event)
{
    if (m_page && m_page->keyDown(event->key(), event->modifiers())) {
        event->accept();
        return;
    }
    // Escape and the like were the page's to decide.
    if (event->key() == Qt::Key_Escape)
        return;
    QDialog::keyPressEvent(event);
}
