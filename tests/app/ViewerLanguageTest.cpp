// The viewer language: lookup, validation at launch, switching from either
// window's menu, and the windows re-texted after it.

#include "i18n/ViewerLanguage.h"
#include "i18n/LanguageRefreshObserver.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/SettingWindowLanguage.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerSettings.h"
#include "library/TavroNotifier.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QSettings>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace {

using Item = ViewerLanguage::Item;

// A window's localised caption, re-applied on a language change.
struct FakeWindow {
    explicit FakeWindow(const char* key)
        : key(key)
    {
        apply();
    }
    void apply()
    {
        caption = TavroLanguages::SharedTavroLanguages().localized(key);
        ++applyCount;
    }
    const char* key;
    QString caption;
    int applyCount = 0;
    LanguageRefreshObserver observer { [this] { apply(); } };
};

void store(const char* key, const QVariant& value)
{
    QSettings settings;
    value.isValid() ? settings.setValue(QLatin1String(key), value)
                    : settings.remove(QLatin1String(key));
    settings.sync();
}

// Both preferences hold code, in the settings file too.
void expectStoredLanguage(const QString& code)
{
    EXPECT_EQ(ViewerLanguage::currentLanguage(), code);
    EXPECT_EQ(QSettings().value(QLatin1String(ViewerSettings::kLookupLanguagesKey)).toStringList(),
        QStringList { code });
    QFile file(QSettings().fileName());
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    EXPECT_TRUE(text.contains("TavroViewerLanguage=" + code.toLatin1())) << text.constData();
}

class ViewerLanguageTest : public ::testing::Test {
protected:
    void SetUp() override { QSettings().clear(); }
    void TearDown() override { QSettings().clear(); }
};

TEST_F(ViewerLanguageTest, LookupUsesTheFirstLookupLanguagesTable)
{
    const QString yes = QString::fromUtf8(LocalizationKeys::kYes);
    const QString missing = QStringLiteral("표에 없는 키"); // shows as it stands
    const struct {
        QVariant languages; // invalid: nothing stored
        QString key, expected;
    } cases[] = { { QStringList { "ja", "fr" }, LocalizationKeys::kNo, "いいえ" },
        { QStringList { "en" }, yes + u' ', yes + u' ' },
        // A language without a table shows nothing at all.
        { QStringList { "de", "fr" }, yes, "" }, { QStringList { "EN" }, missing, "" },
        { QStringList { "ja" }, missing, missing },
        { QStringList { "../i18n/Localizable_Tolm_en" }, yes, "" }, { QVariant(), yes, "" } };
    for (const auto& c : cases) {
        store(ViewerSettings::kLookupLanguagesKey, c.languages);
        EXPECT_EQ(TavroLanguages::SharedTavroLanguages().localized(c.key), c.expected)
            << c.languages.toStringList().join(u',').toStdString() << " " << c.key.toStdString();
    }
}

TEST_F(ViewerLanguageTest, LaunchKeepsAViewerLanguageAndOtherwiseFallsBackToEnglish)
{
    const struct {
        QVariant stored; // invalid: nothing stored
        QString code;
        Item item;
    } cases[] = { { QVariant(), "en", Item::English }, { "ja", "ja", Item::Japanese },
        { "pt", "pt", Item::Portuguese }, { "pt-BR", "en", Item::English },
        { 42, "en", Item::English } };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.stored.toString().toStdString());
        store(ViewerSettings::kLanguageKey, c.stored);
        // A stale lookup list from an earlier run is replaced.
        store(ViewerSettings::kLookupLanguagesKey, QStringList { "de", "fr" });
        EXPECT_EQ(ViewerLanguage::initializeLanguageSetting(), c.code);
        expectStoredLanguage(c.code);
        ViewerLanguage language;
        language.markCurrentLanguage();
        EXPECT_EQ(language.markedItem(), c.item);
    }
}

TEST_F(ViewerLanguageTest, SwitchReTextsEveryOpenWindowAfterTheNotification)
{
    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage language;
    FakeWindow mainWindow(LocalizationKeys::kFilterAll);
    QSignalSpy notifications(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage);
    QSignalSpy marks(&language, &ViewerLanguage::markedItemChanged);
    const struct {
        void (ViewerLanguage::*action)();
        Item item;
        QString code, filterAll, qtCancel; // Qt's own texts follow
    } steps[]
        = { { &ViewerLanguage::languageChangeToFrench, Item::French, "fr", "Tout", "Annuler" },
              { &ViewerLanguage::languageChangeToPortuguese, Item::Portuguese, "pt", "Todos",
                  "Cancelar" },
              { &ViewerLanguage::languageChangeToEnglish, Item::English, "en", "All", "Cancel" } };
    const bool qtTranslations = QFile::exists(
        QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_fr.qm"));
    for (const auto& step : steps) {
        const QString before = mainWindow.caption;
        (language.*step.action)();
        EXPECT_EQ(marks.takeLast().at(0).value<Item>(), step.item);
        expectStoredLanguage(step.code);
        EXPECT_EQ(mainWindow.caption, before); // not inside the notification
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(mainWindow.caption, step.filterAll);
        if (qtTranslations) { // qt6-translations-l10n
            EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), step.qtCancel);
        }
    }
    EXPECT_EQ(notifications.size(), 3);
    // The language in use, or one without a table: nothing but the menu mark.
    for (const char* code : { "en", "de", "EN" })
        EXPECT_FALSE(language.languageChange(QString::fromLatin1(code))) << code;
    language.languageChangeToEnglish();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(notifications.size(), 3);
    EXPECT_EQ(mainWindow.applyCount, 1 + 3);
    EXPECT_EQ(marks.size(), 1);
    // A window closed before its queued re-texting is left out; a new one reads the new text.
    auto closing = std::make_unique<FakeWindow>(LocalizationKeys::kFilterAll);
    language.languageChangeToFrench();
    closing.reset();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(FakeWindow(LocalizationKeys::kFilterAll).caption, QStringLiteral("Tout"));
}

TEST_F(ViewerLanguageTest, SettingsWindowSwitchesThroughTheMainWindowFirst)
{
    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage mainWindowLanguage;
    SettingWindowLanguage settingWindowLanguage(mainWindowLanguage);
    FakeWindow page(LocalizationKeys::kDashcamSettings);
    QStringList storedAtNotification;
    QObject context;
    QObject::connect(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage, &context,
        [&] { storedAtNotification << ViewerLanguage::currentLanguage(); });
    settingWindowLanguage.languageChangeToJapanese();
    settingWindowLanguage.languageChangeToJapanese(); // already in use
    settingWindowLanguage.languageChangeToEnglish();
    // One notification per real switch: the window's own step finds the code stored.
    EXPECT_EQ(storedAtNotification, (QStringList { "ja", "en" }));
    EXPECT_EQ(mainWindowLanguage.markedItem(), Item::English);
    EXPECT_EQ(settingWindowLanguage.markedItem(), Item::English);
    expectStoredLanguage(QStringLiteral("en"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(page.caption, QStringLiteral("Dashcam Settings"));
    EXPECT_EQ(page.applyCount, 1 + 2);
}

} // namespace
