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

// How many pixels it takes to go from `from` to `to` along the row, counted
// where the green channel is between 1/6 and 5/6 of the way: 1 or 2 for a
// picture drawn at the screen's own pixels, more when it was enlarged.
int edgeWidth(const QImage& screen, int row, int fromX, int toX);

QString describe(const QRect& rect);

} // namespace ScreenChecks
