#include "ScreenChecks.h"

#include <algorithm>
#include <cstdlib>

namespace ScreenChecks {
namespace {

constexpr int kColourTolerance = 48;
constexpr int kPixelTolerance = 32;
constexpr int kEdgeSlack = 3;

bool near(QRgb pixel, const QColor& colour)
{
    return std::abs(qRed(pixel) - colour.red()) <= kColourTolerance
        && std::abs(qGreen(pixel) - colour.green()) <= kColourTolerance
        && std::abs(qBlue(pixel) - colour.blue()) <= kColourTolerance;
}

bool same(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= kPixelTolerance
        && std::abs(qGreen(a) - qGreen(b)) <= kPixelTolerance
        && std::abs(qBlue(a) - qBlue(b)) <= kPixelTolerance;
}

qint64 areaOf(const QRect& rect)
{
    return rect.isValid() ? qint64(rect.width()) * rect.height() : 0;
}

bool sidesMatch(const QRect& box, const QRect& expected)
{
    return std::abs(box.left() - expected.left()) <= kEdgeSlack
        && std::abs(box.top() - expected.top()) <= kEdgeSlack
        && std::abs(box.right() - expected.right()) <= kEdgeSlack
        && std::abs(box.bottom() - expected.bottom()) <= kEdgeSlack;
}

} // namespace

QString describe(const QRect& rect)
{
    if (rect.isEmpty())
        return QStringLiteral("nothing");
    return QStringLiteral("%1x%2 at %3,%4")
        .arg(rect.width())
        .arg(rect.height())
        .arg(rect.x())
        .arg(rect.y());
}

QRect fitted(const QRect& area, double aspect)
{
    if (double(area.width()) / area.height() > aspect) {
        const int width = qRound(area.height() * aspect);
        return { area.x() + (area.width() - width) / 2, area.y(), width, area.height() };
    }
    const int height = qRound(area.width() / aspect);
    return { area.x(), area.y() + (area.height() - height) / 2, area.width(), height };
}

Found find(const QImage& screen, const QRect& area, const QColor& colour)
{
    Found found;
    const QRect within = area & screen.rect();
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
    for (int y = within.top(); y <= within.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(screen.constScanLine(y));
        for (int x = within.left(); x <= within.right(); ++x) {
            if (!near(line[x], colour))
                continue;
            ++found.count;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    if (found.count > 0)
        found.box = QRect(QPoint(left, top), QPoint(right, bottom));
    return found;
}

QString pictureAt(const QImage& screen, const QRect& expected, const QColor& colour,
    const QRect& area, const QRect& covered)
{
    const Found all = find(screen, area, colour);
    if (!sidesMatch(all.box, expected)) {
        return QStringLiteral("the picture (%1) shows as %2 where it should be %3")
            .arg(colour.name(), describe(all.box), describe(expected));
    }
    const qint64 inside = find(screen, expected, colour).count;
    const qint64 visible = areaOf(expected) - areaOf(expected & covered);
    if (inside < visible * 9 / 10) {
        return QStringLiteral("the picture (%1) covers only %2 of %3 pixels of %4")
            .arg(colour.name())
            .arg(inside)
            .arg(visible)
            .arg(describe(expected));
    }
    return {};
}

QString nothingAround(const QImage& screen, const QRect& area, int margin, const QColor& colour)
{
    const QRect band = area.adjusted(-margin, -margin, margin, margin);
    for (const QRect& side : { QRect(band.left(), band.top(), band.width(), margin),
             QRect(band.left(), area.bottom() + 1, band.width(), margin),
             QRect(band.left(), area.top(), margin, area.height()),
             QRect(area.right() + 1, area.top(), margin, area.height()) }) {
        const Found spill = find(screen, side, colour);
        if (spill.count > 0) {
            return QStringLiteral("%1 pixels of %2 outside %3, within %4")
                .arg(spill.count)
                .arg(colour.name(), describe(area), describe(spill.box));
        }
    }
    return {};
}

QString looksLike(const QImage& screen, const QRect& at, const QImage& expectedImage)
{
    const QImage expected = expectedImage.convertToFormat(QImage::Format_RGB32);
    const QRect compared
        = QRect(at.topLeft(), expected.size().boundedTo(at.size())) & screen.rect();
    if (compared.isEmpty())
        return QStringLiteral("%1 is not on the screen").arg(describe(at));
    const QRgb corner = expected.pixel(0, 0);
    qint64 matching = 0, content = 0;
    for (int y = 0; y < compared.height(); ++y) {
        const auto* shown = reinterpret_cast<const QRgb*>(screen.constScanLine(compared.y() + y));
        const auto* wanted = reinterpret_cast<const QRgb*>(expected.constScanLine(y));
        for (int x = 0; x < compared.width(); ++x) {
            matching += same(shown[compared.x() + x], wanted[x]);
            content += !same(wanted[x], corner);
        }
    }
    const qint64 total = areaOf(QRect(QPoint(), expected.size()));
    if (content < total / 500)
        return QStringLiteral("the window's own rendering is blank");
    if (matching < total * 9 / 10) {
        return QStringLiteral("only %1 % of the window's pixels show at %2")
            .arg(100 * matching / total)
            .arg(describe(at));
    }
    return {};
}

QString checkerboardAt(const QImage& screen, const QRect& area)
{
    const QRect middle
        = QRect(area.topLeft() + QPoint(area.width() / 4, area.height() / 4), area.size() / 2)
        & screen.rect();
    qint64 matching = 0;
    for (int y = middle.top(); y <= middle.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(screen.constScanLine(y));
        for (int x = middle.left(); x <= middle.right(); ++x) {
            const bool white = (x - area.x() + y - area.y()) % 2 != 0;
            matching += std::abs(qGreen(line[x]) - (white ? 255 : 0)) <= 64;
        }
    }
    if (matching < areaOf(middle) * 9 / 10) {
        return QStringLiteral("only %1 % of the single-pixel checkerboard shows in %2")
            .arg(100 * matching / std::max<qint64>(1, areaOf(middle)))
            .arg(describe(area));
    }
    return {};
}

} // namespace ScreenChecks
