#include "DemoCard.h"

#include "CardSettings.h"
#include "ClipJobs.h"
#include "DemoClipPlan.h"
#include "DemoTimeline.h"
#include "FfmpegJobs.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

const QString kStampFile = QStringLiteral(".make-demo-card");
const QStringList kCardFolders { "cont_rec", "evt_rec", "motion_rec", "manual_rec", "parking_rec",
    "motion_timelapse_rec", "Saved_Videos", "SETTING" };

QString readStamp(const QString& dir)
{
    QFile file(dir + QLatin1Char('/') + kStampFile);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

bool copyInto(const QString& file, const QString& cardRoot, const QString& folder)
{
    const QString target
        = cardRoot + QLatin1Char('/') + folder + QLatin1Char('/') + QFileInfo(file).fileName();
    return QDir(cardRoot).mkpath(folder) && QFile::copy(file, target);
}

} // namespace

QString DemoOptions::stamp() const
{
    // Bump the generator number when the output changes for the same options.
    constexpr int kGenerator = 4;
    return QStringLiteral(
        "make-demo-card %1 length=%2 clips=%3 front=%4x%5 rear=%6x%7 fps=%8 seed=%9 extra=%10")
        .arg(kGenerator)
        .arg(clipSeconds)
        .arg(continuousClips)
        .arg(frontSize.width())
        .arg(frontSize.height())
        .arg(rearSize.width())
        .arg(rearSize.height())
        .arg(fps)
        .arg(seed)
        .arg(extraCards ? 1 : 0);
}

bool DemoCard::prepareFolder(const QString& dir, bool& upToDate)
{
    QDir folder(dir);
    upToDate = false;
    if (!folder.exists())
        return true;
    const QString stamp = readStamp(dir);
    if (stamp.isEmpty()) {
        if (folder.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
            return true;
        m_error = QStringLiteral("%1 is not empty and was not made by make-demo-card; "
                                 "choose another folder")
                      .arg(dir);
        return false;
    }
    upToDate = stamp == m_options.stamp() && !m_options.force;
    if (upToDate)
        return true;
    // Our own earlier card: remove what we wrote, nothing else.
    for (const QString& name : kCardFolders)
        QDir(folder.filePath(name)).removeRecursively();
    // Scratch space of a run that was cut short.
    for (const QString& name :
        folder.entryList({ kStampFile + QStringLiteral("-*") }, QDir::Dirs | QDir::Hidden))
        QDir(folder.filePath(name)).removeRecursively();
    QFile::remove(folder.filePath(kStampFile));
    return true;
}

bool DemoCard::generate(QTextStream& log)
{
    QElapsedTimer timer;
    timer.start();
    const QString out = QFileInfo(m_options.outDir).absoluteFilePath();
    m_options.outDir = out;
    QStringList folders { out };
    if (m_options.extraCards)
        folders << kelCardPath(out) << webCardPath(out);
    bool allUpToDate = true;
    for (const QString& folder : folders) {
        bool upToDate = false;
        if (!prepareFolder(folder, upToDate))
            return false;
        allUpToDate = allUpToDate && upToDate;
    }
    if (allUpToDate) {
        log << "make-demo-card: " << out << " is up to date (use --force to write it again)\n";
        return true;
    }
    if (FfmpegJobs::ffmpegPath().isEmpty()) {
        m_error = QStringLiteral("ffmpeg was not found on PATH (Debian package ffmpeg)");
        return false;
    }
    for (const QString& folder : folders)
        if (!writeStamp(folder, false))
            return false;
    QStringList written;
    if (!writeClips(log, written))
        return false;
    if (!CardSettings::writeRecordCamera(out, m_error))
        return false;
    if (m_options.extraCards && !writeExtraCards(written))
        return false;
    for (const QString& folder : folders)
        if (!writeStamp(folder, true))
            return false;
    log << "make-demo-card: wrote " << written.size() << " clip files to " << out << " in "
        << QString::number(timer.elapsed() / 1000.0, 'f', 1) << " s\n";
    return true;
}

bool DemoCard::writeClips(QTextStream& log, QStringList& written)
{
    DemoTimeline timeline(m_options.seed);
    const QVector<DemoClip> clips = DemoClipPlan::plan(m_options, timeline);
    QTemporaryDir work(
        m_options.outDir + QLatin1Char('/') + kStampFile + QStringLiteral("-XXXXXX"));
    if (!work.isValid()) {
        m_error = QStringLiteral("cannot create a scratch folder in %1").arg(m_options.outDir);
        return false;
    }
    const ClipJobs clipJobs(m_options, timeline, work.path(), m_options.outDir);
    FfmpegJobs jobs(m_options.jobs);
    for (const DemoClip& clip : clips) {
        if (!clipJobs.add(clip, jobs, m_error))
            return false;
        for (const QString& file : clip.files)
            written << m_options.outDir + QLatin1Char('/') + clip.folder + QLatin1Char('/') + file;
    }
    if (m_options.verbose)
        log << "make-demo-card: encoding " << written.size() << " clip files, " << m_options.jobs
            << " at a time\n"
            << Qt::flush;
    if (!jobs.run(m_options.verbose)) {
        m_error = jobs.errorString();
        return false;
    }
    return true;
}

bool DemoCard::writeExtraCards(const QStringList& written)
{
    const QString kel = kelCardPath(m_options.outDir);
    const QString web = webCardPath(m_options.outDir);
    if (!CardSettings::writeKelCamera(kel, m_error) || !CardSettings::writeWebCamera(web, m_error))
        return false;
    // A few recordings on each, so that the viewer lists something there too.
    bool ok = true;
    int pairFiles = 0;
    for (const QString& file : written) {
        const QString name = QFileInfo(file).fileName();
        const QString folder = QFileInfo(file).dir().dirName();
        if (name.startsWith(QLatin1String("Rec_")) || name.startsWith(QLatin1String("Event_")))
            ok = ok && copyInto(file, kel, folder);
        else if (folder == QLatin1String("cont_rec") && name.endsWith(QLatin1String(".mp4"))
            && pairFiles < 2) {
            ok = ok && copyInto(file, web, folder);
            ++pairFiles;
        }
    }
    if (!ok)
        m_error = QStringLiteral("cannot copy clips to the extra cards");
    return ok;
}

bool DemoCard::writeStamp(const QString& dir, bool finished)
{
    const QString text = finished ? m_options.stamp() : QStringLiteral("unfinished");
    QFile file(dir + QLatin1Char('/') + kStampFile);
    if (!QDir().mkpath(dir) || !file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || file.write((text + QLatin1Char('\n')).toUtf8()) < 0) {
        m_error = QStringLiteral("cannot write %1").arg(file.fileName());
        return false;
    }
    return true;
}
