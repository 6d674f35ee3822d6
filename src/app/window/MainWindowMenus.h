#pragma once

#include "app/window/MainWindow.h"

#include <QAction>
#include <QList>
#include <QMenu>

class RouteExportDialog;
class VideoExportDialog;

// The main window's menus and the actions it keeps in step with its controls.
struct MainWindow::Menus {
    QMenu* file = nullptr;
    QMenu* view = nullptr;
    QMenu* language = nullptr;
    QMenu* speedUnit = nullptr;
    QMenu* help = nullptr;
    QAction* openFolder = nullptr;
    QAction* saveCopy = nullptr;
    QAction* saveStill = nullptr;
    QAction* printStill = nullptr;
    QMenu* exportRoute = nullptr; // the selected clip, or every clip as trips
    QAction* exportRouteSelected = nullptr;
    QAction* exportRouteAll = nullptr;
    RouteExportDialog* routeExport = nullptr;
    QAction* exportVideo = nullptr;
    VideoExportDialog* videoExport = nullptr;
    QAction* quit = nullptr;
    QAction* fullScreen = nullptr;
    QAction* swapCameras = nullptr;
    QAction* flip = nullptr;
    QAction* about = nullptr;
    QList<QAction*> languageItems; // in ViewerLanguage::Item order
    QAction* unitKmphMenuItem = nullptr;
    QAction* unitMphMenuItem = nullptr;
};
