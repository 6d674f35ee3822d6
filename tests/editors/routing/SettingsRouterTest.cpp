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
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TolmSettingManager& card()
{
    return *TolmSettingManager::SharedTolmSettingManager();
}

// Records the pages asked for ("kel <second line>", "native <type> id
// <localID>", "web <number of languages>") and answers as the test says.
struct RecordingOpener final : SettingsPageOpener {
    QStringList calls;
    QList<Card> cardsShown;
    std::optional<int> cardAnswer;
    std::optional<qint64> modelAnswer;
    int editorResult = 1;
    QString webFolder;
    QWidget* webParent = nullptr;

    std::optional<int> showSelectFlashMemoryWindow(const QList<Card>& cards) override
    {
        calls << QStringLiteral("card");
        cardsShown = cards;
        return cardAnswer;
    }
    std::optional<qint64> showSelectModelWindow(const QStringList& modelNames) override
    {
        calls << QStringLiteral("model");
        EXPECT_EQ(modelNames, TolmSettingManager::modelNameList());
        return modelAnswer;
    }
    int showSettingWindow_Kel() override
    {
        calls << "kel " + KelSettingManager::SharedKelSettingManager()->linedSettings().value(1);
        return editorResult;
    }
    int showNativeSettingWindow(qint64 modelType) override
    {
        calls << QStringLiteral("native %1 id %2").arg(modelType).arg(card().localID());
        return editorResult;
    }
    int showWebSettingWindow(
        QWidget* parent, const QString& folder, const CameraLanguageList& languages) override
    {
        calls << QStringLiteral("web %1").arg(languages.size());
        webParent = parent;
        webFolder = folder;
        return editorResult;
    }
};

enum class CardKind { Kel, Tolm, Zenti, SelfDescribing, Unknown };

class SettingsRouterTest : public ::testing::Test {
protected:
    void SetUp() override { reset(); }
    void TearDown() override { reset(); }

    // A fresh card model, opener, counters and volume list.
    void reset()
    {
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
        m_opener = RecordingOpener();
        m_pauses = m_modelInfoUpdates = 0;
        m_volumes = std::make_shared<FakeVolumeSource>();
        Utils::setVolumeSource(m_volumes);
        m_router.setParentWindow(m_fakeParent);
    }
    // The card (an unknown one holds no camera file) as a memory card beside
    // a fixed disk, and as the settings folder.
    void insert(CardBuilder& builder, CardKind kind)
    {
        if (kind == CardKind::Kel)
            builder.blackboxCfg("[capacity]\r\nconst=60\r\n[time]\r\nset=0");
        else if (kind == CardKind::Tolm)
            builder.setupCfg(SetupCfgBuilder(432).productName("tolm").bytes());
        else if (kind == CardKind::Zenti)
            builder.setupCfg(SetupCfgBuilder(700).productName("zenti").bytes());
        else if (kind == CardKind::SelfDescribing)
            builder
                .setupCfg(SetupCfgBuilder(900)
                              .sizeWord(900)
                              .structVersion(0x10030)
                              .productName("Nova")
                              .bytes())
                .verDat("# Language ISO Code: ko en\n"); // 0 "", 1 ko, 2 en
        m_volumes->add(m_fixedDisk.path(), true, false).add(builder.root(), true, true);
        card().setSettingDirPath(builder.root());
    }

    RecordingOpener m_opener;
    int m_pauses = 0;
    int m_modelInfoUpdates = 0;
    SettingsRouter m_router { m_opener,
        { [this] { ++m_pauses; }, [this] { ++m_modelInfoUpdates; } } };
    QWidget* m_fakeParent = reinterpret_cast<QWidget*>(0x1234);
    std::shared_ptr<FakeVolumeSource> m_volumes;
    QTemporaryDir m_fixedDisk;
    ScopedAlertRecorder m_alerts;
};

} // namespace

// An identified memory card: the button goes straight to the model's editor;
// a confirmed editor refreshes the model info once more. The self-describing
// camera only loads its languages (no record load, no refresh), except when
// reached through the card page, which loads every record.
TEST_F(SettingsRouterTest, ButtonOnAnIdentifiedCardOrOneChosenOnTheCardPage)
{
    const struct {
        CardKind kind;
        bool cardPage;
        int editorResult;
        const char* page;
        int modelInfoUpdates;
    } cases[] = { { CardKind::Kel, false, 1, "kel const=60", 2 },
        { CardKind::Tolm, false, 0, "native 1 id -1", 1 },
        { CardKind::Zenti, false, 1, "web 3", 1 },
        { CardKind::SelfDescribing, false, 1, "web 3", 0 },
        { CardKind::Unknown, true, 1, "model", 0 },
        { CardKind::Tolm, true, 1, "native 1 id -1", 2 },
        { CardKind::Kel, true, 1, "kel const=60", 2 },
        { CardKind::SelfDescribing, true, 1, "web 3", 1 } };
    for (const auto& c : cases) {
        reset();
        m_opener.editorResult = c.editorResult;
        m_opener.cardAnswer = 0;
        CardBuilder builder;
        insert(builder, c.kind);
        if (c.cardPage)
            card().setSettingDirPath(QString());
        const QByteArray setupBefore = builder.read(QStringLiteral("setup.cfg"));
        m_router.settingButtonTouched();
        EXPECT_EQ(m_opener.calls,
            (QStringList { c.cardPage ? "card" : "", c.page }).filter(QRegularExpression(".")));
        EXPECT_EQ(std::pair(m_pauses, m_modelInfoUpdates), std::pair(1, c.modelInfoUpdates))
            << c.page;
        EXPECT_EQ(m_opener.webFolder, c.page[0] == 'w' ? builder.root() : QString());
        EXPECT_EQ(m_opener.webParent, c.page[0] == 'w' ? m_fakeParent : nullptr);
        if (c.kind == CardKind::SelfDescribing && !c.cardPage) {
            EXPECT_EQ(builder.read(QStringLiteral("setup.cfg")), setupBefore);
        }
    }
}

TEST_F(SettingsRouterTest, FolderNotOnAMemoryCardAsksForTheCard)
{
    CardBuilder first, network, second;
    m_volumes->add(first.root() + QStringLiteral("/"), true, true)
        .add(m_fixedDisk.path(), true, false)
        .add(network.root(), false, true)
        .add(second.root(), true, true);
    card().setSettingDirPath(m_fixedDisk.path());
    // Cancelled, or an answer outside the list: nothing changes.
    for (const std::optional<int> answer :
        { std::optional<int>(), std::optional(-1), std::optional(2) }) {
        m_opener.cardAnswer = answer;
        m_router.settingButtonTouched();
    }
    EXPECT_EQ(m_opener.calls, (QStringList { "card", "card", "card" }));
    EXPECT_EQ(card().settingDirPath(), m_fixedDisk.path());
    EXPECT_EQ(m_modelInfoUpdates, 0);
    // Only local removable volumes are offered, named by their folder.
    ASSERT_EQ(m_opener.cardsShown.size(), 2);
    EXPECT_EQ(m_opener.cardsShown[0].name, QFileInfo(first.root()).fileName());
    EXPECT_EQ(m_opener.cardsShown[1].path, second.root());
}

// The model page of an unknown card: the chosen model's editor opens over its
// built-in values, nothing is refreshed (the editors are cancelled here), and
// the rescan that found no camera leaves no card folder and writes nothing.
TEST_F(SettingsRouterTest, ModelPageRules)
{
    const QString kelDefault
        = "kel " + KelSettingManager::linesFromText(KelSettingManager::defaultFileText()).value(1);
    const struct {
        std::optional<qint64> chosen;
        QString page; // "": none, and the settings folder is forgotten
    } cases[] = { { 4, "native 4 id 3" }, { 28, "native 28 id -1" }, { 6, kelDefault },
        { 20, "web 0" }, { std::nullopt, "" }, { 29, "" } };
    for (const auto& c : cases) {
        reset();
        m_opener.modelAnswer = c.chosen;
        m_opener.editorResult = 0;
        CardBuilder unknown;
        insert(unknown, CardKind::Unknown);
        m_router.settingButtonTouched();
        EXPECT_EQ(
            m_opener.calls, (QStringList { "model", c.page }).filter(QRegularExpression(".")));
        EXPECT_EQ(card().modelType(), c.page.isEmpty() ? -1 : c.chosen.value_or(-2));
        EXPECT_EQ(m_modelInfoUpdates, 0);
        EXPECT_TRUE(card().settingDirPath().isEmpty());
        EXPECT_FALSE(unknown.exists(QStringLiteral("setup.cfg")));
        // Reached with a folder set: a chosen model's page opens on it, a
        // cancelled page forgets it.
        card().setSettingDirPath(unknown.root());
        m_router.showSelectModelWindow();
        EXPECT_EQ(card().settingDirPath(), c.page.isEmpty() ? QString() : unknown.root())
            << c.page.toStdString();
    }
}
