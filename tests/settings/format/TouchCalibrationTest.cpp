// The touch-calibration request: an empty Set_touch_cal.txt in the card root,
// written only after "예".
#include "settings/format/TouchCalibrationReset.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace {

bool waitFor(const TouchCalibrationFlow& flow, TouchCalibrationFlow::State state)
{
    for (int i = 0; i < 500 && flow.state() != state; ++i) {
        QCoreApplication::processEvents();
        QThread::msleep(10);
    }
    return flow.state() == state;
}

QString writeExisting(const QTemporaryDir& card)
{
    const QString marker = card.filePath(QStringLiteral("Set_touch_cal.txt"));
    QFile file(marker);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("calibration values the camera left\n");
    return marker;
}

} // namespace

TEST(TouchCalibrationTest, NoWritesNothing)
{
    QTemporaryDir card;
    const QString marker = writeExisting(card);
    TouchCalibrationFlow flow;
    flow.start(card.path());
    EXPECT_EQ(flow.sheet().kind, CardSheet::Kind::Question);
    EXPECT_EQ(flow.sheet().messageKey, CardSheetKeys::kTouchTitle);
    EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kTouchQuestion);
    EXPECT_EQ(flow.sheet().buttonKeys, QStringList({ CardSheetKeys::kNo, CardSheetKeys::kYes }));
    flow.answer(1000);
    EXPECT_FALSE(flow.sheet().isOpen());
    QCoreApplication::processEvents();
    QFile file(marker);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("calibration values the camera left\n"));
    EXPECT_EQ(QDir(card.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(TouchCalibrationTest, YesReplacesTheMarkerByAnEmptyFileThenShowsCompletion)
{
    QTemporaryDir card;
    const QString marker = writeExisting(card);
    TouchCalibrationFlow flow;
    flow.start(card.path());
    flow.answer(1001);
    EXPECT_FALSE(flow.sheet().isOpen()); // the question closed; completion follows the write
    ASSERT_TRUE(waitFor(flow, TouchCalibrationFlow::State::Done));
    EXPECT_TRUE(flow.written());
    EXPECT_EQ(flow.sheet().messageKey, CardSheetKeys::kTouchTitle);
    EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kTouchDone);
    EXPECT_EQ(flow.sheet().buttonKeys.size(), 1);
    EXPECT_EQ(QFileInfo(marker).size(), 0);
    // Nothing else lands on the card (no temporary file left behind).
    EXPECT_EQ(QDir(card.path()).entryList(QDir::Files | QDir::Hidden),
        QStringList { QStringLiteral("Set_touch_cal.txt") });
    flow.answer(1000);
    EXPECT_FALSE(flow.sheet().isOpen());
}

TEST(TouchCalibrationTest, ACardThatVanishedStillGetsTheCompletionSheet)
{
    QString gone;
    {
        QTemporaryDir card;
        gone = card.path();
    }
    EXPECT_FALSE(TouchCalibration::writeMarker(gone));
    EXPECT_FALSE(TouchCalibration::writeMarker(QString()));
    TouchCalibrationFlow flow;
    flow.start(gone);
    flow.answer(1001);
    ASSERT_TRUE(waitFor(flow, TouchCalibrationFlow::State::Done));
    EXPECT_FALSE(flow.written());
    EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kTouchDone);
    EXPECT_FALSE(QFileInfo::exists(gone));
}
