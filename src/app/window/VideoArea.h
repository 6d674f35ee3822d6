#pragma once

#include <QWidget>

class QLabel;
class TavroAVView;
class VideoScene;
class ZoomableMovieArea;

// The black video area: the large player view (zoomable, in its own area)
// filling it and the small player view inset in its lower right corner. Each
// view shows its cover image while it has no movie. In full screen only one of
// the two views is shown, filling the area. One VideoScene shows it all.
class VideoArea : public QWidget {
    Q_OBJECT
public:
    enum class Shown { Both, BigOnly, SmallOnly };

    explicit VideoArea(QWidget* parent = nullptr);

    TavroAVView* bigMovieView() const { return m_bigMovieView; }
    TavroAVView* smallMovieView() const { return m_smallMovieView; }
    ZoomableMovieArea* bigMovieArea() const { return m_bigArea; }

    void setCoversVisible(bool bigCoverVisible, bool smallCoverVisible);
    bool isBigCoverVisible() const;
    bool isSmallCoverVisible() const;

    void setShown(Shown shown);
    // A widget over both pictures (the full-screen controls), taken over by
    // the area; it places itself.
    void addTopLayer(QWidget* widget);
    Shown shown() const { return m_shown; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void layoutChildren();
    void applyLayers();
    QRect smallViewRect() const;
    void updateCoverPixmap(QLabel* cover);

    TavroAVView* m_bigMovieView = nullptr;
    TavroAVView* m_smallMovieView = nullptr;
    ZoomableMovieArea* m_bigArea = nullptr;
    QLabel* m_bigCover = nullptr;
    QLabel* m_smallCover = nullptr;
    VideoScene* m_scene = nullptr;
    QList<QWidget*> m_topLayers;
    Shown m_shown = Shown::Both;
};
