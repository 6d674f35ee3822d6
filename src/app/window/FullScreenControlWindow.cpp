#include "app/window/FullScreenControlWindow.h"
#include "style/TavroStyle.h"

#include "app/window/ImageButton.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace {

constexpr int kBottomMargin = 40;

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

} // namespace

FullScreenControlWindow::FullScreenControlWindow(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("fullScreenControlWindow"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(TavroStyle::withPalette(QStringLiteral("#fullScreenControlWindow { background: "
                                                         "@panel; border: 1px solid @separator; "
                                                         "border-radius: 8px; }")));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setSpacing(6);
    m_rewindButton = new ImageButton(QStringLiteral("frame_back"), this);
    m_playPauseButton = new ImageButton(QStringLiteral("play_1"), this);
    m_fastForwardButton = new ImageButton(QStringLiteral("frame_forward"), this);
    m_exitButton = new ImageButton(QStringLiteral("fullscreen"), this);
    m_rewindButton->setObjectName(QStringLiteral("fullScreenRewindButton"));
    m_playPauseButton->setObjectName(QStringLiteral("fullScreenPlayPauseButton"));
    m_fastForwardButton->setObjectName(QStringLiteral("fullScreenFastForwardButton"));
    m_exitButton->setObjectName(QStringLiteral("fullScreenExitButton"));
    for (ImageButton* button :
        { m_rewindButton, m_playPauseButton, m_fastForwardButton, m_exitButton }) {
        button->setIconSize(QSize(28, 28));
        layout->addWidget(button);
    }
    applyLanguageSettings();
}

void FullScreenControlWindow::applyLanguageSettings()
{
    m_rewindButton->setToolTip(localized(LocalizationKeys::kPreviousFrame));
    m_fastForwardButton->setToolTip(localized(LocalizationKeys::kNextFrame));
    m_exitButton->setToolTip(localized(LocalizationKeys::kFullScreen));
    setPlayPauseImage(m_playPauseButton->imageName());
}

void FullScreenControlWindow::setPlayPauseImage(const QString& imageName)
{
    m_playPauseButton->setImageName(imageName);
    const bool playing = imageName == QLatin1String("pause1");
    m_playPauseButton->setToolTip(
        localized(playing ? LocalizationKeys::kPause : LocalizationKeys::kPlay));
}

void FullScreenControlWindow::showOverParent()
{
    if (QWidget* parent = parentWidget())
        parent->installEventFilter(this);
    adjustSize();
    placeAtBottomCentre();
    show();
    raise();
}

void FullScreenControlWindow::placeAtBottomCentre()
{
    const QWidget* parent = parentWidget();
    if (!parent)
        return;
    move((parent->width() - width()) / 2, parent->height() - height() - kBottomMargin);
}

// The area grows to the screen after the bar is shown: the bar follows.
bool FullScreenControlWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible()) {
        placeAtBottomCentre();
        raise();
    }
    return QWidget::eventFilter(watched, event);
}

void FullScreenControlWindow::keyPressEvent(QKeyEvent* event)
{
    emit keyPressed(event->key(), event->modifiers());
}
