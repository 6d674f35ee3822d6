#include "app/window/ViewerCommandLine.h"

#include "TavroVersion.h"

#include "library/ClipFolders.h"
#include "library/ClipNaming.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

namespace ViewerCommandLine {

namespace {

bool absoluteFolder(const QString& path, QString& absolute, QString& message)
{
    const QFileInfo info(path);
    if (!info.isDir()) {
        message = QStringLiteral("tavro-viewer: not a folder: %1").arg(path);
        return false;
    }
    absolute = info.absoluteFilePath();
    return true;
}

// A folder to list, or a clip to play with its folder as the list. The
// desktop passes file:// URLs; other URLs cannot be opened.
bool openTarget(const QString& argument, ViewerOptions& options, QString& message)
{
    static const QRegularExpression otherUrl(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*://"));
    QString path = argument;
    if (argument.startsWith(QLatin1String("file:"))) {
        path = QUrl(argument).toLocalFile();
    } else if (otherUrl.match(argument).hasMatch()) {
        message = QStringLiteral("tavro-viewer: only local files can be opened: %1").arg(argument);
        return false;
    }
    const QFileInfo info(path);
    if (info.isDir())
        return absoluteFolder(path, options.folder, message);
    if (!info.isFile()) {
        message = QStringLiteral("tavro-viewer: no such folder or clip: %1").arg(argument);
        return false;
    }
    if (!ClipFolders::isClipExtension(ClipNaming::lowerExtension(path))) {
        message = QStringLiteral("tavro-viewer: not a clip (.avi, .mp4, .mov): %1").arg(argument);
        return false;
    }
    options.clip = info.absoluteFilePath();
    options.folder = info.absolutePath();
    return true;
}

} // namespace

Result parse(const QStringList& arguments)
{
    Result result;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays dash-camera clips with their G-sensor and GPS telemetry."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption card(QStringLiteral("card"),
        QStringLiteral("Treat DIR as a mounted memory card (may be given more than once)."),
        QStringLiteral("DIR"));
    const QCommandLineOption noSplash(QStringLiteral("no-splash"),
        QStringLiteral("Open the main window at once, without the splash."));
    const QCommandLineOption play(QStringLiteral("play"),
        QStringLiteral("Play the clip of list row ROW (0 the first) once the window is up."),
        QStringLiteral("ROW"));
    const QCommandLineOption trip(QStringLiteral("trip"),
        QStringLiteral("Play trip N (0 the first, as `tavro trips` numbers them) of the folder "
                       "once the window is up."),
        QStringLiteral("N"));
    const QCommandLineOption settings(QStringLiteral("settings"),
        QStringLiteral("Open the camera settings of the card once the window is up."));
    parser.addOption(card);
    parser.addOption(noSplash);
    parser.addOption(play);
    parser.addOption(trip);
    parser.addOption(settings);
    parser.addPositionalArgument(QStringLiteral("folder"),
        QStringLiteral("A folder of clips to list at start, or a clip to play (its folder is "
                       "listed)."),
        QStringLiteral("[FOLDER | CLIP]"));

    if (!parser.parse(arguments)) {
        result.exit = true;
        result.exitCode = 2;
        result.message
            = QStringLiteral("tavro-viewer: %1\n%2").arg(parser.errorText(), parser.helpText());
        return result;
    }
    if (parser.isSet(help) || parser.isSet(version)) {
        result.exit = true;
        result.message = parser.isSet(help)
            ? parser.helpText()
            : QStringLiteral("tavro-viewer %1\n").arg(Tavro::versionString());
        return result;
    }
    const QStringList positional = parser.positionalArguments();
    QString message;
    bool ok = true;
    for (const QString& dir : parser.values(card)) {
        QString absolute;
        if (ok && (ok = absoluteFolder(dir, absolute, message)))
            result.options.cardFolders.append(absolute);
    }
    // "Open with" on several files passes them all; the first one is opened.
    if (ok && !positional.isEmpty())
        ok = openTarget(positional.first(), result.options, message);
    result.options.showSplash = !parser.isSet(noSplash);
    result.options.openSettings = parser.isSet(settings);
    if (ok && parser.isSet(play)) {
        bool number = false;
        result.options.playRow = parser.value(play).toInt(&number);
        ok = number && result.options.playRow >= 0;
        if (!ok)
            message = QStringLiteral("tavro-viewer: --play wants a row number from 0");
        if (ok && !result.options.clip.isEmpty()) {
            ok = false;
            message = QStringLiteral("tavro-viewer: --play and a clip cannot go together");
        }
    }
    if (ok && parser.isSet(trip)) {
        bool number = false;
        result.options.tripNumber = parser.value(trip).toInt(&number);
        ok = number && result.options.tripNumber >= 0;
        if (!ok)
            message = QStringLiteral("tavro-viewer: --trip wants a trip number from 0");
        if (ok && (parser.isSet(play) || !result.options.clip.isEmpty())) {
            ok = false;
            message = QStringLiteral(
                "tavro-viewer: --trip goes with a folder, not with --play or a clip");
        }
    }
    if (!ok) {
        result.exit = true;
        result.exitCode = 2;
        result.message = message + QLatin1Char('\n');
    }
    return result;
}

} // namespace ViewerCommandLine
