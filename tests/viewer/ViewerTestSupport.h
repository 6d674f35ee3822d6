#pragma once

#include <QString>

#include <gtest/gtest.h>

class MainWindow;
class QWidget;

// The viewer's window tests: settings cleared, English texts in the viewer's
// style, and no card or card model left over from another test.
class ViewerFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // Writes a Tolm's "setup.cfg" under `root` and lets the folder stand for a
    // mounted memory card, as --card makes it.
    static void mountCard(const QString& root);
};

// Helpers shared by the viewer's window tests.
namespace ViewerTestSupport {

// Kept for the editors' window tests; every test binary has settings of
// its own already.
void useOwnSettings(const char* binaryName);

// Both views prepared and running, and the session not paused.
bool bothPlaying(MainWindow& window);

// Switches the viewer language the way the menu does and lets the windows
// re-apply their texts.
void useLanguage(const QString& code);

// Saves a grab of the widget's window as <TAVRO_SCREENSHOT_DIR>/<name>.png
// when that variable is set (to look at the windows); returns the path or "".
QString saveScreenshot(QWidget& widget, const QString& name);

// Answers the next save panel with `path` once it is up and settled, as a
// user would (folder and name typed, confirmed); its title goes to `title`.
void answerSavePanel(const QString& path, QString* title = nullptr);

} // namespace ViewerTestSupport
