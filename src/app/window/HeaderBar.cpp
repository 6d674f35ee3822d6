#include "app/window/HeaderBar.h"
#include "style/TavroStyle.h"

#include "TavroVersion.h"
#include "app/window/ImageButton.h"
#include "app/window/ViewerImages.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QHBoxLayout>
#include <QLabel>

namespace {

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

} // namespace

HeaderBar::HeaderBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("headerBar"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setSpacing(10);

    auto* icon = new QLabel(this);
    icon->setPixmap(ViewerImages::pixmap(
        QStringLiteral("io.github.tavro.Viewer"), QSize(28, 28), devicePixelRatioF()));
    m_brand = new QLabel(QStringLiteral("Tavro Viewer"), this);
    m_brand->setObjectName(QStringLiteral("brandLabel"));
    m_brand->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 15px;"));
    m_modelTextField = new QLabel(this);
    m_modelTextField->setObjectName(QStringLiteral("modelTextField"));
    m_modelTextField->setStyleSheet(TavroStyle::withPalette(QStringLiteral(
        "color: @text; background: @panel; border: 1px solid @separator; border-radius: 4px; "
        "padding: 2px 10px;")));
    m_firmwareLabel = new QLabel(this);
    m_firmwareLabel->setObjectName(QStringLiteral("firmwareLabel"));
    m_firmwareLabel->setProperty("secondary", true);
    m_mainVersionLabel = new QLabel(this);
    m_mainVersionLabel->setObjectName(QStringLiteral("mainVersionLabel"));
    m_mainVersionLabel->setProperty("secondary", true);
    m_mainVersionLabel->setText(QStringLiteral("Ver %1").arg(Tavro::versionString()));
    m_settingsButton = new ImageButton(QStringLiteral("settings"), this);
    m_settingsButton->setObjectName(QStringLiteral("settingsButton"));
    m_settingsButton->setEnabled(false);
    connect(m_settingsButton, &ImageButton::clicked, this, &HeaderBar::settingsButtonTouched);

    layout->addWidget(icon);
    layout->addWidget(m_brand);
    layout->addSpacing(16);
    layout->addWidget(m_modelTextField);
    layout->addWidget(m_firmwareLabel);
    layout->addStretch(1);
    layout->addWidget(m_mainVersionLabel);
    layout->addWidget(m_settingsButton);
    applyLanguageSettings();
}

void HeaderBar::setModelInfo(const QString& modelText, const QString& firmware)
{
    m_modelTextField->setText(modelText);
    m_firmware = firmware;
    applyLanguageSettings();
}

void HeaderBar::setSettingsButtonEnabled(bool enabled)
{
    m_settingsButton->setEnabled(enabled);
}

void HeaderBar::applyLanguageSettings()
{
    m_modelTextField->setToolTip(localized(LocalizationKeys::kModel));
    m_firmwareLabel->setVisible(!m_firmware.isEmpty());
    m_firmwareLabel->setText(
        QStringLiteral("%1 %2").arg(localized(LocalizationKeys::kFirmware), m_firmware));
    m_settingsButton->setToolTip(localized(LocalizationKeys::kSettings));
}
