// The native page on the demo card (a Tolm camera), the way the viewer opens
// it: identify the card, load the record, fill the page, move a slider and a
// radio row, OK. `tavro config show` must then differ in exactly those two
// fields, and the card's clock request must follow the clock group.
#include "TestFiles.h"

#include "config/TolmSettingManager.h"
#include "settings/SettingsPages.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QJsonObject configFields(const QString& card)
{
    const TestFiles::CliResult run
        = TestFiles::runCli({ QStringLiteral("config"), QStringLiteral("show"), card });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    return QJsonDocument::fromJson(run.out).object().value(QStringLiteral("fields")).toObject();
}

} // namespace

TEST(NativeDemoCard, SliderAndRadioRowChangeExactlyTheirFields)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString card = dir.filePath(QStringLiteral("card"));
    QProcess maker;
    maker.start(QStringLiteral(TAVRO_MAKE_DEMO_CARD_PATH),
        { QStringLiteral("--out"), card, QStringLiteral("--length"), QStringLiteral("3"),
            QStringLiteral("--clips"), QStringLiteral("2"), QStringLiteral("--front-size"),
            QStringLiteral("192x108"), QStringLiteral("--rear-size"), QStringLiteral("96x54"),
            QStringLiteral("--fps"), QStringLiteral("10") });
    ASSERT_TRUE(maker.waitForFinished(240000));
    ASSERT_EQ(maker.exitCode(), 0) << maker.readAllStandardError().toStdString();

    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    TolmSettingManager* model = TolmSettingManager::SharedTolmSettingManager();
    model->setSettingDirPath(card);
    model->identifySettingDir();
    model->loadData();
    const QJsonObject before = configFields(card);
    ASSERT_FALSE(before.isEmpty());

    const std::unique_ptr<SettingsPageModel> page = createSettingsPageModel(model->modelType());
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->family(), QStringLiteral("Tolm"));
    page->applySettingData();
    const int shock = page->control(QStringLiteral("alwaysShockSensitivitySlider"))->value;
    const int newShock = shock == 8 ? 9 : 8;
    ASSERT_EQ(page->userChange(QStringLiteral("alwaysShockSensitivitySlider"), newShock),
        SettingsPageModel::Change::Applied);
    const int led = page->control(QStringLiteral("etcSecurityLEDRadioGroup"))->value;
    ASSERT_EQ(page->userChange(QStringLiteral("etcSecurityLEDRadioGroup"), led == 0 ? 1 : 0),
        SettingsPageModel::Change::Applied);
    page->setClock({ true, QDateTime::currentDateTime() });
    ASSERT_TRUE(page->pressOk());

    const QJsonObject after = configFields(card);
    QStringList changed;
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (after.value(it.key()) != it.value())
            changed.append(it.key());
    }
    EXPECT_EQ(changed,
        (QStringList {
            QStringLiteral("acceleration_sensor"), QStringLiteral("security_led_mode") }));
    EXPECT_EQ(after.value(QStringLiteral("acceleration_sensor")).toInt(), newShock);
    EXPECT_TRUE(QFile::exists(card + QStringLiteral("/SETTING/time.dat")));

    TolmSettingManager::ChagneTolmSettingManager(nullptr);
}
