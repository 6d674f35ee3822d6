#include "app/window/VideoArea.h"
#include "style/TavroStyle.h"

#include "app/window/ViewerImages.h"
#include "app/window/ZoomableMovieArea.h"
#include "player/TavroAVView.h"
#include "player/VideoScene.h"

#include <QLabel>

namespace {

constexpr const char* kCoverImage = "movie_cover";
// The inset: a share of the area's width, 16:9, off the corner by a margin.
constexpr double kInsetWidthShare = 0.28;
constexpr int kInsetMargin = 12;

} // namespace

VideoArea::VideoArea(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("videoArea"));
    setAttribute(Qt::WA_StyledBackground);
    setAutoFillBackground(true);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);

    m_bigArea = new ZoomableMovieArea(this);
    m_bigMovieView = new TavroAVView;
    m_bigMovieView->setObjectName(QStringLiteral("bigMovieView"));
    m_bigArea->setMovieView(m_bigMovieView);
    m_smallMovieView = new TavroAVView(this);
    m_smallMovieView->setObjectName(QStringLiteral("smallMovieView"));

    for (QLabel** cover : { &m_bigCover, &m_smallCover }) {
        *cover = new QLabel(this);
        (*cover)->setAlignment(Qt::AlignCenter);
        (*cover)->setStyleSheet(TavroStyle::withPalette(
            QStringLiteral("background: #000000; border: 1px solid @separator;")));
        // Clicks go through to the view below (right click asks for full screen).
        (*cover)->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    m_bigCover->setObjectName(QStringLiteral("bigMovieCover"));
    m_smallCover->setObjectName(QStringLiteral("smallMovieCover"));
    m_bigCover->setStyleSheet(QStringLiteral("background: #000000;"));
    // One window shows the whole area, bottom first: the large picture, the
    // inset, the large cover (over the inset too), the inset's cover.
    m_scene = new VideoScene(this);
    applyLayers();
    layoutChildren();
}

QSize VideoArea::minimumSizeHint() const
{
    return { 480, 270 };
}

void VideoArea::setCoversVisible(bool bigCoverVisible, bool smallCoverVisible)
{
    m_bigCover->setVisible(bigCoverVisible && m_shown != Shown::SmallOnly);
    m_smallCover->setVisible(smallCoverVisible && m_shown != Shown::BigOnly);
    m_bigCover->setProperty("wanted", bigCoverVisible);
    m_smallCover->setProperty("wanted", smallCoverVisible);
    layoutChildren();
}

bool VideoArea::isBigCoverVisible() const
{
    return m_bigCover->property("wanted").toBool();
}

bool VideoArea::isSmallCoverVisible() const
{
    return m_smallCover->property("wanted").toBool();
}

void VideoArea::setShown(Shown shown)
{
    m_shown = shown;
    m_bigArea->setVisible(shown != Shown::SmallOnly);
    m_smallMovieView->setVisible(shown != Shown::BigOnly);
    setCoversVisible(isBigCoverVisible(), isSmallCoverVisible());
}

void VideoArea::addTopLayer(QWidget* widget)
{
    widget->setParent(this);
    widget->raise();
    m_topLayers.append(widget);
    applyLayers();
}

void VideoArea::applyLayers()
{
    m_scene->setLayers(
        QList<QWidget*> { m_bigMovieView, m_smallMovieView, m_bigCover, m_smallCover }
        + m_topLayers);
}

QRect VideoArea::smallViewRect() const
{
    if (m_shown == Shown::SmallOnly)
        return rect();
    const int w = qRound(width() * kInsetWidthShare);
    const int h = w * 9 / 16;
    return { width() - w - kInsetMargin, height() - h - kInsetMargin, w, h };
}

void VideoArea::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutChildren();
}

void VideoArea::layoutChildren()
{
    m_bigArea->setGeometry(rect());
    m_smallMovieView->setGeometry(smallViewRect());
    m_bigCover->setGeometry(rect());
    m_smallCover->setGeometry(smallViewRect());
    m_smallMovieView->raise();
    m_bigCover->raise();
    m_smallCover->raise();
    updateCoverPixmap(m_bigCover);
    updateCoverPixmap(m_smallCover);
}

void VideoArea::updateCoverPixmap(QLabel* cover)
{
    if (cover->size().isEmpty())
        return;
    const QSize size = QSize(320, 180).scaled(cover->size() - QSize(2, 2), Qt::KeepAspectRatio);
    cover->setPixmap(
        ViewerImages::pixmap(QLatin1String(kCoverImage), size, cover->devicePixelRatioF()));
}
