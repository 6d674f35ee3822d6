#pragma once

#include <QString>

class QWidget;

// Helpers shared by the viewer's window tests.
namespace ViewerTestSupport {

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
