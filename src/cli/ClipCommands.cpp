#include "cli/CliCommands.h"

#include "library/ClipConverter.h"
#include "library/ClipFolders.h"
#include "library/ClipLibrary.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace {

constexpr std::array<const char*, ClipFolders::kFilterCount> kFilterNames {
    "all",
    "continuous",
    "motion",
    "event",
    "manual",
};

int filterIndex(const QString& name)
{
    for (int i = 0; i < int(kFilterNames.size()); ++i) {
        if (name == QLatin1String(kFilterNames[size_t(i)]))
            return i;
    }
    return -1;
}

// A JSON string literal, escaped as QJson escapes it.
QString jsonString(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray { text }).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

// One row as {"name":S,"path":S,"partner":S,"saved":bool}, keys in this order.
QString rowLine(const ClipLibrary::Row& row)
{
    return QStringLiteral("{\"name\":%1,\"path\":%2,\"partner\":%3,\"saved\":%4}")
        .arg(jsonString(row.name), jsonString(row.path), jsonString(row.partner),
            row.saved ? QStringLiteral("true") : QStringLiteral("false"));
}

int clipsUsage(CliIo& io)
{
    io.err << "usage: tavro clips DIR [--filter all|continuous|motion|event|manual]\n";
    return CliExit::kUsage;
}

} // namespace

// tavro clips DIR [--filter NAME]: the clip list's rows in displayed order.
int runClipsCommand(const QStringList& args, CliIo& io)
{
    QString folder;
    int filter = ClipFolders::kFilterAll;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--filter")) {
            if (i + 1 >= args.size() || (filter = filterIndex(args[i + 1])) < 0)
                return clipsUsage(io);
            ++i;
        } else if (args[i].startsWith(u'-') || !folder.isEmpty()) {
            return clipsUsage(io);
        } else {
            folder = args[i];
        }
    }
    if (folder.isEmpty())
        return clipsUsage(io);
    const QFileInfo info(folder);
    if (!info.isDir()) {
        io.err << "tavro: cannot open folder " << folder << '\n';
        return CliExit::kFailure;
    }
    ClipLibrary library;
    library.setVideoFileFilter(filter);
    library.refreshVideoFileListWithURL(QUrl::fromLocalFile(info.absoluteFilePath()));
    for (const ClipLibrary::Row& row : library.rows())
        io.out << rowLine(row) << '\n';
    return CliExit::kOk;
}

// tavro convert CLIP: the playable files the viewer would open for the clip.
int runConvertCommand(const QStringList& args, CliIo& io)
{
    if (args.size() != 1 || args.first().startsWith(u'-')) {
        io.err << "usage: tavro convert CLIP\n";
        return CliExit::kUsage;
    }
    const QFileInfo info(args.first());
    if (!info.isFile()) {
        io.err << "tavro: cannot open clip " << args.first() << '\n';
        return CliExit::kFailure;
    }
    const ClipConverter converter;
    const auto files = converter.checkAndConvertVideo(QUrl::fromLocalFile(info.absoluteFilePath()));
    QJsonValue list = QJsonValue::Null;
    if (files) {
        QJsonArray paths;
        for (const QUrl& file : *files)
            paths.append(file.toLocalFile());
        list = paths;
    }
    io.out << QString::fromUtf8(
        QJsonDocument(QJsonObject { { "files", list } }).toJson(QJsonDocument::Compact))
           << '\n';
    if (!files || files->isEmpty()) {
        io.err << "tavro: the clip cannot be converted for playing\n";
        return CliExit::kFailure;
    }
    return CliExit::kOk;
}
