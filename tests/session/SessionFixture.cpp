#include "SessionFixture.h"

#include "TelemetryTextBuilders.h"

#include "library/Utils.h"

#include <QCoreApplication>

void SessionTest::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    Utils::SetFFMPEGPath(QStringLiteral("/usr/bin/ffmpeg-under-test"));
    m_card = std::make_unique<CardTreeBuilder>(m_dir.filePath(QStringLiteral("card")));
    m_converter = std::make_unique<ClipConverter>(m_runner, m_dir.filePath(QStringLiteral("work")));
    m_big.setAutoPrepareDuration(kClipSeconds);
    m_small.setAutoPrepareDuration(kClipSeconds);
    m_session = std::make_unique<PlaybackSession>(
        m_big, m_small, m_view, m_library, *m_converter, m_alerts);
}

void SessionTest::TearDown()
{
    m_session.reset();
    Utils::SetFFMPEGPath(QString());
}

QString SessionTest::addAviClip(
    const QString& relativePath, int samples, bool withGps, int videoStreams)
{
    TailBlockBuilder tail;
    for (int n = 0; n < samples; ++n) {
        const QByteArray fraction = QByteArray::number(n).rightJustified(4, '0');
        const QByteArray g = QByteArray::number(n) + ',' + QByteArray::number(-n) + ",128";
        tail.line(QByteArray::number(n)
            + (withGps ? ",37." + fraction + ",127." + fraction : ",0,0") + ','
            + QByteArray::number(n % 200) + ',' + g);
    }
    const QString path = m_card->add(relativePath, tail.bytes());
    m_runner.setStreams(path, videoStreams, 1);
    return path;
}

QString SessionTest::addMp4Clip(const QString& relativePath)
{
    return m_card->add(relativePath, QByteArray(300, 'v'));
}

void SessionTest::refresh()
{
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
}

void SessionTest::playRow(int row)
{
    m_library.setSelectedRow(row);
    m_session->playVideoWithIdx(row);
    settle();
}

void settle()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

std::pair<bool, bool> SessionTest::tickAt(double seconds)
{
    const int sensorUpdates = m_view.sensorUpdates;
    const qsizetype mapMoves = m_view.mapMoves.size();
    m_big.setMediaTime(seconds);
    m_small.setMediaTime(seconds);
    m_session->playVideoTimerCallback();
    return { m_view.sensorUpdates != sensorUpdates, m_view.mapMoves.size() != mapMoves };
}
