#include "RiffAviRewriter.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr qsizetype kHeaderSize = 8;
// Four-character codes of the AVI layout.
constexpr char kRiff[] = "RIFF";
constexpr char kAviForm[] = "AVI ";
constexpr char kList[] = "LIST";
constexpr char kHeaderList[] = "hdrl";
constexpr char kMovieList[] = "movi";
constexpr char kStreamHeader[] = "strh";
constexpr char kVideoStream[] = "vids";
constexpr char kSuperIndex[] = "indx";
constexpr char kIndex[] = "idx1";
constexpr char kJunk[] = "JUNK";
constexpr char kFrontFrame[] = "00dc";
constexpr char kFrontFrameRaw[] = "00db";
constexpr char kStandardIndexPrefix[] = "ix";

quint32 readLe32(const QByteArray& bytes, qsizetype offset)
{
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}

void appendLe32(QByteArray& out, quint32 value)
{
    char buffer[4];
    qToLittleEndian(value, buffer);
    out.append(buffer, 4);
}

void patchLe32(QByteArray& out, qsizetype offset, quint32 value)
{
    qToLittleEndian(value, out.data() + offset);
}

bool isStreamZeroVideo(const QByteArray& fourcc)
{
    return fourcc == kFrontFrame || fourcc == kFrontFrameRaw;
}

// Appends a chunk with its pad byte and returns where its header starts.
qsizetype appendChunk(QByteArray& out, const QByteArray& fourcc, const char* data, quint32 size)
{
    const qsizetype at = out.size();
    out.append(fourcc.left(4));
    appendLe32(out, size);
    out.append(data, size);
    if (size & 1)
        out.append('\0');
    return at;
}

} // namespace

bool RiffAviRewriter::load(const QByteArray& bytes)
{
    m_source = bytes;
    m_media.clear();
    m_moviAt = -1;
    m_fps = 0;
    if (bytes.size() < 12 || !bytes.startsWith(kRiff) || bytes.mid(8, 4) != kAviForm) {
        m_error = QStringLiteral("not a RIFF AVI file");
        return false;
    }
    qsizetype offset = 12;
    while (offset + kHeaderSize <= bytes.size()) {
        const QByteArray fourcc = bytes.mid(offset, 4);
        const quint32 size = readLe32(bytes, offset + 4);
        if (size > bytes.size() - offset - kHeaderSize) {
            m_error = QStringLiteral("chunk %1 runs past the end").arg(QString::fromLatin1(fourcc));
            return false;
        }
        const QByteArray listType = size >= 4 ? bytes.mid(offset + 8, 4) : QByteArray();
        if (fourcc == kList && listType == kHeaderList && !readHeaderList(offset + 12, size - 4))
            return false;
        if (fourcc == kList && listType == kMovieList) {
            m_moviAt = offset;
            if (!readMovi(offset + 12, size - 4))
                return false;
        }
        if (fourcc == kIndex)
            readIdx1(offset + kHeaderSize, size);
        offset += kHeaderSize + size + (size & 1);
    }
    if (m_moviAt < 0 || m_media.isEmpty() || m_fps <= 0) {
        m_error = QStringLiteral("no movi list or no video stream");
        return false;
    }
    return true;
}

bool RiffAviRewriter::readHeaderList(qsizetype offset, quint32 size)
{
    const qsizetype end = offset + size;
    while (offset + kHeaderSize <= end) {
        const QByteArray fourcc = m_source.mid(offset, 4);
        const quint32 chunkSize = readLe32(m_source, offset + 4);
        if (chunkSize > end - offset - kHeaderSize) {
            m_error = QStringLiteral("header chunk runs past its list");
            return false;
        }
        if (fourcc == kList && chunkSize >= 4 && !readHeaderList(offset + 12, chunkSize - 4))
            return false;
        // The rate of the first video stream clocks the telemetry.
        if (fourcc == kStreamHeader && chunkSize >= 32 && m_fps <= 0
            && m_source.mid(offset + 8, 4) == kVideoStream) {
            const quint32 scale = readLe32(m_source, offset + 8 + 20);
            const quint32 rate = readLe32(m_source, offset + 8 + 24);
            if (scale > 0)
                m_fps = double(rate) / scale;
        }
        // An OpenDML super index would point at dropped chunks: blank it.
        if (fourcc == kSuperIndex)
            m_source.replace(offset, 4, kJunk);
        offset += kHeaderSize + chunkSize + (chunkSize & 1);
    }
    return true;
}

bool RiffAviRewriter::readMovi(qsizetype offset, quint32 size)
{
    const qsizetype end = offset + size;
    while (offset + kHeaderSize <= end) {
        const QByteArray fourcc = m_source.mid(offset, 4);
        const quint32 chunkSize = readLe32(m_source, offset + 4);
        if (chunkSize > end - offset - kHeaderSize) {
            m_error = QStringLiteral("movi chunk runs past its list");
            return false;
        }
        if (fourcc == kList && chunkSize >= 4) {
            if (!readMovi(offset + 12, chunkSize - 4))
                return false;
        } else if (!fourcc.startsWith(kStandardIndexPrefix) && fourcc != kJunk) {
            m_media.push_back({ fourcc, offset + kHeaderSize, chunkSize, 0 });
        }
        offset += kHeaderSize + chunkSize + (chunkSize & 1);
    }
    return true;
}

void RiffAviRewriter::readIdx1(qsizetype offset, quint32 size)
{
    // ffmpeg writes the entries in movi order; take their key-frame flags.
    const qsizetype count = std::min<qsizetype>(size / 16, m_media.size());
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype entry = offset + i * 16;
        if (m_source.mid(entry, 4) == m_media[i].fourcc)
            m_media[i].indexFlags = readLe32(m_source, entry + 4);
    }
}

QByteArray RiffAviRewriter::rewrite(const QVector<TelemetryScripts::TimedChunk>& chunks) const
{
    QVector<TelemetryScripts::TimedChunk> timed = chunks;
    std::stable_sort(
        timed.begin(), timed.end(), [](const auto& a, const auto& b) { return a.t < b.t; });

    // Headers keep their content; indx chunks were blanked in m_source.
    QByteArray out = m_source.left(m_moviAt);
    out.reserve(m_source.size() + timed.size() * 64);
    const qsizetype listAt = out.size();
    out.append(kList);
    appendLe32(out, 0);
    out.append(kMovieList);
    const qsizetype moviFourccAt = listAt + 8;

    QByteArray index;
    const auto addIndex = [&](const QByteArray& fourcc, quint32 flags, qsizetype at, quint32 size) {
        index.append(fourcc.left(4));
        appendLe32(index, flags);
        appendLe32(index, quint32(at - moviFourccAt));
        appendLe32(index, size);
    };
    qsizetype next = 0;
    const auto flushUntil = [&](double t) {
        for (; next < timed.size() && timed[next].t < t; ++next) {
            const auto& c = timed[next];
            appendChunk(out, c.fourcc, c.payload.constData(), quint32(c.payload.size()));
        }
    };
    qint64 frame = 0;
    for (const Chunk& chunk : m_media) {
        if (isStreamZeroVideo(chunk.fourcc))
            flushUntil(double(frame++) / m_fps);
        const qsizetype at
            = appendChunk(out, chunk.fourcc, m_source.constData() + chunk.dataOffset, chunk.size);
        addIndex(chunk.fourcc, chunk.indexFlags, at, chunk.size);
    }
    flushUntil(1e300);
    patchLe32(out, listAt + 4, quint32(out.size() - listAt - kHeaderSize));
    appendChunk(out, kIndex, index.constData(), quint32(index.size()));
    patchLe32(out, 4, quint32(out.size() - kHeaderSize));
    return out;
}
