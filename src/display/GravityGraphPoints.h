#pragma once

#include <QList>
#include <QPointF>

class TavroClipData;

// The three curves of the G-sensor graph, one point per sample. A point's x is
// the fraction (0, 1] of the graph's width, its y is measured upwards from the
// bottom edge: the zero line lies at `baseYPoint` and every sample hangs below
// it by its magnitude (|raw| / 10, so 1 g = 128 raw lies 12.8 units down),
// stopping at the bottom edge.
struct GravityGraphPoints {
    QList<QPointF> gxPointList;
    QList<QPointF> gyPointList;
    QList<QPointF> gzPointList;

    static GravityGraphPoints generatePoints(const TavroClipData& clipData, float baseYPoint);
};
