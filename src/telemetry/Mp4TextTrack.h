#pragma once

#include <QByteArrayView>

#include <functional>

// The timed-text track of an MP4 / QuickTime clip, read straight from the
// file's ISO-BMFF boxes: moov → trak whose media handler is "text" or "sbtl"
// → stbl: sample sizes (stsz/stz2), chunk offsets (stco/co64) and the
// sample-to-chunk table (stsc). Each sample is a 16-bit big-endian length and
// that many bytes of text, possibly followed by style boxes, which are skipped.
//
// Everything is read in place from `bytes`: every box size and table is
// checked against what encloses it, and nothing is allocated by a size or
// count found in the file.
namespace Mp4TextTrack {

// Called with each sample's text in track order; returns false to stop.
using SampleVisitor = std::function<bool(QByteArrayView text)>;

// Walks the first text track's samples. False when the bytes hold no readable
// text track (not ISO-BMFF, no moov, no such track, a broken sample table).
// A sample lying outside the file ends the walk; the samples before it count.
bool forEachSample(QByteArrayView bytes, const SampleVisitor& visit);

// True when the bytes are ISO-BMFF boxes holding a movie ("moov") box.
bool isMovie(QByteArrayView bytes);

} // namespace Mp4TextTrack
