#pragma once

#include <QString>
#include <QStringList>

// The viewer's command line:
//   tavro-viewer [--card DIR]... [--no-splash] [--play ROW | --trip N] [--settings] [FOLDER | CLIP]
// --card DIR treats DIR as a mounted memory card (for demos, tests, and cards
// copied to disk); FOLDER is listed at start instead of the card's clips. A
// CLIP (path or file:// URL, as the desktop's "Open with" passes it) lists its
// folder and plays at once. --trip N plays trip N of the folder listed
// (numbered as `tavro trips` numbers them). --settings opens the camera
// settings once the main window is up, as the settings button does.
struct ViewerOptions {
    QStringList cardFolders;
    QString folder;
    // The clip to play once its folder is listed (absolute); empty for none.
    QString clip;
    bool showSplash = true;
    int playRow = -1;
    int tripNumber = -1;
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

// Parses the arguments (argv[0] first). Folders and clips are made absolute;
// one that does not exist, a file that is no clip and a URL that is no local
// file are usage errors. Of several FOLDER/CLIP arguments the first counts.
Result parse(const QStringList& arguments);

} // namespace ViewerCommandLine
