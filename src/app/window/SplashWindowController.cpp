#include "app/window/SplashWindowController.h"

#include "app/window/ViewerImages.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace {

const QSize kSplashSize(520, 300);

} // namespace

SplashWindowController::SplashWindowController(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("splashWindow"));
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(QStringLiteral("Tavro Viewer"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_splashImagView = new QLabel(this);
    m_splashImagView->setObjectName(QStringLiteral("splashImagView"));
    m_splashImagView->setPixmap(
        ViewerImages::pixmap(QStringLiteral("splash"), kSplashSize, devicePixelRatioF()));
    layout->addWidget(m_splashImagView);
    setFixedSize(kSplashSize);
}

void SplashWindowController::showCentred()
{
    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        QRect frame(QPoint(0, 0), size());
        frame.moveCenter(screen->availableGeometry().center());
        move(frame.topLeft());
    }
    show();
    raise();
}
