// The viewer language preference: launch validation, switching, the menu's
// check mark, the notification and the windows that re-apply their texts.

#include "LanguageSettingsFixture.h"

#include "i18n/LanguageRefreshObserver.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/SettingWindowLanguage.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "i18n/ViewerSettings.h"
#include "library/TavroNotifier.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QSignalSpy>

#include <memory>

namespace {

using Item = ViewerLanguage::Item;

// Stands for a window that shows one localised caption and re-applies it when
// the language changes, as the main window and every modal page do.
struct FakeWindow {
    explicit FakeWindow(const char* key)
        : key(key)
        , observer(std::make_unique<LanguageRefreshObserver>([this] { applyLanguageSettings(); }))
    {
        applyLanguageSettings();
    }

    void applyLanguageSettings()
    {
        caption = TavroLanguages::SharedTavroLanguages().localized(key);
        ++applyCount;
    }

    const char* key;
    QString caption;
    int applyCount = 0;
    std::unique_ptr<LanguageRefreshObserver> observer;
};

class ViewerLanguageTest : public LanguageSettingsFixture {
protected:
    // Checks the store after the language became code: both preferences and,
    // when onDisk, the settings file itself.
    static void expectStoredLanguage(const QString& code, bool onDisk)
    {
        EXPECT_EQ(storedValue(ViewerSettings::kLanguageKey).toString(), code);
        EXPECT_EQ(
            storedValue(ViewerSettings::kLookupLanguagesKey).toStringList(), QStringList { code });
        if (onDisk) {
            EXPECT_TRUE(settingsFileText().contains(QStringLiteral("TavroViewerLanguage=") + code))
                << settingsFileText().toStdString();
        }
    }

    // Runs the launch sequence with the given stored value (invalid QVariant:
    // nothing stored) and checks the language and menu mark that result.
    static void expectLaunch(const QVariant& stored, const QString& expectedCode, Item expectedItem)
    {
        clearStore();
        if (stored.isValid())
            storeValue(ViewerSettings::kLanguageKey, stored);
        SCOPED_TRACE(stored.toString().toStdString());
        EXPECT_EQ(ViewerLanguage::initializeLanguageSetting(), expectedCode);
        expectStoredLanguage(expectedCode, true);
        ViewerLanguage language;
        language.markCurrentLanguage();
        EXPECT_EQ(language.markedItem(), expectedItem);
    }
};

TEST_F(ViewerLanguageTest, LaunchKeepsAViewerLanguageAndOtherwiseFallsBackToEnglish)
{
    expectLaunch(QVariant(), QStringLiteral("en"), Item::English);
    expectLaunch(QStringLiteral("en"), QStringLiteral("en"), Item::English);
    expectLaunch(QStringLiteral("fr"), QStringLiteral("fr"), Item::French);
    expectLaunch(QStringLiteral("ja"), QStringLiteral("ja"), Item::Japanese);
    expectLaunch(QStringLiteral("pt"), QStringLiteral("pt"), Item::Portuguese);
    expectLaunch(QStringLiteral("de"), QStringLiteral("en"), Item::English);
    expectLaunch(QStringLiteral("FR"), QStringLiteral("en"), Item::English);
    expectLaunch(QStringLiteral("pt-BR"), QStringLiteral("en"), Item::English);
    expectLaunch(QString(), QStringLiteral("en"), Item::English);
    expectLaunch(42, QStringLiteral("en"), Item::English);
}

TEST_F(ViewerLanguageTest, LaunchReplacesAStaleLookupList)
{
    storeValue(ViewerSettings::kLanguageKey, QStringLiteral("ja"));
    storeValue(ViewerSettings::kLookupLanguagesKey,
        QStringList { QStringLiteral("de"), QStringLiteral("fr") });
    ViewerLanguage::initializeLanguageSetting();
    expectStoredLanguage(QStringLiteral("ja"), true);
    EXPECT_EQ(TavroLanguages::SharedTavroLanguages().localized(LocalizationKeys::kFilterAll),
        QStringLiteral("すべて"));
}

TEST_F(ViewerLanguageTest, SwitchReTextsEveryOpenWindowWithoutRestart)
{
    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage language;
    language.markCurrentLanguage();
    FakeWindow mainWindow(LocalizationKeys::kFilterAll);
    FakeWindow modalPage(LocalizationKeys::kDashcamSettings);
    ASSERT_EQ(mainWindow.caption, QStringLiteral("All"));
    QSignalSpy notifications(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage);
    QSignalSpy marks(&language, &ViewerLanguage::markedItemChanged);

    struct Step {
        void (ViewerLanguage::*action)();
        Item item;
        const char* code;
        QString filterAll;
        QString settingsTitle;
    };
    const Step steps[] = {
        { &ViewerLanguage::languageChangeToFrench, Item::French, "fr", QStringLiteral("Tout"),
            QStringLiteral("Réglages de la caméra embarquée") },
        { &ViewerLanguage::languageChangeToJapanese, Item::Japanese, "ja", QStringLiteral("すべて"),
            QStringLiteral("ドライブレコーダー設定") },
        { &ViewerLanguage::languageChangeToPortuguese, Item::Portuguese, "pt",
            QStringLiteral("Todos"), QStringLiteral("Configurações da câmera veicular") },
        { &ViewerLanguage::languageChangeToEnglish, Item::English, "en", QStringLiteral("All"),
            QStringLiteral("Dashcam Settings") },
    };
    int expectedNotifications = 0;
    for (const Step& step : steps) {
        SCOPED_TRACE(step.code);
        const QString previousCaption = mainWindow.caption;
        (language.*step.action)();
        EXPECT_EQ(notifications.count(), ++expectedNotifications);
        EXPECT_EQ(language.markedItem(), step.item);
        ASSERT_FALSE(marks.isEmpty());
        EXPECT_EQ(marks.takeLast().at(0).value<Item>(), step.item);
        expectStoredLanguage(QString::fromLatin1(step.code), true);

        // The windows re-apply their texts after the notification, not inside it.
        EXPECT_EQ(mainWindow.caption, previousCaption);
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(mainWindow.caption, step.filterAll);
        EXPECT_EQ(modalPage.caption, step.settingsTitle);
    }
    EXPECT_EQ(mainWindow.applyCount, 1 + 4);
    EXPECT_EQ(modalPage.applyCount, 1 + 4);
}

TEST_F(ViewerLanguageTest, ChoosingTheLanguageInUseChangesNothing)
{
    for (const QString& code : ViewerSettings::supportedLanguages()) {
        SCOPED_TRACE(code.toStdString());
        clearStore();
        storeValue(ViewerSettings::kLanguageKey, code);
        ViewerLanguage::initializeLanguageSetting();
        ViewerLanguage language;
        FakeWindow window(LocalizationKeys::kFilterAll);
        QSignalSpy notifications(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage);

        EXPECT_FALSE(language.languageChange(code));
        language.markCurrentLanguage();
        const Item current = language.markedItem();
        const auto sameItemAction = current == Item::French
            ? &ViewerLanguage::languageChangeToFrench
            : current == Item::Japanese   ? &ViewerLanguage::languageChangeToJapanese
            : current == Item::Portuguese ? &ViewerLanguage::languageChangeToPortuguese
                                          : &ViewerLanguage::languageChangeToEnglish;
        (language.*sameItemAction)();
        QCoreApplication::sendPostedEvents();

        EXPECT_EQ(notifications.count(), 0);
        EXPECT_EQ(window.applyCount, 1);
        EXPECT_EQ(ViewerLanguage::codeForItem(language.markedItem()), code);
        expectStoredLanguage(code, true);
    }
}

TEST_F(ViewerLanguageTest, CodesWithoutTableAreRefused)
{
    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage language;
    QSignalSpy notifications(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage);
    for (const char* code : { "de", "", "EN", "pt_BR" })
        EXPECT_FALSE(language.languageChange(QString::fromLatin1(code))) << code;
    EXPECT_EQ(notifications.count(), 0);
    expectStoredLanguage(QStringLiteral("en"), true);
}

TEST_F(ViewerLanguageTest, SettingsWindowSwitchesThroughTheMainWindowFirst)
{
    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage mainWindowLanguage;
    mainWindowLanguage.markCurrentLanguage();
    SettingWindowLanguage settingWindowLanguage(mainWindowLanguage);
    FakeWindow page(LocalizationKeys::kTabParking);

    // Record what is stored each time the notification goes out.
    QStringList storedAtNotification;
    QObject context;
    QObject::connect(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage, &context,
        [&] { storedAtNotification << storedValue(ViewerSettings::kLanguageKey).toString(); });

    settingWindowLanguage.languageChangeToPortuguese();
    settingWindowLanguage.languageChangeToJapanese();
    settingWindowLanguage.languageChangeToJapanese(); // already in use
    settingWindowLanguage.languageChangeToFrench();
    settingWindowLanguage.languageChangeToEnglish();

    // One notification per real switch: the window's own step finds the code stored.
    EXPECT_EQ(storedAtNotification,
        (QStringList { QStringLiteral("pt"), QStringLiteral("ja"), QStringLiteral("fr"),
            QStringLiteral("en") }));
    EXPECT_EQ(mainWindowLanguage.markedItem(), Item::English);
    EXPECT_EQ(settingWindowLanguage.markedItem(), Item::English);
    expectStoredLanguage(QStringLiteral("en"), true); // written by the main window's step
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(page.caption, QStringLiteral("Parking Mode"));
    EXPECT_EQ(page.applyCount, 1 + 4);

    // Its own step alone switches too, and still notifies.
    EXPECT_TRUE(settingWindowLanguage.languageChange(QStringLiteral("ja")));
    EXPECT_FALSE(settingWindowLanguage.languageChange(QStringLiteral("ja")));
    EXPECT_EQ(storedAtNotification.size(), 5);
    expectStoredLanguage(QStringLiteral("ja"), false);
}

TEST_F(ViewerLanguageTest, ClosedWindowsAreNotReTexted)
{
    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage language;
    auto window = std::make_unique<FakeWindow>(LocalizationKeys::kFilterAll);
    language.languageChangeToFrench();
    window.reset(); // closed before the queued re-texting runs
    QCoreApplication::sendPostedEvents();
    FakeWindow later(LocalizationKeys::kFilterAll); // opened later: reads the new language
    EXPECT_EQ(later.caption, QStringLiteral("Tout"));
}

TEST_F(ViewerLanguageTest, QtOwnTextsFollowTheViewerLanguage)
{
    const QDir systemTranslations(QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    if (!systemTranslations.exists(QStringLiteral("qtbase_fr.qm")))
        GTEST_SKIP() << "Qt's translations are not installed (qt6-translations-l10n)";
    const auto standardCancel
        = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };

    ViewerLanguage::initializeLanguageSetting();
    ViewerLanguage language;
    EXPECT_EQ(standardCancel(), QStringLiteral("Cancel"));
    language.languageChangeToFrench();
    EXPECT_EQ(standardCancel(), QStringLiteral("Annuler"));
    language.languageChangeToJapanese();
    EXPECT_EQ(standardCancel(), QStringLiteral("キャンセル"));
    language.languageChangeToPortuguese();
    EXPECT_EQ(standardCancel(), QStringLiteral("Cancelar"));
    language.languageChangeToEnglish();
    EXPECT_EQ(standardCancel(), QStringLiteral("Cancel"));
}

TEST_F(ViewerLanguageTest, MenuEntriesNameTheirLanguage)
{
    const struct {
        Item item;
        const char* code;
        QString title;
    } entries[] = {
        { Item::English, "en", QStringLiteral("English") },
        { Item::French, "fr", QStringLiteral("Français") },
        { Item::Japanese, "ja", QStringLiteral("日本語") },
        { Item::Portuguese, "pt", QStringLiteral("Português") },
    };
    QStringList codes;
    for (const auto& entry : entries) {
        EXPECT_EQ(ViewerLanguage::codeForItem(entry.item), QString::fromLatin1(entry.code));
        EXPECT_EQ(ViewerLanguage::menuTitle(entry.item), entry.title);
        codes << ViewerLanguage::codeForItem(entry.item);
    }
    EXPECT_EQ(codes, ViewerSettings::supportedLanguages());
}

} // namespace
