// The RMC date and time a sample's second carries, and how a clip's samples get their times.
#include "ExportTestSupport.h"

#include "telemetry/RmcSentence.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace ExportTestSupport;

namespace {

QString isoOf(int64_t msecs)
{
    return msecs == kNoUtcMsecs
        ? QStringLiteral("none")
        : QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC).toString(Qt::ISODateWithMs);
}

} // namespace

TEST(RmcClock, TimeAndDateFields)
{
    const struct {
        const char* time;
        const char* date;
        const char* expected;
    } cases[] = {
        { "081502", "150324", "2024-03-15T08:15:02.000Z" },
        { "081502.25", "150324", "2024-03-15T08:15:02.250Z" },
        { "235959.999", "311299", "2099-12-31T23:59:59.999Z" },
        { "000000.00", "290224", "2024-02-29T00:00:00.000Z" }, // leap day
        { "120000.00", "010124*6A", "2024-01-01T12:00:00.000Z" }, // checksum after the date
        { "120000.00", "290223", "none" }, // no 29 February in 2023
        { "240000", "010124", "none" },
        { "126000", "010124", "none" },
        { "12000", "010124", "none" },
        { "12a000", "010124", "none" },
        { "120000.x", "010124", "none" },
        { "120000", "", "none" },
        { "", "010124", "none" },
        { "120000", "0101245", "none" },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.time) + " " + c.date);
        EXPECT_EQ(isoOf(RmcSentence::utcMsecs(c.time, c.date)), QString::fromLatin1(c.expected));
    }
}

TEST(RmcClock, SamplesCountOnThroughMidnightAndMonthEnd)
{
    QVector<Second> seconds(3);
    seconds[0].time = "235959.00";
    seconds[0].date = "310124";
    seconds[1].time = "000000.00";
    seconds[1].date = "010224";
    seconds[2].time = "000001.00";
    seconds[2].date = "010224";
    const ClipTimeline clip = timelineFromSubtitles("clip_F.mp4", subtitleText(seconds));
    ASSERT_EQ(clip.samples.size(), 30);
    EXPECT_EQ(clip.timeSource, ClipTimeline::TimeSource::Gps);
    EXPECT_EQ(isoOf(clip.samples[0].utcMsecs), "2024-01-31T23:59:59.000Z");
    EXPECT_EQ(isoOf(clip.samples[9].utcMsecs), "2024-01-31T23:59:59.900Z");
    EXPECT_EQ(isoOf(clip.samples[10].utcMsecs), "2024-02-01T00:00:00.000Z");
    EXPECT_EQ(isoOf(clip.samples[29].utcMsecs), "2024-02-01T00:00:01.900Z");
    for (int i = 1; i < clip.samples.size(); ++i)
        EXPECT_EQ(clip.samples[i].utcMsecs - clip.samples[i - 1].utcMsecs, 100) << i;
}

TEST(RmcClock, SecondWithoutClockCountsOnFromItsNeighbours)
{
    QVector<Second> seconds(3);
    seconds[0].time = "";
    seconds[1].time = "100001";
    seconds[2].time = "garbage";
    const ClipTimeline clip = timelineFromSubtitles("clip.mp4", subtitleText(seconds));
    ASSERT_EQ(clip.samples.size(), 30);
    EXPECT_EQ(isoOf(clip.samples[0].utcMsecs), "2024-01-01T10:00:00.000Z");
    EXPECT_EQ(isoOf(clip.samples[29].utcMsecs), "2024-01-01T10:00:02.900Z");
}

TEST(RmcClock, FileNameWhenTheSentencesHaveNoClock)
{
    const struct {
        const char* name;
        QDateTime expected;
    } cases[] = {
        { "20240315_081502_F.mp4", QDateTime(QDate(2024, 3, 15), QTime(8, 15, 2), Qt::LocalTime) },
        { "Rec_20160307_140509.avi", QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9), Qt::LocalTime) },
        { "SAVED_20240315-081502.mp4",
            QDateTime(QDate(2024, 3, 15), QTime(8, 15, 2), Qt::LocalTime) },
        { "clip.avi", QDateTime() }, { "20241332_081502.mp4", QDateTime() }, // month 13
        { "120240315_081502.mp4", QDateTime() }, // nine digits: not a date
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const int64_t msecs = ClipTimeline::fileNameTime(QString::fromLatin1(c.name));
        EXPECT_EQ(msecs, c.expected.isValid() ? c.expected.toMSecsSinceEpoch() : kNoUtcMsecs);
    }

    QVector<Second> noClock(2);
    for (Second& s : noClock)
        s.date = "";
    const ClipTimeline named
        = timelineFromSubtitles("20240315_081502_F.mp4", subtitleText(noClock));
    EXPECT_EQ(named.timeSource, ClipTimeline::TimeSource::FileName);
    EXPECT_EQ(named.startUtc(), cases[0].expected.toMSecsSinceEpoch());
    EXPECT_EQ(named.endUtc() - named.startUtc(), 1900);
    const ClipTimeline unnamed = timelineFromSubtitles("clip.mp4", subtitleText(noClock));
    EXPECT_EQ(unnamed.timeSource, ClipTimeline::TimeSource::None);
    EXPECT_EQ(unnamed.startUtc(), kNoUtcMsecs);
}
