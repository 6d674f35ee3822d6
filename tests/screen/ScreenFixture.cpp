#include "ScreenFixture.h"

#include "CardSettings.h"
#include "DriveClip.h"
#include "ScreenReader.h"
#include "TestTiming.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace ScreenScene {
namespace {

// 60 s, so that no clip ends while a test looks at it. Tagged BT.709, so
// that the player turns the colours back exactly as they were drawn.
bool makeClip(const QString& path, const QString& source,
    const QString& filter = QStringLiteral("scale=out_color_matrix=bt709,format=yuv420p"),
    const QStringList& quality = {})
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QStringList arguments { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
        QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), source,
        QStringLiteral("-vf"), filter, QStringLiteral("-colorspace"), QStringLiteral("bt709"),
        QStringLiteral("-color_primaries"), QStringLiteral("bt709"), QStringLiteral("-color_trc"),
        QStringLiteral("bt709"), QStringLiteral("-c:v"), QStringLiteral("libx264"),
        QStringLiteral("-preset"), QStringLiteral("ultrafast"), QStringLiteral("-g"),
        QStringLiteral("30") };
    arguments << quality << path;
    QProcess ffmpeg;
    ffmpeg.setProcessChannelMode(QProcess::MergedChannels);
    ffmpeg.start(QStringLiteral("ffmpeg"), arguments);
    return ffmpeg.waitForFinished(120000) && ffmpeg.exitCode() == 0;
}

void writeCards(Cards& cards)
{
    const QString clips = cards.dir.filePath(QStringLiteral("clips"));
    QDir().mkpath(clips);
    const QString front = clips + QStringLiteral("/front.mp4");
    const QString rear = clips + QStringLiteral("/rear.mp4");
    if (!makeClip(front,
            QStringLiteral("color=c=red:s=1280x720:r=30:d=60,"
                           "drawbox=x=560:y=315:w=160:h=90:color=white:t=fill"))
        || !makeClip(rear, QStringLiteral("color=c=blue:s=640x480:r=30:d=60"))) {
        cards.error = QStringLiteral("ffmpeg could not make the clips");
        return;
    }
    using Writer = bool (*)(const QString&, QString&);
    const struct {
        QString* root;
        const char* name;
        Writer write;
    } kinds[] = {
        { &cards.native, "native", &CardSettings::writeRecordCamera },
        { &cards.kel, "kel", &CardSettings::writeKelCamera },
        { &cards.web, "web", &CardSettings::writeWebCamera },
    };
    for (const auto& kind : kinds) {
        *kind.root = cards.dir.filePath(QLatin1String(kind.name));
        const QString folder = *kind.root + QStringLiteral("/cont_rec/");
        QDir().mkpath(folder);
        if (!kind.write(*kind.root, cards.error)
            || !QFile::copy(front, folder + QStringLiteral("20260514_081500_F.mp4"))
            || !QFile::copy(rear, folder + QStringLiteral("20260514_081500_R.mp4"))) {
            cards.error += QStringLiteral(" (card %1)").arg(QLatin1String(kind.name));
            return;
        }
    }
}

bool hasXdotool()
{
    return !ScreenReader::isWayland()
        && !QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty();
}

void xdotool(const QStringList& arguments)
{
    QProcess::execute(QStringLiteral("xdotool"), arguments);
}

// X11 servers without a pointer device of their own draw the pointer into
// the screen: out of the way, in the top right corner.
void parkPointer()
{
    if (hasXdotool())
        xdotool({ QStringLiteral("mousemove"), QString::number(screenRect().right()),
            QStringLiteral("0") });
}

} // namespace

const Cards& cards()
{
    static Cards* made = [] {
        auto* cards = new Cards;
        writeCards(*cards);
        return cards;
    }();
    return *made;
}

QString tripCard()
{
    static const QString folder = [] {
        const QString root = cards().dir.filePath(QStringLiteral("trip"));
        const QDateTime start(QDate(2026, 5, 13), QTime(23, 15, 0), Qt::UTC);
        for (int i = 0; i < 3; ++i) {
            // The last clip an event recording with a knock in its middle.
            const QDateTime at = start.addSecs(i * kTripClipSeconds);
            const QString base = root + (i == 2 ? "/evt_rec/" : "/cont_rec/")
                + at.toLocalTime().toString(QStringLiteral("yyyyMMdd_HHmmss"));
            const DriveClip::Drive drive { at, i * kTripClipSeconds, i == 2 ? 20 : -1 };
            // Clips of one colour each, whose subtitle tracks carry the telemetry.
            if (!DriveClip::make(base + QStringLiteral("_F.mp4"), kTripClipSeconds, 1280, 720, 30,
                    0, drive, { kTripFront[i].name(), false, true })
                || !DriveClip::make(base + QStringLiteral("_R.mp4"), kTripClipSeconds, 640, 480, 30,
                    0, drive, { kTripRear[i].name(), false, true }))
                return QString();
        }
        return root;
    }();
    return folder;
}

bool makeCheckerboardClip(const QString& path, const QSize& size)
{
    // Luma 16 and 235 are black and white; neutral chroma; no loss.
    return makeClip(path,
        QStringLiteral("color=c=black:s=%1x%2:r=10:d=10").arg(size.width()).arg(size.height()),
        QStringLiteral("format=yuv420p,geq=lum='16+219*mod(X+Y,2)':cb=128:cr=128"),
        { QStringLiteral("-qp"), QStringLiteral("0") });
}

int waitMs(int milliseconds)
{
    return TestTiming::scaled(milliseconds);
}

bool expectScreen(const QString& name, const std::function<QString(const QImage&)>& check, int ms)
{
    QElapsedTimer clock;
    clock.start();
    QString problem;
    QImage screen;
    parkPointer();
    do {
        QTest::qWait(150);
        screen = ScreenReader::grab(&problem);
        if (!screen.isNull())
            problem = check(screen);
    } while (!problem.isEmpty() && clock.elapsed() < waitMs(ms));
    ScreenReader::save(screen, name);
    EXPECT_TRUE(problem.isEmpty()) << name.toStdString() << ": " << problem.toStdString();
    return problem.isEmpty();
}

QRect placeOf(const QWidget& widget)
{
    const QRect place = ScreenReader::placeOf(widget);
    EXPECT_FALSE(place.isNull()) << widget.objectName().toStdString() << " is not on the screen";
    return place;
}

QRect screenRect()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return { QPoint(0, 0), (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize() };
}

void drag(QWidget& widget, const QPoint& from, const QPoint& by)
{
    constexpr int kSteps = 8;
    if (hasXdotool()) {
        const auto at = [](const QPoint& p) {
            return QStringList { QStringLiteral("mousemove"), QString::number(p.x()),
                QString::number(p.y()) };
        };
        xdotool(at(from) + QStringList { QStringLiteral("mousedown"), QStringLiteral("1") });
        for (int step = 1; step <= kSteps; ++step) {
            xdotool(at(from + by * step / kSteps));
            QTest::qWait(30);
        }
        xdotool({ QStringLiteral("mouseup"), QStringLiteral("1") });
        QTest::qWait(200);
        return;
    }
    const QRect place = ScreenReader::placeOf(widget);
    const qreal ratio = widget.devicePixelRatioF();
    const QPoint start = ((QPointF(from - place.topLeft())) / ratio).toPoint();
    const QPoint delta = (QPointF(by) / ratio).toPoint();
    QTest::mousePress(&widget, Qt::LeftButton, Qt::NoModifier, start);
    for (int step = 1; step <= kSteps; ++step) {
        QMouseEvent move(QEvent::MouseMove, start + delta * step / kSteps,
            widget.mapToGlobal(start + delta * step / kSteps), Qt::NoButton, Qt::LeftButton,
            Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &move);
        QTest::qWait(30);
    }
    QTest::mouseRelease(&widget, Qt::LeftButton, Qt::NoModifier, start + delta);
}

} // namespace ScreenScene
