// The settings button's routing: by volume kind and model type to the card
// page, the model page, the Kel editor, the native editor or the web settings
// window, with the loading and model-info refreshes each branch runs.
#include "CardBuilder.h"
#include "FakeVolumeSource.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"

#include "app/session/SettingsRouter.h"
#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// Records the pages asked for and answers them as the test says.
class RecordingOpener final : public SettingsPageOpener {
public:
    QStringList calls;
    QList<Card> cardsShown;
    QStringList modelsShown;
    std::optional<int> cardAnswer;
    std::optional<qint64> modelAnswer;
    int editorResult = 1;
    QString webFolder;
    CameraLanguageList webLanguages;
    QWidget* webParent = nullptr;
    // What the shared models held when the editor opened.
    QStringList kelLinesAtOpen;
    qint64 localIdAtOpen = -2;

    std::optional<int> showSelectFlashMemoryWindow(const QList<Card>& cards) override
    {
        calls << QStringLiteral("card");
        cardsShown = cards;
        return cardAnswer;
    }
    std::optional<qint64> showSelectModelWindow(const QStringList& modelNames) override
    {
        calls << QStringLiteral("model");
        modelsShown = modelNames;
        return modelAnswer;
    }
    int showSettingWindow_Kel() override
    {
        calls << QStringLiteral("kel");
        kelLinesAtOpen = KelSettingManager::SharedKelSettingManager()->linedSettings();
        return editorResult;
    }
    int showNativeSettingWindow(qint64 modelType) override
    {
        calls << QStringLiteral("native %1").arg(modelType);
        localIdAtOpen = TolmSettingManager::SharedTolmSettingManager()->localID();
        return editorResult;
    }
    int showWebSettingWindow(
        QWidget* parent, const QString& folder, const CameraLanguageList& languages) override
    {
        calls << QStringLiteral("web");
        webParent = parent;
        webFolder = folder;
        webLanguages = languages;
        return editorResult;
    }
};

enum class CardKind { Kel, Tolm, Dravi, Zenti, SelfDescribing, Unknown };

class SettingsRouterTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
        m_router.setParentWindow(m_fakeParent);
    }
    void TearDown() override
    {
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
    }

    static void write(CardBuilder& card, CardKind kind)
    {
        switch (kind) {
        case CardKind::Kel:
            card.blackboxCfg("[capacity]\r\nconst=60\r\n[time]\r\nset=0");
            break;
        case CardKind::Tolm:
            card.setupCfg(SetupCfgBuilder(432).productName("tolm").bytes());
            break;
        case CardKind::Dravi:
            card.setupCfg(SetupCfgBuilder(504).productName("dravi").bytes());
            break;
        case CardKind::Zenti:
            card.setupCfg(SetupCfgBuilder(700).productName("zenti").bytes());
            break;
        case CardKind::SelfDescribing:
            card.setupCfg(SetupCfgBuilder(900)
                              .sizeWord(900)
                              .structVersion(0x10030)
                              .productName("Nova")
                              .bytes());
            card.verDat("# Language ISO Code: ko en\n");
            break;
        case CardKind::Unknown:
            card.file(QStringLiteral("readme.txt"), "not a camera");
            break;
        }
    }

    // Declares the card a memory card (plus a fixed disk that is never
    // offered) and makes it the settings folder.
    void insert(CardBuilder& card, CardKind kind)
    {
        write(card, kind);
        m_volumes->add(m_fixedDisk.path(), true, false);
        m_volumes->add(card.root(), true, true);
        TolmSettingManager::SharedTolmSettingManager()->setSettingDirPath(card.root());
    }

    RecordingOpener m_opener;
    int m_pauses = 0;
    int m_modelInfoUpdates = 0;
    SettingsRouter m_router { m_opener,
        { [this] { ++m_pauses; }, [this] { ++m_modelInfoUpdates; } } };
    QWidget* m_fakeParent = reinterpret_cast<QWidget*>(0x1234);
    std::shared_ptr<FakeVolumeSource> m_volumes = std::make_shared<FakeVolumeSource>();
    ScopedVolumeSource m_scopedVolumes { m_volumes };
    QTemporaryDir m_fixedDisk;
    ScopedAlertRecorder m_alerts;
};

TolmSettingManager& card()
{
    return *TolmSettingManager::SharedTolmSettingManager();
}

} // namespace

// An identified memory card: the button goes straight to the model's editor.
TEST_F(SettingsRouterTest, ButtonOnAnIdentifiedCard)
{
    struct Case {
        CardKind kind;
        int editorResult;
        QString page;
        int modelInfoUpdates;
    };
    const Case cases[] = {
        { CardKind::Kel, 1, QStringLiteral("kel"), 2 },
        { CardKind::Kel, 0, QStringLiteral("kel"), 1 },
        { CardKind::Tolm, 1, QStringLiteral("native 1"), 2 },
        { CardKind::Tolm, 0, QStringLiteral("native 1"), 1 },
        { CardKind::Zenti, 1, QStringLiteral("web"), 1 },
        // The self-describing camera only loads its languages: no record
        // load, no model-info refresh.
        { CardKind::SelfDescribing, 1, QStringLiteral("web"), 0 },
    };
    for (const Case& c : cases) {
        SetUp();
        m_opener = RecordingOpener();
        m_opener.editorResult = c.editorResult;
        m_modelInfoUpdates = 0;
        m_pauses = 0;
        m_volumes = std::make_shared<FakeVolumeSource>();
        Utils::setVolumeSource(m_volumes);
        CardBuilder builder;
        insert(builder, c.kind);
        const QByteArray setupBefore = builder.read(QStringLiteral("setup.cfg"));

        m_router.settingButtonTouched();
        SCOPED_TRACE(c.page.toStdString());
        EXPECT_EQ(m_pauses, 1);
        EXPECT_EQ(m_opener.calls, QStringList { c.page });
        EXPECT_EQ(m_modelInfoUpdates, c.modelInfoUpdates);
        if (c.kind == CardKind::Kel) {
            EXPECT_EQ(m_opener.kelLinesAtOpen.value(1), QStringLiteral("const=60"));
        }
        if (c.page == QLatin1String("web")) {
            EXPECT_EQ(m_opener.webFolder, builder.root());
            EXPECT_EQ(m_opener.webParent, m_fakeParent);
        }
        if (c.kind == CardKind::SelfDescribing) {
            // "ko en" after a blank: 0 "", 1 ko, 2 en.
            EXPECT_EQ(m_opener.webLanguages.value(2), CameraLanguage(2, QStringLiteral("en")));
            EXPECT_EQ(builder.read(QStringLiteral("setup.cfg")), setupBefore);
        }
    }
}

TEST_F(SettingsRouterTest, FolderNotOnAMemoryCardAsksForTheCard)
{
    CardBuilder kel;
    CardBuilder other;
    write(kel, CardKind::Kel);
    write(other, CardKind::Tolm);
    m_volumes->add(kel.root() + QStringLiteral("/"), true, true)
        .add(m_fixedDisk.path(), true, false)
        .add(other.root(), false, true)
        .add(other.root() + QStringLiteral("/sub"), true, true);
    // A folder on the fixed disk.
    card().setSettingDirPath(m_fixedDisk.path());

    m_opener.cardAnswer = std::nullopt; // cancelled
    m_router.settingButtonTouched();
    EXPECT_EQ(m_opener.calls, QStringList { QStringLiteral("card") });
    ASSERT_EQ(m_opener.cardsShown.size(), 2);
    EXPECT_EQ(m_opener.cardsShown[0].name, QFileInfo(kel.root()).fileName());
    EXPECT_EQ(m_opener.cardsShown[1].name, QStringLiteral("sub"));
    // Cancel changes nothing.
    EXPECT_EQ(card().settingDirPath(), m_fixedDisk.path());
    EXPECT_EQ(m_modelInfoUpdates, 0);

    // Chosen: the Kel card is identified and its editor opens.
    m_opener.calls.clear();
    m_opener.cardAnswer = 0;
    m_router.settingButtonTouched();
    EXPECT_EQ(m_opener.calls, (QStringList { "card", "kel" }));
    EXPECT_EQ(card().modelType(), 6);
    EXPECT_EQ(m_modelInfoUpdates, 2);
}

TEST_F(SettingsRouterTest, CardPageRoutesEveryKindThroughTheRecordLoad)
{
    const struct {
        CardKind kind;
        QStringList calls;
    } cases[] = {
        { CardKind::Unknown, { "card", "model" } },
        { CardKind::Tolm, { "card", "native 1" } },
        { CardKind::Zenti, { "card", "web" } },
        // No separate branch for the self-describing camera here.
        { CardKind::SelfDescribing, { "card", "web" } },
    };
    for (const auto& c : cases) {
        m_opener = RecordingOpener();
        m_opener.cardAnswer = 0;
        m_modelInfoUpdates = 0;
        m_volumes = std::make_shared<FakeVolumeSource>();
        Utils::setVolumeSource(m_volumes);
        CardBuilder builder;
        write(builder, c.kind);
        m_volumes->add(builder.root(), true, true);
        card().setSettingDirPath(QString());
        m_router.settingButtonTouched();
        EXPECT_EQ(m_opener.calls, c.calls);
        if (c.kind == CardKind::SelfDescribing) {
            // Loaded (and rewritten in the model's layout) before the window.
            EXPECT_EQ(m_modelInfoUpdates, 1);
            EXPECT_EQ(m_opener.webLanguages.size(), 3);
        }
    }
}

TEST_F(SettingsRouterTest, ModelPageRules)
{
    const struct {
        qint64 chosen;
        QString page;
        qint64 localID;
    } cases[] = {
        { 4, QStringLiteral("native 4"), 3 },
        { 3, QStringLiteral("native 3"), 0 },
        { 0, QStringLiteral("native 0"), -1 },
        { 6, QStringLiteral("kel"), -1 },
        { 20, QStringLiteral("web"), -1 },
        { 28, QStringLiteral("native 28"), -1 },
    };
    for (const auto& c : cases) {
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        m_opener = RecordingOpener();
        m_opener.modelAnswer = c.chosen;
        m_opener.editorResult = 0;
        m_modelInfoUpdates = 0;
        CardBuilder unknown;
        insert(unknown, CardKind::Unknown);
        m_router.settingButtonTouched();
        SCOPED_TRACE(c.page.toStdString());
        EXPECT_EQ(m_opener.calls, (QStringList { QStringLiteral("model"), c.page }));
        EXPECT_EQ(m_opener.modelsShown, TolmSettingManager::modelNameList());
        EXPECT_EQ(card().modelType(), c.chosen);
        if (c.page.startsWith(QLatin1String("native"))) {
            EXPECT_EQ(m_opener.localIdAtOpen, c.localID);
        }
        if (c.page == QLatin1String("kel")) { // the built-in defaults
            EXPECT_EQ(m_opener.kelLinesAtOpen.value(0), QStringLiteral("[capacity]"));
        }
        // No model-info refresh on the way (and the editors were cancelled).
        EXPECT_EQ(m_modelInfoUpdates, 0);
        // The rescan found no camera: the factory values, no card folder.
        EXPECT_TRUE(card().settingDirPath().isEmpty());
    }
}

TEST_F(SettingsRouterTest, CancelledModelPageClearsTheSettingsFolder)
{
    CardBuilder unknown;
    insert(unknown, CardKind::Unknown);
    m_router.settingButtonTouched();
    EXPECT_EQ(m_opener.calls, QStringList { QStringLiteral("model") });
    EXPECT_FALSE(QFileInfo(unknown.root() + "/SETTING/setup.cfg").exists());

    // Reached with a folder set: cancelling forgets it.
    card().setSettingDirPath(unknown.root());
    m_router.showSelectModelWindow();
    EXPECT_TRUE(card().settingDirPath().isEmpty());
    EXPECT_EQ(m_opener.calls.size(), 2);
    // Chosen instead: the model's page opens on the folder.
    card().setSettingDirPath(unknown.root());
    m_opener.modelAnswer = 1;
    m_router.showSelectModelWindow();
    EXPECT_EQ(m_opener.calls.last(), QStringLiteral("native 1"));
    EXPECT_EQ(card().settingDirPath(), unknown.root());
}
