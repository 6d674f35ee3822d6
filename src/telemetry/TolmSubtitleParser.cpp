#include "telemetry/TolmSubtitleParser.h"

#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryText.h"
#include "telemetry/TolmRecordReader.h"


namespace {

// Walks the text the way the camera's own reader does: every scan first
// skips white space and line breaks, then takes text up to a stop mark.
class SubtitleScanner {
public:
    explicit SubtitleScanner(QByteArrayView text)
        : m_text(text)
    {
    }

    bool isAtEnd() const { return skipSpace(m_pos) >= m_text.size(); }

    QByteArrayView upToNewline()
    {
        m_pos = skipSpace(m_pos);
        const qsizetype start = m_pos;
        while (m_pos < m_text.size() && TelemetryText::newlineLength(m_text, m_pos) == 0)
            ++m_pos;
        return m_text.sliced(start, m_pos - start);
    }

    QByteArrayView upTo(QByteArrayView mark)
    {
        m_pos = skipSpace(m_pos);
        const qsizetype start = m_pos;
        const qsizetype found = m_text.indexOf(mark, m_pos);
        m_pos = found < 0 ? m_text.size() : found;
        return m_text.sliced(start, m_pos - start);
    }

    void skipMark(QByteArrayView mark)
    {
        const qsizetype pos = skipSpace(m_pos);
        if (m_text.sliced(pos).startsWith(mark))
            m_pos = pos + mark.size();
    }

private:
    qsizetype skipSpace(qsizetype pos) const
    {
        while (const int length = TelemetryText::whitespaceLength(m_text, pos))
            pos += length;
        return pos;
    }

    QByteArrayView m_text;
    qsizetype m_pos = 0;
};

} // namespace

int TolmSubtitleParser::parse(QByteArrayView bytes, TavroClipData& record) const
{
    constexpr QByteArrayView kBom("\xEF\xBB\xBF");
    if (bytes.startsWith(kBom))
        bytes = bytes.sliced(kBom.size());
    if (bytes.isEmpty() || !TelemetryText::isValidUtf8(bytes)) {
        record.setGpsDataCount(0);
        return 0;
    }
    TolmRecordReader reader(record, TolmRecordReader::Source::Subtitle);
    SubtitleScanner scanner(bytes);
    while (!scanner.isAtEnd() && !reader.isFull()) {
        scanner.upToNewline(); // counter
        scanner.upTo(" --> "); // start time
        scanner.skipMark("-->");
        scanner.upToNewline(); // end time
        const QByteArrayView payload = scanner.upTo("\n\n");
        if (!payload.isEmpty()) {
            // The fields are views into this copy: it outlives their use.
            QByteArray text = payload.toByteArray();
            text.replace('\n', ' ');
            reader.handle(TolmRecordReader::subtitleFields(text));
        }
    }
    return reader.finish();
}
