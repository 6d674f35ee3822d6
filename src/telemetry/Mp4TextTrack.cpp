#include "telemetry/Mp4TextTrack.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace Mp4TextTrack {

namespace {

// Four-character codes of the boxes on the way to the sample table.
constexpr QByteArrayView kMoov("moov");
constexpr QByteArrayView kTrak("trak");
constexpr QByteArrayView kMdia("mdia");
constexpr QByteArrayView kHdlr("hdlr");
constexpr QByteArrayView kMinf("minf");
constexpr QByteArrayView kStbl("stbl");
constexpr QByteArrayView kStsz("stsz");
constexpr QByteArrayView kStz2("stz2");
constexpr QByteArrayView kStco("stco");
constexpr QByteArrayView kCo64("co64");
constexpr QByteArrayView kStsc("stsc");
// Media handlers of timed text: QuickTime text and MP4 subtitles (mov_text).
constexpr QByteArrayView kTextHandler("text");
constexpr QByteArrayView kSubtitleHandler("sbtl");

constexpr qsizetype kFullBoxHeader = 4; // version and flags

uint64_t readBig(QByteArrayView bytes, qsizetype pos, int width)
{
    uint64_t value = 0;
    for (int i = 0; i < width; ++i)
        value = (value << 8) | static_cast<uint8_t>(bytes[pos + i]);
    return value;
}

// Big-endian unsigned of `width` bytes at `pos`, or nothing past the end.
std::optional<uint64_t> readAt(QByteArrayView bytes, qsizetype pos, int width)
{
    if (pos < 0 || pos > bytes.size() - width)
        return std::nullopt;
    return readBig(bytes, pos, width);
}

// The payload of the first box of that type directly inside `container`.
std::optional<QByteArrayView> findBox(QByteArrayView container, QByteArrayView type)
{
    qsizetype pos = 0;
    while (container.size() - pos >= 8) {
        uint64_t size = readBig(container, pos, 4);
        qsizetype header = 8;
        if (size == 1) {
            const std::optional<uint64_t> large = readAt(container, pos + 8, 8);
            if (!large)
                return std::nullopt;
            size = *large;
            header = 16;
        } else if (size == 0) {
            size = static_cast<uint64_t>(container.size() - pos); // up to the end
        }
        const auto left = static_cast<uint64_t>(container.size() - pos);
        if (size < static_cast<uint64_t>(header) || size > left)
            return std::nullopt;
        if (container.sliced(pos + 4, 4) == type)
            return container.sliced(pos + header, static_cast<qsizetype>(size) - header);
        pos += static_cast<qsizetype>(size);
    }
    return std::nullopt;
}

std::optional<QByteArrayView> findPath(
    QByteArrayView container, std::initializer_list<QByteArrayView> path)
{
    std::optional<QByteArrayView> box = container;
    for (const QByteArrayView type : path) {
        box = findBox(*box, type);
        if (!box)
            return std::nullopt;
    }
    return box;
}

bool isTextTrack(QByteArrayView trak)
{
    const std::optional<QByteArrayView> hdlr = findPath(trak, { kMdia, kHdlr });
    // version/flags, pre-defined, then the handler type
    if (!hdlr || hdlr->size() < kFullBoxHeader + 8)
        return false;
    const QByteArrayView handler = hdlr->sliced(kFullBoxHeader + 4, 4);
    return handler == kTextHandler || handler == kSubtitleHandler;
}

// One table of fixed-size entries after a full-box header and its 32-bit
// count, the count checked against the bytes that are really there.
struct Table {
    QByteArrayView entries;
    uint32_t count = 0;
    int entrySize = 0;

    uint64_t field(uint32_t index, int offset, int width) const
    {
        return readBig(entries, qsizetype(index) * entrySize + offset, width);
    }
};

std::optional<Table> readTable(QByteArrayView box, qsizetype countOffset, int entrySize)
{
    const std::optional<uint64_t> count = readAt(box, countOffset, 4);
    if (!count)
        return std::nullopt;
    const QByteArrayView entries = box.sliced(countOffset + 4);
    if (*count > static_cast<uint64_t>(entries.size() / entrySize))
        return std::nullopt;
    return Table { entries, static_cast<uint32_t>(*count), entrySize };
}

// Sample sizes: one size for all (stsz with a non-zero size), a table of
// 32-bit sizes (stsz), or packed 4-, 8- or 16-bit sizes (stz2).
class SampleSizes {
public:
    static std::optional<SampleSizes> read(QByteArrayView stbl)
    {
        SampleSizes sizes;
        if (const std::optional<QByteArrayView> stsz = findBox(stbl, kStsz)) {
            const std::optional<uint64_t> uniform = readAt(*stsz, kFullBoxHeader, 4);
            const std::optional<uint64_t> count = readAt(*stsz, kFullBoxHeader + 4, 4);
            if (!uniform || !count)
                return std::nullopt;
            sizes.m_uniform = *uniform;
            sizes.m_count = static_cast<uint32_t>(*count);
            sizes.m_bits = 32;
            sizes.m_table = stsz->sliced(kFullBoxHeader + 8);
        } else if (const std::optional<QByteArrayView> stz2 = findBox(stbl, kStz2)) {
            const std::optional<uint64_t> bits = readAt(*stz2, kFullBoxHeader + 3, 1);
            const std::optional<uint64_t> count = readAt(*stz2, kFullBoxHeader + 4, 4);
            if (!bits || !count || (*bits != 4 && *bits != 8 && *bits != 16))
                return std::nullopt;
            sizes.m_count = static_cast<uint32_t>(*count);
            sizes.m_bits = static_cast<int>(*bits);
            sizes.m_table = stz2->sliced(kFullBoxHeader + 8);
        } else {
            return std::nullopt;
        }
        // A table that cannot hold every size it announces is broken.
        if (sizes.m_uniform == 0
            && uint64_t(sizes.m_count) * uint64_t(sizes.m_bits)
                > uint64_t(sizes.m_table.size()) * 8)
            return std::nullopt;
        return sizes;
    }

    uint32_t count() const { return m_count; }

    uint64_t at(uint32_t index) const
    {
        if (m_uniform != 0)
            return m_uniform;
        switch (m_bits) {
        case 32:
            return readBig(m_table, qsizetype(index) * 4, 4);
        case 16:
            return readBig(m_table, qsizetype(index) * 2, 2);
        case 8:
            return readBig(m_table, index, 1);
        default: {
            const uint64_t both = readBig(m_table, index / 2, 1);
            return index % 2 == 0 ? both >> 4 : both & 0x0f;
        }
        }
    }

private:
    QByteArrayView m_table;
    uint64_t m_uniform = 0;
    uint32_t m_count = 0;
    int m_bits = 32;
};

// The text of one sample: a 16-bit length and at most that many bytes of the
// sample (a length past the sample's end is cut to it).
QByteArrayView sampleText(QByteArrayView sample)
{
    if (sample.size() < 2)
        return {};
    const auto length = static_cast<qsizetype>(readBig(sample, 0, 2));
    return sample.sliced(2, std::min(length, sample.size() - 2));
}

bool walkSamples(QByteArrayView bytes, QByteArrayView stbl, const SampleVisitor& visit)
{
    const std::optional<SampleSizes> sizes = SampleSizes::read(stbl);
    std::optional<QByteArrayView> offsetsBox = findBox(stbl, kStco);
    const bool wideOffsets = !offsetsBox;
    if (wideOffsets)
        offsetsBox = findBox(stbl, kCo64);
    const std::optional<QByteArrayView> stscBox = findBox(stbl, kStsc);
    if (!sizes || !offsetsBox || !stscBox)
        return false;
    const std::optional<Table> offsets
        = readTable(*offsetsBox, kFullBoxHeader, wideOffsets ? 8 : 4);
    const std::optional<Table> stsc = readTable(*stscBox, kFullBoxHeader, 12);
    if (!offsets || !stsc)
        return false;

    // Every text sample takes at least its two length bytes, so a file
    // cannot hold more samples than half its size: a bound for hostile tables.
    const uint64_t limit = std::min<uint64_t>(sizes->count(), uint64_t(bytes.size()) / 2 + 1);
    uint32_t sample = 0;
    for (uint32_t entry = 0; entry < stsc->count && sample < limit; ++entry) {
        const uint64_t firstChunk = stsc->field(entry, 0, 4);
        const uint64_t perChunk = stsc->field(entry, 4, 4);
        const uint64_t endChunk
            = entry + 1 < stsc->count ? stsc->field(entry + 1, 0, 4) : uint64_t(offsets->count) + 1;
        if (firstChunk == 0 || endChunk < firstChunk)
            return sample > 0;
        for (uint64_t chunk = firstChunk; chunk < endChunk && sample < limit; ++chunk) {
            if (chunk > offsets->count)
                return sample > 0;
            uint64_t offset
                = offsets->field(static_cast<uint32_t>(chunk - 1), 0, offsets->entrySize);
            for (uint64_t i = 0; i < perChunk && sample < limit; ++i, ++sample) {
                const uint64_t size = sizes->at(sample);
                if (offset > uint64_t(bytes.size()) || size > uint64_t(bytes.size()) - offset)
                    return sample > 0;
                const QByteArrayView data
                    = bytes.sliced(static_cast<qsizetype>(offset), static_cast<qsizetype>(size));
                if (!visit(sampleText(data)))
                    return true;
                offset += size;
            }
        }
    }
    return true;
}

} // namespace

bool isMovie(QByteArrayView bytes)
{
    return findBox(bytes, kMoov).has_value();
}

bool forEachSample(QByteArrayView bytes, const SampleVisitor& visit)
{
    const std::optional<QByteArrayView> moov = findBox(bytes, kMoov);
    if (!moov)
        return false;
    qsizetype pos = 0;
    // Each trak in turn: findBox finds the first, so walk past it.
    while (pos < moov->size()) {
        const QByteArrayView rest = moov->sliced(pos);
        const std::optional<QByteArrayView> trak = findBox(rest, kTrak);
        if (!trak)
            return false;
        if (isTextTrack(*trak)) {
            const std::optional<QByteArrayView> stbl = findPath(*trak, { kMdia, kMinf, kStbl });
            return stbl && walkSamples(bytes, *stbl, visit);
        }
        pos = (trak->data() + trak->size()) - moov->data();
    }
    return false;
}

} // namespace Mp4TextTrack
