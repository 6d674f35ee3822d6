#include "library/ClipMediaInfo.h"

#include "library/ClipListScan.h"
#include "telemetry/ClipFileBytes.h"

#include <QFileInfo>

#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>

namespace {

// --- ISO-BMFF (MP4, QuickTime): big-endian boxes

constexpr QByteArrayView kMoov("moov");
constexpr QByteArrayView kMvhd("mvhd");
constexpr QByteArrayView kTrak("trak");
constexpr QByteArrayView kTkhd("tkhd");
constexpr QByteArrayView kMdia("mdia");
constexpr QByteArrayView kHdlr("hdlr");
constexpr QByteArrayView kVideoHandler("vide");
constexpr QByteArrayView kSoundHandler("soun");

// --- RIFF AVI: little-endian chunks

constexpr QByteArrayView kRiff("RIFF");
constexpr QByteArrayView kAviForm("AVI ");
constexpr QByteArrayView kList("LIST");
constexpr QByteArrayView kHdrl("hdrl");
constexpr QByteArrayView kStrl("strl");
constexpr QByteArrayView kAvih("avih");
constexpr QByteArrayView kStrh("strh");
constexpr QByteArrayView kStrf("strf");
constexpr QByteArrayView kVids("vids");
constexpr QByteArrayView kAuds("auds");

std::optional<uint64_t> readBig(QByteArrayView bytes, qsizetype pos, int width)
{
    if (pos < 0 || pos > bytes.size() - width)
        return std::nullopt;
    uint64_t value = 0;
    for (int i = 0; i < width; ++i)
        value = (value << 8) | static_cast<uint8_t>(bytes[pos + i]);
    return value;
}

std::optional<uint32_t> readLittle32(QByteArrayView bytes, qsizetype pos)
{
    if (pos < 0 || pos > bytes.size() - 4)
        return std::nullopt;
    uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = (value << 8) | static_cast<uint8_t>(bytes[pos + i]);
    return value;
}

// Calls `visit(type, payload)` for each box directly inside `container`;
// stops at the first box that claims more than is left, or when `visit`
// returns false.
void forEachBox(QByteArrayView container,
    const std::function<bool(QByteArrayView type, QByteArrayView payload)>& visit)
{
    qsizetype pos = 0;
    while (container.size() - pos >= 8) {
        uint64_t size = *readBig(container, pos, 4);
        qsizetype header = 8;
        if (size == 1) {
            const std::optional<uint64_t> large = readBig(container, pos + 8, 8);
            if (!large)
                return;
            size = *large;
            header = 16;
        } else if (size == 0) {
            size = static_cast<uint64_t>(container.size() - pos); // up to the end
        }
        if (size < static_cast<uint64_t>(header)
            || size > static_cast<uint64_t>(container.size() - pos))
            return;
        const QByteArrayView type = container.sliced(pos + 4, 4);
        if (!visit(type, container.sliced(pos + header, qsizetype(size) - header)))
            return;
        pos += qsizetype(size);
    }
}

std::optional<QByteArrayView> childBox(QByteArrayView container, QByteArrayView wanted)
{
    std::optional<QByteArrayView> found;
    forEachBox(container, [&](QByteArrayView type, QByteArrayView payload) {
        if (type != wanted)
            return true;
        found = payload;
        return false;
    });
    return found;
}

// mvhd: version and flags, then (32 or 64-bit) creation and modification
// times, the time scale and the duration.
double movieSeconds(QByteArrayView mvhd)
{
    const std::optional<uint64_t> version = readBig(mvhd, 0, 1);
    if (!version)
        return 0;
    const bool wide = *version == 1;
    const std::optional<uint64_t> scale = readBig(mvhd, wide ? 20 : 12, 4);
    const std::optional<uint64_t> duration = readBig(mvhd, wide ? 24 : 16, wide ? 8 : 4);
    if (!scale || !duration || *scale == 0)
        return 0;
    // All ones: the writer did not know the length.
    if (*duration == (wide ? UINT64_MAX : uint64_t(UINT32_MAX)))
        return 0;
    return double(*duration) / double(*scale);
}

// tkhd ends with the picture's width and height, 16.16 fixed point.
QSize trackSize(QByteArrayView tkhd)
{
    const std::optional<uint64_t> version = readBig(tkhd, 0, 1);
    if (!version)
        return {};
    const qsizetype at = *version == 1 ? 88 : 76;
    const std::optional<uint64_t> width = readBig(tkhd, at, 4);
    const std::optional<uint64_t> height = readBig(tkhd, at + 4, 4);
    if (!width || !height)
        return {};
    return QSize(int(*width >> 16), int(*height >> 16));
}

// The track's media handler ("vide", "soun", "text", ...); empty when unreadable.
QByteArrayView handlerOf(QByteArrayView trak)
{
    const std::optional<QByteArrayView> mdia = childBox(trak, kMdia);
    const std::optional<QByteArrayView> hdlr = mdia ? childBox(*mdia, kHdlr) : std::nullopt;
    // version and flags, pre_defined, then the handler type
    if (!hdlr || hdlr->size() < 12)
        return {};
    return hdlr->sliced(8, 4);
}

ClipMediaInfo fromMovie(QByteArrayView bytes)
{
    ClipMediaInfo info;
    const std::optional<QByteArrayView> moov = childBox(bytes, kMoov);
    if (!moov)
        return info;
    forEachBox(*moov, [&](QByteArrayView type, QByteArrayView payload) {
        if (type == kMvhd) {
            info.seconds = movieSeconds(payload);
        } else if (type == kTrak && handlerOf(payload) == kSoundHandler) {
            ++info.audioStreams;
        } else if (type == kTrak && handlerOf(payload) == kVideoHandler) {
            if (++info.videoStreams == 1) {
                if (const std::optional<QByteArrayView> tkhd = childBox(payload, kTkhd))
                    info.frameSize = trackSize(*tkhd);
            }
        }
        return true;
    });
    return info;
}

// Calls `visit(id, payload)` for each chunk of a RIFF list body (LIST
// chunks with their list type as the first four payload bytes).
void forEachChunk(QByteArrayView list,
    const std::function<void(QByteArrayView id, QByteArrayView payload)>& visit)
{
    qsizetype pos = 0;
    while (list.size() - pos >= 8) {
        const uint32_t size = *readLittle32(list, pos + 4);
        const qsizetype left = list.size() - pos - 8;
        if (qint64(size) > left)
            return;
        visit(list.sliced(pos, 4), list.sliced(pos + 8, qsizetype(size)));
        pos += 8 + qsizetype(size) + qsizetype(size & 1);
    }
}

double streamSeconds(QByteArrayView strh)
{
    const std::optional<uint32_t> scale = readLittle32(strh, 20);
    const std::optional<uint32_t> rate = readLittle32(strh, 24);
    const std::optional<uint32_t> length = readLittle32(strh, 32);
    if (!scale || !rate || !length || *scale == 0 || *rate == 0)
        return 0;
    return double(*length) * double(*scale) / double(*rate);
}

QSize bitmapSize(QByteArrayView strf)
{
    const std::optional<uint32_t> width = readLittle32(strf, 4);
    const std::optional<uint32_t> height = readLittle32(strf, 8);
    if (!width || !height)
        return {};
    // Bottom-up bitmaps give a negative height.
    return QSize(std::abs(int32_t(*width)), std::abs(int32_t(*height)));
}

void readStreamList(QByteArrayView strl, ClipMediaInfo& info)
{
    std::optional<QByteArrayView> strh;
    std::optional<QByteArrayView> strf;
    forEachChunk(strl, [&](QByteArrayView id, QByteArrayView payload) {
        if (id == kStrh && !strh)
            strh = payload;
        else if (id == kStrf && !strf)
            strf = payload;
    });
    if (strh && strh->size() >= 4 && strh->first(4) == kAuds)
        ++info.audioStreams;
    if (!strh || strh->size() < 36 || strh->first(4) != kVids)
        return;
    if (++info.videoStreams > 1)
        return;
    info.seconds = streamSeconds(*strh);
    if (strf)
        info.frameSize = bitmapSize(*strf);
}

ClipMediaInfo fromAvi(QByteArrayView bytes)
{
    ClipMediaInfo info;
    double mainSeconds = 0;
    forEachChunk(bytes.sliced(12), [&](QByteArrayView id, QByteArrayView payload) {
        if (id != kList || payload.size() < 4 || payload.first(4) != kHdrl)
            return;
        forEachChunk(payload.sliced(4), [&](QByteArrayView child, QByteArrayView body) {
            if (child == kAvih) {
                const std::optional<uint32_t> micros = readLittle32(body, 0);
                const std::optional<uint32_t> frames = readLittle32(body, 16);
                if (micros && frames)
                    mainSeconds = double(*micros) * double(*frames) / 1e6;
            } else if (child == kList && body.size() >= 4 && body.first(4) == kStrl) {
                readStreamList(body.sliced(4), info);
            }
        });
    });
    if (!(info.seconds > 0) || !std::isfinite(info.seconds))
        info.seconds = mainSeconds;
    return info;
}

} // namespace

ClipMediaInfo ClipMediaInfo::fromBytes(QByteArrayView bytes)
{
    ClipMediaInfo info;
    if (bytes.size() >= 12 && bytes.first(4) == kRiff && bytes.sliced(8, 4) == kAviForm)
        info = fromAvi(bytes);
    else
        info = fromMovie(bytes);
    if (!std::isfinite(info.seconds) || info.seconds < 0)
        info.seconds = 0;
    return info;
}

ClipMediaInfo ClipMediaInfo::read(const QString& path)
{
    if (!ClipListScan::isRegularFile(QFileInfo(path)))
        return {};
    const ClipFileBytes file(path, ClipFileBytes::Access::Random);
    if (!file.isOpen())
        return {};
    const ClipMediaInfo info = fromBytes(file.bytes());
    return file.isIntact() ? info : ClipMediaInfo {};
}
