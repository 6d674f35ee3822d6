#include "BenchCard.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>
#include <cstring>
#include <filesystem>

namespace BenchCard {

namespace {

// The demo clips with telemetry, grouped so a front/rear pair stays together.
QList<QStringList> demoGroups(const QString& demo)
{
    QList<QStringList> groups;
    QDirIterator it(demo, { "*.mp4", "*.avi", "*.mov" }, QDir::Files, QDirIterator::Subdirectories);
    QStringList files;
    while (it.hasNext())
        files << it.next();
    files.sort();
    for (const QString& file : files) {
        if (file.contains(QLatin1String("Saved_Videos")) || file.contains(QLatin1String("R.mp4"))
            || file.contains(QLatin1String("R_BC.mp4")))
            continue;
        QStringList group { file };
        for (const auto& [front, rear] :
            { std::pair { "F_BC.mp4", "R_BC.mp4" }, std::pair { "F.mp4", "R.mp4" } }) {
            if (file.endsWith(QLatin1String(front))) {
                QString partner = file;
                partner.replace(partner.size() - int(std::strlen(front)), int(std::strlen(front)),
                    QLatin1String(rear));
                if (QFileInfo::exists(partner))
                    group << partner;
                break;
            }
        }
        groups << group;
    }
    return groups;
}

// Hard links (a copy where linking fails) of the demo clips, N files in all.
QStringList makeCard(const QString& demo, const QString& card, int clips)
{
    const QList<QStringList> groups = demoGroups(demo);
    QStringList made;
    if (groups.isEmpty())
        return made;
    for (int n = 0; made.size() < clips; ++n) {
        const QStringList& group = groups[n % groups.size()];
        const QString folder = card + u'/' + QFileInfo(group.first()).dir().dirName();
        QDir().mkpath(folder);
        for (const QString& source : group) {
            if (made.size() >= clips)
                break;
            const QString target = folder + QStringLiteral("/B%1_").arg(n, 4, 10, QLatin1Char('0'))
                + QFileInfo(source).fileName();
            if (!QFileInfo::exists(target)) {
                std::error_code error;
                std::filesystem::create_hard_link(
                    source.toStdString(), target.toStdString(), error);
                if (error)
                    QFile::copy(source, target);
            }
            made << target;
        }
    }
    return made;
}

QStringList cardClips(const QString& card)
{
    QStringList files;
    QDirIterator it(card, { "*.mp4", "*.avi", "*.mov" }, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort();
    return files;
}

} // namespace

QString sibling(const QString& name)
{
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

Run runProgram(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments);
    process.waitForFinished(-1);
    Run run;
    run.ms = timer.nsecsElapsed() / 1e6;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return run;
}

Run bestOf(int runs, const QString& program, const QStringList& arguments)
{
    Run best;
    best.ms = 1e300;
    for (int i = 0; i < runs; ++i) {
        const Run run = runProgram(program, arguments);
        if (run.ms < best.ms)
            best = run;
    }
    return best;
}

QStringList ensureCard(const QString& demo, const QString& card, int clips)
{
    if (!QFileInfo(demo).isDir()) {
        std::printf("writing the demo card into %s\n", qPrintable(demo));
        std::fflush(stdout);
        runProgram(sibling("make-demo-card"), { "--out", demo, "--no-extra-cards" });
    }
    QStringList files = cardClips(card);
    if (files.size() != clips) {
        QDir(card).removeRecursively();
        makeCard(demo, card, clips);
        files = cardClips(card);
    }
    return files.size() == clips ? files : QStringList();
}

} // namespace BenchCard
