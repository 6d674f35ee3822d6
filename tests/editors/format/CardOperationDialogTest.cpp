// The format and touch-calibration sheets over an editor window, clicked and
// keyed as a user would, with a scripted format engine that answers later.
#include "editors/format/CardOperationDialog.h"
#include "TestFiles.h"
#include "editors/format/CardSheetDialog.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerSettings.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/CardSheet.h"

#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

constexpr int kWaitMs = 5000;

// Finds the card formattable at once and ends the format 300 ms later.
struct ScriptedEngine final : CardFormatEngine {
    ScriptedEngine(FormatResult::Outcome outcome, int& formats)
        : outcome(outcome)
        , formats(formats)
    {
    }
    void inspect(
        const QString&, QObject* context, std::function<void(const FormatPlan&)> done) override
    {
        FormatPlan plan;
        plan.refusal = FormatRefusal::None;
        plan.backend = FormatBackend::CommandLine;
        QTimer::singleShot(0, context, [plan, done] { done(plan); });
    }
    void format(
        const FormatPlan&, QObject* context, std::function<void(const FormatResult&)> done) override
    {
        ++formats;
        const FormatResult result { outcome, {}, true, {} };
        QTimer::singleShot(300, context, [result, done] { done(result); });
    }
    FormatResult::Outcome outcome;
    int& formats;
};

QString shown(const QString& key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key).replace("\r\n", "\n");
}

// An editor window in French over a card with a touch calibration marker.
class CardOperationDialogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        QSettings().setValue(
            QLatin1String(ViewerSettings::kLookupLanguagesKey), QStringList { "fr" });
        m_editor->resize(900, 600);
        m_editor->show();
        TestFiles::write(m_marker, "calibration");
    }
    CardSheetDialog* sheetOf(CardOperationDialog* operation)
    {
        CardSheetDialog* sheet = operation->sheetDialog();
        EXPECT_TRUE(QTest::qWaitFor([&] { return sheet->isVisible(); }, kWaitMs));
        return sheet;
    }
    CardOperationDialog* format(FormatResult::Outcome outcome)
    {
        return askFormat(
            m_editor.get(), m_card.path(), std::make_unique<ScriptedEngine>(outcome, m_formats));
    }

    std::unique_ptr<QWidget> m_editor = std::make_unique<QWidget>();
    QTemporaryDir m_card;
    const QString m_marker = m_card.filePath(QStringLiteral("Set_touch_cal.txt"));
    int m_formats = 0;
};

} // namespace

// "예" runs the format behind a disabled button, then shows the result.
// (The touch-calibration marker's reset is the card layer's test.)
TEST_F(CardOperationDialogTest, YesRunsTheFormatThenShowsTheResult)
{
    using Outcome = FormatResult::Outcome;
    for (const Outcome outcome : { Outcome::Formatted, Outcome::Failed }) {
        QPointer<CardOperationDialog> operation = format(outcome);
        QSignalSpy ended(operation.data(), &CardOperationDialog::formatFinished);
        QSignalSpy finished(operation.data(), &CardOperationDialog::finished);
        CardSheetDialog* sheet = sheetOf(operation);
        EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kFormatQuestion));
        EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
        EXPECT_EQ(sheet->buttons().value(1)->text(), shown(CardSheetKeys::kYes));
        QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton);
        EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kFormatting));
        ASSERT_EQ(sheet->buttons().size(), 1);
        EXPECT_FALSE(sheet->buttons()[0]->isEnabled());
        EXPECT_TRUE(sheet->progressBar()->isVisible());
        QTest::keyClick(sheet, Qt::Key_Escape); // can't be dismissed while the tool runs
        ASSERT_TRUE(QTest::qWaitFor([&] { return ended.size() == 1; }, kWaitMs));
        EXPECT_EQ(ended[0][0].toBool(), outcome == Outcome::Formatted);
        const QString result = outcome == Outcome::Formatted ? CardSheetKeys::kFormatDone
                                                             : CardSheetKeys::kFormatFailed;
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return sheet->informativeText() == shown(result); }, kWaitMs));
        EXPECT_FALSE(sheet->progressBar()->isVisible());
        ASSERT_EQ(sheet->buttons().size(), 1);
        EXPECT_TRUE(sheet->buttons()[0]->isEnabled());
        EXPECT_EQ(sheet->buttons()[0]->text(), QStringLiteral("OK"));
        QTest::mouseClick(sheet->buttons()[0], Qt::LeftButton);
        EXPECT_EQ(finished.size(), 1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return operation.isNull(); }, kWaitMs));
    }
    EXPECT_EQ(m_formats, 2);
}

TEST_F(CardOperationDialogTest, ReturnEscapeAndNoOnAQuestionThatErasesRunNothing)
{
    for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Escape, Qt::Key_unknown }) {
        QPointer<CardOperationDialog> operations[] = { format(FormatResult::Outcome::Formatted),
            askTouchCalibrationReset(m_editor.get(), m_card.path()) };
        for (CardOperationDialog* operation : operations) {
            CardSheetDialog* sheet = sheetOf(operation);
            ASSERT_EQ(sheet->buttons().size(), 2);
            EXPECT_TRUE(sheet->buttons()[0]->isDefault()) << "\"아니오\" is the default";
            EXPECT_EQ(sheet->buttons()[0]->text(), shown(CardSheetKeys::kNo));
            sheet->activateWindow();
            if (key == Qt::Key_unknown)
                QTest::mouseClick(sheet->buttons()[0], Qt::LeftButton);
            else
                QTest::keyClick(sheet, key);
        }
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return operations[0].isNull() && operations[1].isNull(); }, kWaitMs));
    }
    EXPECT_EQ(m_formats, 0);
    EXPECT_EQ(TestFiles::read(m_marker), QByteArray("calibration"));
}

TEST_F(CardOperationDialogTest, ClosingTheEditorWhileFormattingLeavesNothingBehind)
{
    QPointer<CardOperationDialog> operation = format(FormatResult::Outcome::Formatted);
    QPointer<CardSheetDialog> sheet = sheetOf(operation);
    QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton);
    m_editor.reset();
    EXPECT_TRUE(operation.isNull());
    EXPECT_TRUE(sheet.isNull());
    QTest::qWait(400); // the engine's late answer finds nobody
    EXPECT_EQ(m_formats, 1);
}
