// The format and touch-calibration sheets over an editor window, clicked as a
// user would, with a scripted format engine that answers later. Screenshots:
// TAVRO_SCREENSHOT_DIR=/tmp/shots xvfb-run -a build/tests/editors_format_tests
#include "editors/format/CardOperationDialog.h"
#include "TestFiles.h"
#include "editors/format/CardSheetDialog.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerSettings.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/CardSheet.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

constexpr int kWaitMs = 5000;

class ScriptedEngine final : public CardFormatEngine {
public:
    explicit ScriptedEngine(FormatResult::Outcome outcome, int* formats)
        : m_outcome(outcome)
        , m_formats(formats)
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
        ++*m_formats;
        FormatResult result;
        result.outcome = m_outcome;
        QTimer::singleShot(300, context, [result, done] { done(result); });
    }

private:
    FormatResult::Outcome m_outcome;
    int* m_formats;
};

QString shown(const QString& key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key).replace(
        QStringLiteral("\r\n"), QStringLiteral("\n"));
}

void screenshot(QWidget* widget, const char* name)
{
    const QByteArray dir = qgetenv("TAVRO_SCREENSHOT_DIR");
    if (dir.isEmpty())
        return;
    QDir().mkpath(QString::fromLocal8Bit(dir));
    widget->grab().save(
        QString::fromLocal8Bit(dir) + u'/' + QLatin1String(name) + QStringLiteral(".png"));
}

// An editor window, with the viewer's language set (French runs longest).
struct Editor {
    QWidget window;
    explicit Editor(const QString& language = QStringLiteral("fr"))
    {
        QSettings settings;
        settings.setValue(
            QLatin1String(ViewerSettings::kLookupLanguagesKey), QStringList { language });
        settings.sync();
        window.resize(900, 600);
        window.show();
    }
};

} // namespace

TEST(CardOperationDialogTest, YesRunsTheFormatBehindADisabledButtonThenShowsTheResult)
{
    Editor editor;
    int formats = 0;
    QPointer<CardOperationDialog> operation
        = askFormat(&editor.window, QStringLiteral("/media/user/DASH CAM"),
            std::make_unique<ScriptedEngine>(FormatResult::Outcome::Formatted, &formats));
    QSignalSpy finished(operation.data(), &CardOperationDialog::finished);
    CardSheetDialog* sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
    ASSERT_TRUE(shown(CardSheetKeys::kFormatQuestion).startsWith(QStringLiteral("Attention")));
    EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kFormatQuestion));
    ASSERT_EQ(sheet->buttons().size(), 2);
    EXPECT_EQ(sheet->buttons()[0]->text(), shown(CardSheetKeys::kNo));
    EXPECT_EQ(sheet->buttons()[1]->text(), shown(CardSheetKeys::kYes));
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    screenshot(sheet, "format-question");

    QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton);
    EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kFormatting));
    ASSERT_EQ(sheet->buttons().size(), 1);
    EXPECT_FALSE(sheet->buttons()[0]->isEnabled());
    EXPECT_TRUE(sheet->progressBar()->isVisible());
    screenshot(sheet, "format-progress");
    QTest::keyClick(sheet, Qt::Key_Escape); // can't be dismissed while the tool runs
    EXPECT_TRUE(sheet->isVisible());

    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return bool(sheet->buttons().value(0) && sheet->buttons()[0]->isEnabled()); },
        kWaitMs));
    EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kFormatDone));
    EXPECT_FALSE(sheet->progressBar()->isVisible());
    EXPECT_EQ(sheet->buttons()[0]->text(), QStringLiteral("OK"));
    screenshot(sheet, "format-done");
    QTest::mouseClick(sheet->buttons()[0], Qt::LeftButton);
    EXPECT_EQ(finished.size(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(operation.isNull()); }, kWaitMs));
    EXPECT_EQ(formats, 1);
}

TEST(CardOperationDialogTest, NoClosesTheQuestionWithNothingRun)
{
    Editor editor;
    int formats = 0;
    QPointer<CardOperationDialog> operation
        = askFormat(&editor.window, QStringLiteral("/media/user/CARD"),
            std::make_unique<ScriptedEngine>(FormatResult::Outcome::Formatted, &formats));
    CardSheetDialog* sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
    QTest::keyClick(sheet, Qt::Key_Escape); // the first button, "아니오"
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(operation.isNull()); }, kWaitMs));
    EXPECT_EQ(formats, 0);
}

TEST(CardOperationDialogTest, ReturnOnAQuestionThatErasesAnswersNo)
{
    Editor editor;
    QTemporaryDir card;
    const QString marker = card.filePath(QStringLiteral("Set_touch_cal.txt"));
    TestFiles::write(marker, "calibration");
    int formats = 0;
    QPointer<CardOperationDialog> format = askFormat(&editor.window, card.path(),
        std::make_unique<ScriptedEngine>(FormatResult::Outcome::Formatted, &formats));
    QPointer<CardOperationDialog> touch = askTouchCalibrationReset(&editor.window, card.path());
    for (CardOperationDialog* operation : { format.data(), touch.data() }) {
        CardSheetDialog* sheet = operation->sheetDialog();
        ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
        ASSERT_EQ(sheet->buttons().size(), 2);
        EXPECT_TRUE(sheet->buttons()[0]->isDefault()) << "\"아니오\" is the default";
        sheet->activateWindow();
        QTest::keyClick(sheet, Qt::Key_Return);
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return format.isNull() && touch.isNull(); }, kWaitMs));
    EXPECT_EQ(formats, 0);
    EXPECT_EQ(TestFiles::read(marker), QByteArray("calibration"));
}

TEST(CardOperationDialogTest, AFailedToolShowsTheFailureText)
{
    Editor editor;
    int formats = 0;
    QPointer<CardOperationDialog> operation
        = askFormat(&editor.window, QStringLiteral("/media/user/CARD"),
            std::make_unique<ScriptedEngine>(FormatResult::Outcome::Failed, &formats));
    QSignalSpy ended(operation.data(), &CardOperationDialog::formatFinished);
    CardSheetDialog* sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
    QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ended.size() == 1; }, kWaitMs));
    EXPECT_FALSE(ended[0][0].toBool());
    EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kFormatFailed));
    EXPECT_TRUE(sheet->buttons()[0]->isEnabled());
    screenshot(sheet, "format-failed");
    QTest::mouseClick(sheet->buttons()[0], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(operation.isNull()); }, kWaitMs));
}

TEST(CardOperationDialogTest, TheRealFormatterRefusesAFolderOnTheSystemDisk)
{
    Editor editor;
    QTemporaryDir card;
    QPointer<CardOperationDialog> operation = askFormat(&editor.window, card.path());
    CardSheetDialog* sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
    EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kCannotFormat));
    ASSERT_EQ(sheet->buttons().size(), 1);
    EXPECT_TRUE(sheet->buttons()[0]->isEnabled());
    EXPECT_FALSE(sheet->progressBar()->isVisible());
    screenshot(sheet, "format-refused");
    QTest::mouseClick(sheet->buttons()[0], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(operation.isNull()); }, kWaitMs));
    EXPECT_TRUE(QFileInfo(card.path()).isDir());
}

TEST(CardOperationDialogTest, ClosingTheEditorWhileFormattingLeavesNothingBehind)
{
    int formats = 0;
    QPointer<CardOperationDialog> operation;
    QPointer<CardSheetDialog> sheet;
    {
        Editor editor;
        operation = askFormat(&editor.window, QStringLiteral("/media/user/CARD"),
            std::make_unique<ScriptedEngine>(FormatResult::Outcome::Formatted, &formats));
        sheet = operation->sheetDialog();
        ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
        QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton);
    }
    EXPECT_TRUE(operation.isNull());
    EXPECT_TRUE(sheet.isNull());
    QTest::qWait(400); // the engine's late answer finds nobody
    EXPECT_EQ(formats, 1);
}

TEST(CardOperationDialogTest, TouchResetAsksWritesTheMarkerAndConfirms)
{
    Editor editor(QStringLiteral("ja"));
    QTemporaryDir card;
    const QString marker = card.filePath(QStringLiteral("Set_touch_cal.txt"));
    QPointer<CardOperationDialog> declined = askTouchCalibrationReset(&editor.window, card.path());
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return bool(declined->sheetDialog()->isVisible()); }, kWaitMs));
    QTest::mouseClick(declined->sheetDialog()->buttons()[0], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(declined.isNull()); }, kWaitMs));
    EXPECT_FALSE(QFileInfo::exists(marker));

    QPointer<CardOperationDialog> operation = askTouchCalibrationReset(&editor.window, card.path());
    CardSheetDialog* sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
    EXPECT_EQ(sheet->informativeText(), shown(CardSheetKeys::kTouchQuestion));
    screenshot(sheet, "touch-question");
    QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return sheet->informativeText() == shown(CardSheetKeys::kTouchDone); }, kWaitMs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet->isVisible()); }, kWaitMs));
    EXPECT_TRUE(QFileInfo::exists(marker));
    EXPECT_EQ(QFileInfo(marker).size(), 0);
    screenshot(sheet, "touch-done");
    QTest::mouseClick(sheet->buttons()[0], Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(operation.isNull()); }, kWaitMs));
}
