#include "telemetry/TolmRecordReader.h"

#include "telemetry/RmcSentence.h"
#include "telemetry/TavroClipData.h"

#include <QString>

#include <algorithm>
#include <cmath>

using TelemetryText::FieldList;

namespace {

constexpr qsizetype kGsensorFields = 4;
constexpr qsizetype kGsensoriFields = 6;
constexpr qsizetype kRmcFields = 6;
constexpr qsizetype kAppendedRmcFields = 13;
constexpr qsizetype kAppendedRmcFirst = 6;

bool isRmcKeyword(const FieldList& fields, qsizetype index)
{
    return fields.fieldIs(index, "GPRMC") || fields.fieldIs(index, "GNRMC");
}

// Counts times 128 over the scale, rounded half up, within +-512 (4 g).
int16_t scaledCount(int32_t count, int64_t quotient)
{
    const float numerator = static_cast<float>(static_cast<int64_t>(count) * 128);
    const double value = static_cast<double>(numerator / static_cast<float>(quotient)) + 0.5;
    return static_cast<int16_t>(std::clamp(std::floor(value), -512.0, 512.0));
}

} // namespace

TolmRecordReader::TolmRecordReader(TavroClipData& record, Source source)
    : m_record(record)
    , m_source(source)
    , m_writer(record)
    , m_second(SecondBuffer::kMaxCapacity)
{
}

// The camera writes z with at most three characters but may leave junk after
// it: only the fourth character decides, so "-128" reads as "-12" and "12ab" as "1".
QByteArray TolmRecordReader::cut3(QByteArrayView field)
{
    const QString text = QString::fromUtf8(field);
    if (text.size() < 4)
        return field.toByteArray();
    const QChar fourth = text.at(3);
    const bool numeric = fourth == u'-' || (fourth >= u'0' && fourth <= u'9');
    return text.left(numeric ? 3 : 1).toUtf8();
}

// Keeps one character past the leading sign/digits, of which at most two count.
QByteArray TolmRecordReader::leadcut(QByteArrayView field)
{
    const QString text = QString::fromUtf8(field);
    if (text.size() < 4)
        return field.toByteArray();
    qsizetype lead = 0;
    while (lead < text.size()
        && (text.at(lead) == u'-' || (text.at(lead) >= u'0' && text.at(lead) <= u'9')))
        ++lead;
    return text.left(std::min<qsizetype>(lead, 2) + 1).toUtf8();
}

RawGSample TolmRecordReader::plainSample(const FieldList& fields)
{
    return { static_cast<int16_t>(fields.intField(1)), static_cast<int16_t>(fields.intField(2)),
        static_cast<int16_t>(TelemetryText::intValue(cut3(fields.field(3)))) };
}

RawGSample TolmRecordReader::scaledSample(const FieldList& fields)
{
    const int32_t scale = fields.intField(1);
    const int64_t quotient = scale == 0 ? 0 : int64_t(fields.intField(2)) / scale;
    if (quotient == 0)
        return {};
    return { scaledCount(fields.intField(3), quotient), scaledCount(fields.intField(4), quotient),
        scaledCount(TelemetryText::intValue(leadcut(fields.field(5))), quotient) };
}

FieldList TolmRecordReader::subtitleFields(QByteArrayView joined)
{
    const QByteArrayView record = TelemetryText::trimmed(joined);
    FieldList fields;
    const qsizetype semicolon = record.indexOf(';');
    if (semicolon < 0) {
        fields.appendSplit(record);
        return fields;
    }
    fields.appendSplit(record.first(semicolon));
    const QByteArrayView rest = record.sliced(semicolon + 1);
    fields.appendSplit(rest.first(rest.indexOf(';') < 0 ? rest.size() : rest.indexOf(';')));
    return fields;
}

void TolmRecordReader::endSecond(const GpsFix& fix)
{
    m_current = fix;
    m_sawRmc = true;
    // From subtitles a second without G samples still takes ten samples:
    // copies of the buffer's first slot.
    if (m_source == Source::Subtitle || !m_second.isEmpty())
        m_second.distribute(m_writer, m_current);
}

void TolmRecordReader::handle(const FieldList& fields)
{
    const bool subtitle = m_source == Source::Subtitle;
    if (fields.fieldIs(0, "gsensor")) {
        if (fields.size() >= kGsensorFields)
            m_second.append(plainSample(fields));
    } else if (fields.fieldIs(0, "gsensori")) {
        if (fields.size() < kGsensoriFields)
            return;
        m_second.append(scaledSample(fields));
        if (subtitle && fields.size() >= kAppendedRmcFields
            && isRmcKeyword(fields, kAppendedRmcFirst))
            endSecond(RmcSentence::read(fields, kAppendedRmcFirst));
    } else if (subtitle && fields.fieldIs(0, "CAR")) {
        m_second.append(m_second.isEmpty() ? plainSample(fields) : m_second.last());
    } else if (isRmcKeyword(fields, 0)) {
        if (fields.size() >= kRmcFields)
            endSecond(RmcSentence::read(fields, 0));
    }
}

int TolmRecordReader::finish()
{
    if (!m_second.isEmpty()) {
        if (m_writer.count() > 0) {
            m_second.distribute(m_writer, m_current);
        } else if (m_sawRmc) {
            // G samples but no completed second although GPS was present.
            m_record.setGpsDataCount(0);
            return 0;
        } else {
            // A clip with G records and no GPS at all: one sample per record.
            for (int i = 0; i < m_second.count(); ++i)
                m_writer.append(m_second.at(i), GpsFix {});
        }
    }
    return m_writer.finish();
}
