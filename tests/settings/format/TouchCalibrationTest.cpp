// The touch-calibration request, an empty Set_touch_cal.txt in the card root
// written only after "예", and the completion sheet that follows either way.
// (The format's sheets are clicked through in the editors' dialog tests.)
#include "TestFiles.h"

#include "settings/format/TouchCalibrationReset.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

TEST(TouchCalibrationTest, OnlyYesLeavesTheEmptyMarker)
{
    QTemporaryDir card;
    const QString marker = card.filePath(TouchCalibration::kMarkerFileName);
    TestFiles::write(marker, "calibration values\n");
    TouchCalibrationFlow flow;
    const auto done = [&] {
        return QTest::qWaitFor([&] { return flow.state() == TouchCalibrationFlow::State::Done; });
    };
    // (Every way of saying "아니오" is clicked and keyed in the editors' dialog test.)
    flow.start(card.path());
    EXPECT_EQ(flow.sheet().buttonKeys, QStringList({ CardSheetKeys::kNo, CardSheetKeys::kYes }));
    flow.answer(1001);
    EXPECT_FALSE(flow.sheet().isOpen()); // the completion follows the write
    ASSERT_TRUE(done());
    EXPECT_TRUE(flow.written());
    EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kTouchDone);
    // Replaced by an empty file; nothing else lands on the card.
    EXPECT_EQ(QDir(card.path()).entryList(QDir::Files | QDir::Hidden),
        QStringList { TouchCalibration::kMarkerFileName });
    EXPECT_EQ(TestFiles::read(marker), QByteArray());
    flow.answer(1000);
    // A card that vanished still gets the completion sheet.
    flow.start(card.path() + QStringLiteral("/gone"));
    flow.answer(1001);
    ASSERT_TRUE(done());
    EXPECT_FALSE(flow.written());
    EXPECT_FALSE(TouchCalibration::writeMarker(QString()));
}
