#pragma once

#include <QList>
#include <QUrl>

// Which row the previous and next buttons go to. A front clip and its rear
// partner stand next to each other in the list (front first); the buttons
// move from pair to pair, and the list wraps around at its end.
namespace ClipNavigation {

// The row before `selected`, or -1 when there is none (row 0 or no
// selection). From a front clip it is the front clip of the previous pair;
// from a rear clip, its own front partner.
int previousRow(const QList<QUrl>& rows, int selected);

// The row after `selected`, skipping the selected clip's rear partner, or row
// 0 past the end; -1 without a selection.
int nextRow(const QList<QUrl>& rows, int selected);

} // namespace ClipNavigation
