#pragma once

#include <QString>
#include <QStringList>

// The viewer's command line:
//   tavro-viewer [--card DIR]... [--no-splash] [--play ROW] [--settings] [FOLDER]
// --card DIR treats DIR as a mounted memory card (for demos, tests, and cards
// copied to disk); FOLDER is listed at start instead of the card's clips;
// --settings opens the camera settings once the main window is up, as the
// settings button does.
struct ViewerOptions {
    QStringList cardFolders;
    QString folder;
    bool showSplash = true;
    int playRow = -1;
    bool openSettings = false;
};

namespace ViewerCommandLine {

struct Result {
    ViewerOptions options;
    // Set when the program should stop at once (help, version or a usage
    // error); `exitCode` then says how.
    bool exit = false;
    int exitCode = 0;
    QString message;
};

// Parses the arguments (argv[0] first). Folders are made absolute; a folder
// that does not exist is a usage error.
Result parse(const QStringList& arguments);

} // namespace ViewerCommandLine
