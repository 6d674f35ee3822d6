#include "export/ClipTimeline.h"

#include "telemetry/TavroClipData.h"

#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

constexpr int64_t kSampleMsecs = 100; // ten samples a second

bool isPosition(float lat, float lng)
{
    // The record's own rule (any non-zero coordinate), and a place on Earth.
    return (lat != 0.0f || lng != 0.0f) && std::isfinite(lat) && std::isfinite(lng)
        && std::abs(lat) <= 90.0f && std::abs(lng) <= 180.0f;
}

// The RMC clock of each sample: the second's time, 0.1 s per sample within it.
bool applyGpsTimes(const TavroClipData& record, QVector<RouteSample>& samples)
{
    bool any = false;
    int64_t runValue = kNoUtcMsecs;
    int64_t runIndex = 0;
    for (int i = 0; i < samples.size(); ++i) {
        const int64_t utc = record.sampleUtcMsecs(i);
        if (utc == kNoUtcMsecs) {
            runValue = kNoUtcMsecs;
            continue;
        }
        if (utc != runValue) {
            runValue = utc;
            runIndex = 0;
        }
        samples[i].utcMsecs = utc + runIndex++ * kSampleMsecs;
        any = true;
    }
    return any;
}

// Samples of seconds without a clock: counted on from the last timed sample
// before them, or back from the first one after them.
void fillGaps(QVector<RouteSample>& samples)
{
    qsizetype last = -1;
    for (qsizetype i = 0; i < samples.size(); ++i) {
        if (samples[i].utcMsecs != kNoUtcMsecs)
            last = i;
        else if (last >= 0)
            samples[i].utcMsecs = samples[last].utcMsecs + (i - last) * kSampleMsecs;
    }
    qsizetype next = -1;
    for (qsizetype i = samples.size() - 1; i >= 0; --i) {
        if (samples[i].utcMsecs != kNoUtcMsecs)
            next = i;
        else if (next >= 0)
            samples[i].utcMsecs = samples[next].utcMsecs - (next - i) * kSampleMsecs;
    }
}

} // namespace

ClipTimeline ClipTimeline::fromRecord(const QString& file, const TavroClipData& record)
{
    ClipTimeline timeline;
    timeline.file = file;
    timeline.fileNameUtc = fileNameTime(QFileInfo(file).fileName());
    const int count = std::clamp(record.clipDataCount(), 0, TavroClipData::kCapacity);
    timeline.samples.resize(count);
    for (int i = 0; i < count; ++i) {
        RouteSample& s = timeline.samples[i];
        float lat = 0.0f;
        float lng = 0.0f;
        record.getClipDataWithIndex(i, s.gx, s.gy, s.gz, lat, lng, s.speedKmh);
        s.t = i / double(TavroClipData::kSamplesPerSecond);
        s.hasFix = isPosition(lat, lng);
        s.lat = lat;
        s.lng = lng;
    }
    if (applyGpsTimes(record, timeline.samples)) {
        fillGaps(timeline.samples);
        timeline.timeSource = TimeSource::Gps;
        return timeline;
    }
    const int64_t start = timeline.fileNameUtc;
    if (start != kNoUtcMsecs) {
        for (int i = 0; i < count; ++i)
            timeline.samples[i].utcMsecs = start + i * kSampleMsecs;
        timeline.timeSource = TimeSource::FileName;
    }
    return timeline;
}

void ClipTimeline::fillRecord(TavroClipData& record) const
{
    const int count = int(std::min<qsizetype>(samples.size(), TavroClipData::kCapacity));
    int withPosition = 0;
    for (int i = 0; i < count; ++i) {
        const RouteSample& s = samples[i];
        record.storeG(i, int16_t(s.gx), int16_t(s.gy), int16_t(s.gz));
        record.storeGps(i, float(s.lat), float(s.lng));
        record.storeSpeed(i, s.speedKmh);
        record.storeUtc(i, s.utcMsecs);
        withPosition += (s.lat != 0.0 || s.lng != 0.0) ? 1 : 0;
    }
    record.setClipDataCount(count);
    record.setGpsDataCount(withPosition);
}

int64_t ClipTimeline::fileNameTime(const QString& fileName)
{
    static const QRegularExpression kStamp(
        QStringLiteral("(?<!\\d)(\\d{4})(\\d{2})(\\d{2})[_-]?(\\d{2})(\\d{2})(\\d{2})(?!\\d)"));
    const QRegularExpressionMatch match = kStamp.match(fileName);
    if (!match.hasMatch())
        return kNoUtcMsecs;
    const auto number = [&](int group) { return match.capturedView(group).toInt(); };
    const QDate date(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6));
    if (!date.isValid() || !time.isValid() || date.year() < 2000)
        return kNoUtcMsecs;
    return QDateTime(date, time, Qt::LocalTime).toMSecsSinceEpoch();
}

int ClipTimeline::fixCount() const
{
    return int(std::count_if(
        samples.cbegin(), samples.cend(), [](const RouteSample& s) { return s.hasFix; }));
}

int64_t ClipTimeline::startUtc() const
{
    if (!samples.isEmpty())
        return samples.constFirst().utcMsecs;
    return timeSource == TimeSource::FileName ? fileNameUtc : kNoUtcMsecs;
}

int64_t ClipTimeline::endUtc() const
{
    return samples.isEmpty() ? startUtc() : samples.constLast().utcMsecs;
}

int64_t ClipTimeline::recordingEndUtc() const
{
    const int64_t start = startUtc();
    if (start == kNoUtcMsecs || !media.isKnown())
        return endUtc();
    return start + int64_t(std::llround(media.seconds * 1000.0));
}

double ClipTimeline::seconds() const
{
    if (media.isKnown())
        return media.seconds;
    return samples.size() / double(TavroClipData::kSamplesPerSecond);
}

int ClipTimeline::maxSpeedKmh() const
{
    int best = 0;
    for (const RouteSample& s : samples)
        best = std::max(best, s.speedKmh);
    return best;
}

double ClipTimeline::peakG() const
{
    double best = 0;
    for (const RouteSample& s : samples)
        best = std::max(
            best, std::sqrt(double(s.gx) * s.gx + double(s.gy) * s.gy + double(s.gz) * s.gz));
    return best / 128.0;
}
