#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>

// Judging a screenshot. Each check returns "" when the screen shows what
// it should, otherwise what it shows instead. Rectangles are in the
// screenshot's (device) pixels.
namespace ScreenChecks {

// Where a picture of the aspect (width / height) shows when fitted into
// the area, centred, as the player fits it.
QRect fitted(const QRect& area, double aspect);

// The pixels of `area` that have the colour (each channel within 48): their
// bounding box and how many.
struct Found {
    QRect box;
    qint64 count = 0;
};
Found find(const QImage& screen, const QRect& area, const QColor& colour);

// A picture of one colour fills `expected`: its pixels reach each side of
// it (within 3 pixels), cover at least 90 % of it outside `covered` (what
// lies over it), and none lie in `area` outside `expected`.
QString pictureAt(const QImage& screen, const QRect& expected, const QColor& colour,
    const QRect& area, const QRect& covered = {});

// Nothing of the colour in the band of `margin` pixels around `area`: a
// picture does not spill out of its place.
QString nothingAround(const QImage& screen, const QRect& area, int margin, const QColor& colour);

// The screen shows `expected` (a widget's own rendering) at `at`: at least
// 90 % of its pixels within 32 per channel. A blank `expected` (fewer than
// 0.2 % of its pixels apart from its corner's colour) fails, so that a black
// window cannot pass against a black rendering.
QString looksLike(const QImage& screen, const QRect& at, const QImage& expected);

// A checkerboard of single black and white pixels fills `area`, its top
// left pixel black: at least 90 % of the middle of the area matches.
QString checkerboardAt(const QImage& screen, const QRect& area);

QString describe(const QRect& rect);

} // namespace ScreenChecks
