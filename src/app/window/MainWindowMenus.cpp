// The menus of the main window: File, View, Language, Speed unit and Help.
#include "app/window/MainWindowMenus.h"
#include "app/window/MainWindow.h"

#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/ImageButton.h"
#include "app/window/RouteExportDialog.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoExportDialog.h"
#include "display/SpeedUnit.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"

#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

namespace {

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

} // namespace

void MainWindow::buildMenus()
{
    m_menus = std::make_unique<Menus>();
    buildFileMenu();
    buildViewMenu();
    buildLanguageMenu();
    buildSpeedUnitMenu();
    m_menus->help = menuBar()->addMenu(QString());
    m_menus->about = m_menus->help->addAction(QString());
    m_menus->about->setMenuRole(QAction::AboutRole);
    connect(m_menus->about, &QAction::triggered, this, &MainWindow::showAbout);
    applyMenuTexts();
    updateActionStates();
}

void MainWindow::buildFileMenu()
{
    Menus& m = *m_menus;
    m.file = menuBar()->addMenu(QString());
    m.openFolder = m.file->addAction(QString());
    m.openFolder->setShortcut(QKeySequence::Open);
    m.saveCopy = m.file->addAction(QString());
    m.saveCopy->setShortcut(QKeySequence::Save);
    m.saveStill = m.file->addAction(QString());
    m.printStill = m.file->addAction(QString());
    m.printStill->setShortcut(QKeySequence::Print);
    buildExportRouteMenu();
    m.exportVideo = m.file->addAction(QString());
    m.exportVideo->setObjectName(QStringLiteral("exportVideoAction"));
    m.videoExport = new VideoExportDialog(this, session());
    connect(m.exportVideo, &QAction::triggered, m.videoExport, &VideoExportDialog::exportVideo);
    m.file->addSeparator();
    m.quit = m.file->addAction(QString());
    m.quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    m.quit->setMenuRole(QAction::QuitRole);
    connect(m.openFolder, &QAction::triggered, this, &MainWindow::selectFolderButtonTouched);
    connect(m.saveCopy, &QAction::triggered, this, &MainWindow::saveFileButtonTouched);
    connect(m.saveStill, &QAction::triggered, this, &MainWindow::snapshotButtonTouched);
    connect(m.printStill, &QAction::triggered, this, &MainWindow::printButtonTouched);
    connect(m.quit, &QAction::triggered, &session(), &PlaybackSession::appExitButtonTouched);
}

void MainWindow::buildExportRouteMenu()
{
    Menus& m = *m_menus;
    m.exportRoute = m.file->addMenu(QString());
    m.exportRouteSelected = m.exportRoute->addAction(QString());
    m.exportRouteAll = m.exportRoute->addAction(QString());
    m.routeExport = new RouteExportDialog(this, m_controller->library());
    connect(m.exportRouteSelected, &QAction::triggered, m.routeExport,
        [dialog = m.routeExport] { dialog->exportRoute(false); });
    connect(m.exportRouteAll, &QAction::triggered, m.routeExport,
        [dialog = m.routeExport] { dialog->exportRoute(true); });
}

void MainWindow::buildViewMenu()
{
    Menus& m = *m_menus;
    PlaybackSession* s = &session();
    m.view = menuBar()->addMenu(QString());
    m.fullScreen = m.view->addAction(QString());
    m.fullScreen->setShortcut(QKeySequence(Qt::Key_F11));
    m.swapCameras = m.view->addAction(QString());
    m.flip = m.view->addAction(QString());
    connect(m.fullScreen, &QAction::triggered, s, [s] { s->fullscreenButtonTouched(nullptr); });
    connect(m.swapCameras, &QAction::triggered, s, &PlaybackSession::toggleVideoSwithButtonTouched);
    connect(m.flip, &QAction::triggered, s, &PlaybackSession::videoRotateButtonTouched);
}

void MainWindow::buildLanguageMenu()
{
    Menus& m = *m_menus;
    ViewerLanguage* language = &m_controller->viewerLanguage();
    m.language = menuBar()->addMenu(QString());
    auto* group = new QActionGroup(m.language);
    group->setExclusive(true);
    using Item = ViewerLanguage::Item;
    const QList<std::pair<Item, void (ViewerLanguage::*)()>> items {
        { Item::English, &ViewerLanguage::languageChangeToEnglish },
        { Item::French, &ViewerLanguage::languageChangeToFrench },
        { Item::Japanese, &ViewerLanguage::languageChangeToJapanese },
        { Item::Portuguese, &ViewerLanguage::languageChangeToPortuguese },
    };
    for (const auto& [item, change] : items) {
        QAction* action = m.language->addAction(ViewerLanguage::menuTitle(item));
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setData(ViewerLanguage::codeForItem(item));
        connect(action, &QAction::triggered, language, change);
        m.languageItems.append(action);
    }
    connect(language, &ViewerLanguage::markedItemChanged, this, [this](ViewerLanguage::Item item) {
        m_menus->languageItems.at(int(item))->setChecked(true);
    });
    m.languageItems.at(int(language->markedItem()))->setChecked(true);
}

void MainWindow::buildSpeedUnitMenu()
{
    Menus& m = *m_menus;
    SpeedUnit* unit = &m_controller->speedUnit();
    m.speedUnit = menuBar()->addMenu(QString());
    auto* group = new QActionGroup(m.speedUnit);
    group->setExclusive(true);
    m.unitKmphMenuItem = m.speedUnit->addAction(QStringLiteral("KM/H"));
    m.unitMphMenuItem = m.speedUnit->addAction(QStringLiteral("MPH"));
    for (QAction* action : { m.unitKmphMenuItem, m.unitMphMenuItem }) {
        action->setCheckable(true);
        action->setActionGroup(group);
    }
    connect(m.unitKmphMenuItem, &QAction::triggered, unit, &SpeedUnit::onMenuSpeedKmph);
    connect(m.unitMphMenuItem, &QAction::triggered, unit, &SpeedUnit::onMenuSpeedMph);
    connect(unit, &SpeedUnit::speedUnitItemMarked, this, [this](int marked) {
        (marked == SpeedUnit::kMph ? m_menus->unitMphMenuItem : m_menus->unitKmphMenuItem)
            ->setChecked(true);
    });
    unit->markCurrentSpeedUnit();
}

void MainWindow::applyMenuTexts()
{
    using namespace LocalizationKeys;
    Menus& m = *m_menus;
    m.file->setTitle(localized(kMenuFile));
    m.openFolder->setText(localized(kMenuOpenFolder));
    m.saveCopy->setText(localized(kMenuSaveClipCopy));
    m.saveStill->setText(localized(kMenuSaveStill));
    m.printStill->setText(localized(kMenuPrintStill));
    m.exportRoute->setTitle(localized(kMenuExportRoute));
    m.exportRouteSelected->setText(localized(kExportRouteSelected));
    m.exportRouteAll->setText(localized(kExportRouteAll));
    m.exportVideo->setText(localized(kMenuExportVideo));
    m.quit->setText(localized(kMenuQuit));
    m.view->setTitle(localized(kMenuView));
    m.fullScreen->setText(localized(kFullScreen));
    m.swapCameras->setText(localized(kSwapCameras));
    m.flip->setText(localized(kFlipVideo));
    m.language->setTitle(localized(kMenuLanguage));
    m.speedUnit->setTitle(localized(kMenuSpeedUnit));
    m.help->setTitle(localized(kMenuHelp));
    m.about->setText(localized(kMenuAbout));
}

void MainWindow::updateActionStates()
{
    if (!m_menus)
        return;
    const TransportBar* t = m_transport;
    m_menus->saveCopy->setEnabled(m_canRemoveOrSave);
    m_menus->exportRoute->setEnabled(m_canRemoveOrSave);
    m_menus->saveStill->setEnabled(t->snapshotButton->isEnabled());
    m_menus->exportVideo->setEnabled(t->snapshotButton->isEnabled());
    m_menus->printStill->setEnabled(t->printButton->isEnabled());
    m_menus->fullScreen->setEnabled(t->fullscreenButton->isEnabled());
    m_menus->swapCameras->setEnabled(t->videoSwitchButton->isEnabled());
    m_menus->flip->setEnabled(t->videoRotateButton->isEnabled());
}
