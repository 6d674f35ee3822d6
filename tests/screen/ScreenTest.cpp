// The viewer on a real display server, judged by the whole screen as the
// server shows it (tools/screen.sh starts the servers and says how to read
// the screen). Both camera pictures, swap, zoom and drag, the covers and the
// loading animation, full screen with its control bar, a message box over a
// playing clip and every settings page.
#include "ScreenChecks.h"
#include "ScreenFixture.h"
#include "ScreenReader.h"

#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/AppDelegate.h"
#include "app/window/FullScreenControlWindow.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoArea.h"
#include "app/window/ZoomableMovieArea.h"
#include "config/AlertSink.h"
#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "player/TavroAVView.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ScreenScene;
using namespace ScreenChecks;

namespace {

// The front picture in the large view with the rear inset over it, each at
// its clip's aspect in its place, and neither spilling out of it.
QString bothPictures(const QImage& screen, const QRect& area, const QRect& inset, const QColor& big,
    double bigAspect, const QColor& small, double smallAspect)
{
    QString problem = pictureAt(screen, fitted(area, bigAspect), big, area, inset);
    if (problem.isEmpty())
        problem = pictureAt(screen, fitted(inset, smallAspect), small, area);
    const int margin = qMax(8, area.width() / 20);
    for (const QColor& colour : { big, small }) {
        if (problem.isEmpty())
            problem = nothingAround(screen, area, margin, colour);
    }
    return problem;
}

QString squareAt(const QImage& screen, const QRect& expected, const QRect& area)
{
    const Found square = find(screen, area, kFrontSquare);
    const QRect slack = expected.adjusted(-4, -4, 4, 4);
    if (!slack.contains(square.box) || square.box.width() < expected.width() - 8)
        return QStringLiteral("the white square shows as %1 where it should be %2")
            .arg(describe(square.box), describe(expected));
    return {};
}

bool contained(const QRect& inner, const QRect& outer)
{
    return outer.contains(inner);
}

// Which of the colours fills the area (nine in ten of its pixels); -1 when none.
int colourFilling(const QImage& screen, const QRect& area, const QColor* colours, int count)
{
    for (int i = 0; i < count; ++i) {
        if (find(screen, area, colours[i]).count * 10 >= qint64(area.width()) * area.height() * 9)
            return i;
    }
    return -1;
}

QRect middleOf(const QRect& rect, int share)
{
    return rect.adjusted(
        rect.width() / share, rect.height() / share, -rect.width() / share, -rect.height() / share);
}

} // namespace

// The program as installed: started on a card, playing its first clip.
TEST(InstalledViewer, ShowsBothCameras)
{
    const QString binary = qEnvironmentVariable("TAVRO_VIEWER_BINARY");
    if (binary.isEmpty() || !ScreenReader::isConfigured())
        GTEST_SKIP() << "run through tools/screen.sh";
    ASSERT_TRUE(cards().error.isEmpty()) << cards().error.toStdString();
    QProcess viewer;
    viewer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    viewer.start(binary,
        { QStringLiteral("--card"), cards().native, QStringLiteral("--no-splash"),
            QStringLiteral("--play"), QStringLiteral("0") });
    ASSERT_TRUE(viewer.waitForStarted());
    // Where its windows are is its own business: find the pictures by colour.
    expectScreen(QStringLiteral("installed-viewer"), [](const QImage& screen) -> QString {
        const QRect front = find(screen, screen.rect(), kFront).box;
        const QRect rear = find(screen, screen.rect(), kRear).box;
        if (front.width() < 400 || rear.width() < 100)
            return QStringLiteral("front %1, rear %2").arg(describe(front), describe(rear));
        const double frontAspect = double(front.width()) / front.height();
        const double rearAspect = double(rear.width()) / rear.height();
        if (qAbs(frontAspect / kFrontAspect - 1.0) > 0.02
            || qAbs(rearAspect / kRearAspect - 1.0) > 0.03)
            return QStringLiteral("front %1 and rear %2 are not at their clips' aspects")
                .arg(describe(front), describe(rear));
        if (rear.center().x() <= front.center().x() || rear.center().y() <= front.center().y())
            return QStringLiteral("the rear picture %1 is not in the lower right of %2")
                .arg(describe(rear), describe(front));
        return {};
    });
    viewer.terminate();
    if (!viewer.waitForFinished(10000))
        viewer.kill();
}

class OnScreen : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!ScreenReader::isConfigured() || !cards().error.isEmpty())
            return;
        ViewerOptions options;
        options.cardFolders = { cards().native, cards().kel, cards().web };
        options.folder = cards().native;
        options.showSplash = false;
        TavroStyle::apply(*qApp);
        s_delegate = new AppDelegate(options);
        s_delegate->applicationDidFinishLaunching();
        if (s_delegate->window())
            (void)QTest::qWaitForWindowExposed(s_delegate->window(), waitMs(20000));
    }

    static void TearDownTestSuite()
    {
        delete s_delegate;
        s_delegate = nullptr;
    }

    void SetUp() override
    {
        if (!ScreenReader::isConfigured())
            GTEST_SKIP() << "run through tools/screen.sh";
        ASSERT_TRUE(cards().error.isEmpty()) << cards().error.toStdString();
        ASSERT_NE(s_delegate, nullptr);
        m_window = s_delegate->window();
        ASSERT_NE(m_window, nullptr);
    }

    VideoArea& area() const { return *m_window->videoArea(); }
    TransportBar& transport() const { return *m_window->transportBar(); }

    // Plays the first row of `card` (the front/rear pair) from the list.
    void play(const QString& card)
    {
        m_window->controller().selectFolderButtonTouched(QUrl::fromLocalFile(card));
        m_window->controller().videoFileListDoubleClicked(0);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return area().bigMovieView()->framesPresented() > 0
                    && area().smallMovieView()->framesPresented() > 0
                    && !m_window->session().isVideoPaused();
            },
            waitMs(20000)));
    }

    bool expectBothPictures(const QString& name, bool swapped = false)
    {
        return expectScreen(name, [&](const QImage& screen) {
            const QRect place = ScreenReader::placeOf(area());
            const QRect inset = ScreenReader::placeOf(*area().smallMovieView());
            return swapped
                ? bothPictures(screen, place, inset, kRear, kRearAspect, kFront, kFrontAspect)
                : bothPictures(screen, place, inset, kFront, kFrontAspect, kRear, kRearAspect);
        });
    }

    void click(QAbstractButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }

    // The active modal window if it holds `pageName`.
    static QWidget* windowHolding(const char* pageName)
    {
        QWidget* window = QApplication::activeModalWidget();
        if (!window || !window->isVisible())
            return nullptr;
        if (window->objectName() == QLatin1String(pageName)
            || window->findChild<QWidget*>(QLatin1String(pageName)))
            return window;
        return nullptr;
    }

    // The window on the screen as it renders itself, and fitting the screen.
    static void expectWindow(QWidget& window, const QString& name)
    {
        // A page built from a web page first loads it: the check waits until
        // the screen and the window's rendering agree, and the page on its own
        // is not blank.
        QWidget* page = nullptr;
        for (QWidget* child : window.findChildren<QWidget*>()) {
            if (child->inherits("QWebEngineView"))
                page = child;
        }
        expectScreen(
            name,
            [&](const QImage& screen) {
                const QRect place = ScreenReader::placeOf(window);
                if (!contained(place, screen.rect()))
                    return QStringLiteral("the window %1 does not fit the screen")
                        .arg(describe(place));
                const QString problem = looksLike(screen, place, window.grab().toImage());
                if (!problem.isEmpty() || !page)
                    return problem;
                return looksLike(screen, ScreenReader::placeOf(*page), page->grab().toImage());
            },
            20000);
    }

    // Opens the settings over the playing clip with `card` as the only card
    // in the computer, looks at each page as it comes and presses its
    // button. The pages are modal: each is looked at from a timer running in
    // its own event loop, which must end before the next page comes.
    void expectSettingsPages(const QString& card,
        const std::vector<std::pair<const char*, const char*>>& pages, const QString& name)
    {
        play(card);
        auto onlyCard = std::make_shared<FolderVolumeSource>();
        onlyCard->addFolder(card);
        Utils::setVolumeSource(onlyCard);
        size_t next = 0;
        QElapsedTimer clock;
        clock.start();
        QTimer poll;
        poll.setInterval(100);
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (next >= pages.size())
                return;
            if (clock.elapsed() > waitMs(60000)) {
                ADD_FAILURE() << name.toStdString() << ": no window holding " << pages[next].first;
                next = pages.size();
                if (QWidget* stuck = QApplication::activeModalWidget())
                    stuck->close();
                return;
            }
            QWidget* window = windowHolding(pages[next].first);
            if (!window)
                return;
            poll.stop();
            expectWindow(*window, QStringLiteral("%1-%2").arg(name).arg(next + 1));
            auto* button = window->findChild<QPushButton*>(QLatin1String(pages[next].second));
            EXPECT_NE(button, nullptr) << name.toStdString() << ": no " << pages[next].second;
            ++next;
            poll.start();
            if (button)
                click(*button);
            else
                window->close();
        });
        poll.start();
        m_window->settingButtonTouched();
        EXPECT_TRUE(QTest::qWaitFor([&] { return next >= pages.size(); }, waitMs(70000)));
        EXPECT_TRUE(QTest::qWaitFor(
            [] { return QApplication::activeModalWidget() == nullptr; }, waitMs(5000)));
    }

    static AppDelegate* s_delegate;
    MainWindow* m_window = nullptr;
};

AppDelegate* OnScreen::s_delegate = nullptr;

TEST_F(OnScreen, CoversShowUntilAClipPlays)
{
    m_window->session().stopButtonTouched();
    auto* bigCover = area().findChild<QLabel*>(QStringLiteral("bigMovieCover"));
    auto* smallCover = area().findChild<QLabel*>(QStringLiteral("smallMovieCover"));
    ASSERT_TRUE(bigCover && smallCover);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bigCover->isVisible(); }, waitMs(5000)));
    expectScreen(QStringLiteral("covers"), [&](const QImage& screen) {
        QString problem
            = looksLike(screen, ScreenReader::placeOf(*bigCover), bigCover->grab().toImage());
        return problem.isEmpty()
            ? looksLike(screen, ScreenReader::placeOf(*smallCover), smallCover->grab().toImage())
            : problem;
    });
}

TEST_F(OnScreen, BothCamerasShowInTheirPlaces)
{
    play(cards().native);
    EXPECT_TRUE(contained(placeOf(*m_window), screenRect())) << "the window does not fit";
    expectBothPictures(QStringLiteral("playing"));
}

TEST_F(OnScreen, PicturesAreDrawnAtTheScreensOwnPixels)
{
    // A clip exactly the size of the large view in screen pixels, a
    // checkerboard of single pixels: it survives only when the picture is
    // drawn at the screen's own pixels, not enlarged from fewer.
    const QRect place = placeOf(area());
    if (place.width() % 2 || place.height() % 2)
        GTEST_SKIP() << "the view is " << place.width() << "x" << place.height()
                     << ": an H.264 clip of that size cannot be made";
    const QString folder = cards().dir.filePath(
        QStringLiteral("sharp-%1x%2").arg(place.width()).arg(place.height()));
    ASSERT_TRUE(makeCheckerboardClip(
        folder + QStringLiteral("/cont_rec/20260514_090000_F.mp4"), place.size()));
    TavroAVView& view = *area().bigMovieView();
    const qint64 before = view.framesPresented();
    m_window->controller().selectFolderButtonTouched(QUrl::fromLocalFile(folder));
    m_window->controller().videoFileListDoubleClicked(0);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return view.framesPresented() > before + 2; }, waitMs(20000)));
    expectScreen(QStringLiteral("pixel-exact"), [&](const QImage& screen) {
        return checkerboardAt(screen, ScreenReader::placeOf(area()));
    });
}

TEST_F(OnScreen, SwapShowsEachCameraInTheOtherPlace)
{
    play(cards().native);
    click(*transport().videoSwitchButton);
    expectBothPictures(QStringLiteral("swapped"), true);
    click(*transport().videoSwitchButton);
    expectBothPictures(QStringLiteral("swapped-back"));
}

TEST_F(OnScreen, ZoomedAndDraggedPictureStaysInsideItsArea)
{
    play(cards().native);
    ZoomableMovieArea& zoom = *area().bigMovieArea();
    click(*transport().videoScaleUpButton);
    click(*transport().videoScaleUpButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return zoom.scale() > 1.4; }, waitMs(3000)));
    const QRect place = placeOf(area());
    const QRect inset = placeOf(*area().smallMovieView());
    const qreal ratio = area().devicePixelRatioF();
    // The square is where the zoom state says the middle of the picture is.
    const auto expectedSquare = [&] {
        const QSizeF view = QSizeF(place.size()) * zoom.scale();
        const QPointF centre = QPointF(place.center())
            + QPointF((0.5 - zoom.visibleCentre().x()) * view.width(),
                (0.5 - zoom.visibleCentre().y()) * view.height());
        const QRect picture = fitted(QRect(QPoint(0, 0), view.toSize()), kFrontAspect);
        const QSize size(picture.width() / kSquareShare, picture.height() / kSquareShare);
        return QRect((centre - QPointF(size.width(), size.height()) / 2).toPoint(), size);
    };
    const auto zoomed = [&](const QImage& screen) {
        QString problem = squareAt(screen, expectedSquare(), place);
        if (problem.isEmpty())
            problem = pictureAt(screen, fitted(inset, kRearAspect), kRear, place);
        if (problem.isEmpty())
            problem = nothingAround(screen, place, qMax(8, place.width() / 20), kFront);
        return problem;
    };
    expectScreen(QStringLiteral("zoomed"), zoomed);
    const QPointF before = zoom.visibleCentre();
    const QPoint by = (QPointF(-120, -60) * ratio).toPoint();
    drag(zoom, place.center() - QPoint(place.width() / 4, 0), by);
    ASSERT_TRUE(QTest::qWaitFor([&] { return zoom.visibleCentre() != before; }, waitMs(3000)))
        << "the drag did not move the picture";
    // Dragged left and up: the part further right and down comes into view.
    EXPECT_GT(zoom.visibleCentre().x(), before.x());
    EXPECT_GT(zoom.visibleCentre().y(), before.y());
    expectScreen(QStringLiteral("zoomed-dragged"), zoomed);
    click(*transport().resetVideoScaleButton);
    expectBothPictures(QStringLiteral("zoom-reset"));
}

TEST_F(OnScreen, FullScreenFillsTheScreenAndShowsItsControlBar)
{
    play(cards().native);
    click(*transport().fullscreenButton);
    FullScreenControlWindow& bar = *m_window->fullScreenControlWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar.isVisible(); }, waitMs(5000)));
    const QRect screenArea = screenRect();
    expectScreen(QStringLiteral("full-screen"), [&](const QImage& screen) {
        QString problem = pictureAt(screen, fitted(screenArea, kFrontAspect), kFront, screenArea,
            ScreenReader::placeOf(bar));
        if (!problem.isEmpty())
            return problem;
        const QRect place = ScreenReader::placeOf(bar);
        if (qAbs(place.center().x() - screenArea.center().x()) > screenArea.width() / 50
            || place.bottom() < screenArea.height() * 4 / 5 || place.bottom() > screenArea.bottom())
            return QStringLiteral("the control bar is at %1, not at the bottom centre")
                .arg(describe(place));
        return looksLike(screen, place, bar.grab().toImage());
    });
    click(*bar.exitButton());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !bar.isVisible(); }, waitMs(5000)));
    expectBothPictures(QStringLiteral("full-screen-left"));
}

TEST_F(OnScreen, AMessageBoxShowsOverThePlayingClip)
{
    play(cards().native);
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* box = nullptr;
        (void)QTest::qWaitFor(
            [&] { return (box = QApplication::activeModalWidget()) != nullptr; }, waitMs(5000));
        ASSERT_NE(box, nullptr);
        seen = true;
        const QRect area = placeOf(this->area());
        expectScreen(QStringLiteral("message-box"), [&](const QImage& screen) {
            // The clip goes on showing around the box.
            if (find(screen, area, kFront).count < qint64(area.width()) * area.height() / 4)
                return QStringLiteral("the clip does not show around the box");
            return looksLike(screen, ScreenReader::placeOf(*box), box->grab().toImage());
        });
        box->close();
    });
    AlertRequest request;
    request.titleKey = QStringLiteral("메모리카드 오류");
    request.messageKey = QStringLiteral("메모리카드를 확인하여 주시기 바랍니다.");
    AlertSink::shared().showAlert(request);
    EXPECT_TRUE(seen);
}

TEST_F(OnScreen, LoadingAnimationShowsWhileAClipLoads)
{
    play(cards().native);
    // A clip that takes its time: reading waits for a writer of the pipe.
    const QString pipe = cards().dir.filePath(QStringLiteral("slow.mp4"));
    ::unlink(pipe.toLocal8Bit().constData());
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    TavroAVView& view = *area().bigMovieView();
    view.setFileName(pipe);
    auto* spinner = view.findChild<QWidget*>(QStringLiteral("loadingSpinner"));
    ASSERT_TRUE(spinner && QTest::qWaitFor([&] { return spinner->isVisible(); }, waitMs(5000)));
    const QRect place = placeOf(area());
    const QRect spinnerPlace = placeOf(*spinner);
    expectScreen(QStringLiteral("loading"), [&](const QImage& screen) {
        const qint64 drawn = find(screen, spinnerPlace, QColor(200, 200, 200)).count;
        if (drawn < qint64(spinnerPlace.width()) * spinnerPlace.height() / 80)
            return QStringLiteral("no loading animation at %1").arg(describe(spinnerPlace));
        if (find(screen, place, kFront).count > 0)
            return QStringLiteral("the last picture still shows while loading");
        return QString();
    });
    // An empty pipe ends the load (once the player has opened it).
    int writer = -1;
    (void)QTest::qWaitFor(
        [&] {
            writer = ::open(pipe.toLocal8Bit().constData(), O_WRONLY | O_NONBLOCK);
            return writer >= 0;
        },
        waitMs(10000));
    if (writer >= 0)
        ::close(writer);
    EXPECT_TRUE(QTest::qWaitFor([&] { return spinner->isHidden(); }, waitMs(10000)));
    m_window->session().stopButtonTouched();
}

TEST_F(OnScreen, TripRunsOnFromClipToClipWithoutABlackPicture)
{
    const QString card = tripCard();
    ASSERT_FALSE(card.isEmpty()) << "ffmpeg could not make the trip's clips";
    PlaybackSession& session = m_window->session();
    TavroAVView& big = *area().bigMovieView();
    TavroAVView& small = *area().smallMovieView();
    m_window->controller().selectFolderButtonTouched(QUrl::fromLocalFile(card));
    m_window->controller().playTrip(0);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return session.isPlayingTrip() && big.framesPresented() > 0
                && small.framesPresented() > 0 && !session.isVideoPaused();
        },
        waitMs(20000)));
    // The front picture's upper left (clear of the inset), the rear's middle.
    const QRect place = placeOf(area());
    const QRect front = fitted(place, kFrontAspect);
    const QRect frontPart = front.adjusted(
        front.width() / 10, front.height() / 10, -front.width() / 2, -front.height() / 2);
    const QRect rearPart = middleOf(fitted(placeOf(*area().smallMovieView()), kRearAspect), 4);
    // Read the screen as often as it can be read until the trip ends: each
    // time both cameras show one clip's colour, never black or anything else.
    QList<int> fronts;
    QList<int> rears;
    bool saved = false;
    QElapsedTimer clock;
    clock.start();
    while (!session.isVideoPaused() && clock.elapsed() < waitMs(60000)) {
        QString error;
        const QImage screen = ScreenReader::grab(&error);
        ASSERT_FALSE(screen.isNull()) << error.toStdString();
        const int f = colourFilling(screen, frontPart, kTripFront, 3);
        const int r = colourFilling(screen, rearPart, kTripRear, 3);
        if (f < 0 || r < 0) {
            ScreenReader::save(screen, QStringLiteral("trip-gap"));
            FAIL() << "at " << big.currentTime() << " s the front shows clip " << f
                   << " and the rear clip " << r << " (-1: neither colour; see trip-gap.png)";
        }
        if (fronts.isEmpty() || fronts.last() != f)
            fronts << f;
        if (rears.isEmpty() || rears.last() != r)
            rears << r;
        // The middle of the trip, for the record.
        if (!saved && fronts.size() == 2) {
            ScreenReader::save(screen, QStringLiteral("trip"));
            saved = true;
        }
        QTest::qWait(10);
    }
    EXPECT_EQ(fronts, QList<int>({ 0, 1, 2 }));
    EXPECT_EQ(rears, QList<int>({ 0, 1, 2 }));
    // The trip stays on its last pictures.
    expectScreen(QStringLiteral("trip-end"), [&](const QImage& screen) {
        if (colourFilling(screen, frontPart, kTripFront + 2, 1) < 0
            || colourFilling(screen, rearPart, kTripRear + 2, 1) < 0)
            return QStringLiteral("the last clip's pictures are not shown at the trip's end");
        return QString();
    });
}

TEST_F(OnScreen, EverySettingsPageShowsWithItsControls)
{
    // The viewer identified the first card at start; each other card is
    // chosen on the card page first.
    expectSettingsPages(cards().native, { { "TolmSettingViewController", "cancelButton" } },
        QStringLiteral("settings-native"));
    expectSettingsPages(cards().kel,
        { { "SelectFlashMemoryView", "okButton" }, { "KelSettingViewController", "cancelButton" } },
        QStringLiteral("settings-kel"));
    expectSettingsPages(cards().web,
        { { "SelectFlashMemoryView", "okButton" },
            { "WebSettingWindowController", "cancelButton" } },
        QStringLiteral("settings-web"));
    auto allCards = std::make_shared<FolderVolumeSource>();
    for (const QString& card : { cards().native, cards().kel, cards().web })
        allCards->addFolder(card);
    Utils::setVolumeSource(allCards);
}
