// The Kel camera's blackbox.cfg as a list of lines, its edits, the clock
// lines, the built-in default file and the time.dat clock request.
#include "CardBuilder.h"
#include "RecordingAlertSink.h"
#include "TestFiles.h"

#include "config/KelSettingManager.h"
#include "config/TimeDatFile.h"
#include "config/TolmSettingManager.h"

#include <QTimeZone>

#include <gtest/gtest.h>

namespace {

class KelSettingTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        TolmSettingManager::ChagneTolmSettingManager(nullptr)->setSettingDirPath(m_card.root());
    }
    void TearDown() override
    {
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
    }

    KelSettingManager& loaded()
    {
        KelSettingManager* kel = KelSettingManager::SharedKelSettingManager();
        kel->loadData();
        return *kel;
    }

    CardBuilder m_card;
    ScopedAlertRecorder m_alerts;
};

const QStringList kSample { QStringLiteral("[capacity]"), QStringLiteral("const=60"),
    QStringLiteral("; a comment the camera keeps"), QStringLiteral("[blackbox]"),
    QStringLiteral("voice_out=1"), QStringLiteral("voice_out=0"), QStringLiteral("unknown_key=7"),
    QStringLiteral("[time]"), QStringLiteral("set=1"), QStringLiteral("year=2015"),
    QStringLiteral("month=12"), QStringLiteral("day=31"), QStringLiteral("hour=23"),
    QStringLiteral("min=59"), QStringLiteral("sec=58"), QString() };

} // namespace

TEST_F(KelSettingTest, LinesLoadAndSaveUnchanged)
{
    struct Case {
        QByteArray file;
        QStringList lines;
    };
    const Case cases[] = {
        { crlfLines(kSample), kSample },
        { "a=1\nb=2\n", { QStringLiteral("a=1\nb=2\n") } },
        { " \t [capacity]\r\nconst = 60 \r\n\t",
            { QStringLiteral("[capacity]"), QStringLiteral("const = 60 "), QString() } },
        { "a=1\r\n\r\nb=2", { QStringLiteral("a=1"), QString(), QStringLiteral("b=2") } },
        { "name=\xFF\xFE", { QString::fromUtf8("name=\xFF\xFE") } },
    };
    for (const Case& c : cases) {
        m_card.blackboxCfg(c.file);
        KelSettingManager& kel = loaded();
        EXPECT_EQ(kel.linedSettings(), c.lines) << c.file.constData();
        ASSERT_TRUE(kel.saveData());
        EXPECT_EQ(
            m_card.read(QStringLiteral("blackbox.cfg")), KelSettingManager::textFromLines(c.lines));
    }
    // A file of bare line feeds goes back byte for byte.
    m_card.blackboxCfg("a=1\nb=2\n");
    loaded().saveData();
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), QByteArray("a=1\nb=2\n"));
}

TEST_F(KelSettingTest, EditsReplaceTheFirstLineWithTheKeyOnly)
{
    m_card.blackboxCfg(crlfLines(kSample));
    KelSettingManager& kel = loaded();
    EXPECT_TRUE(kel.setValueForKey(QStringLiteral("voice_out="), QStringLiteral("0")));
    EXPECT_FALSE(kel.setValueForKey(QStringLiteral("mic_in="), QStringLiteral("1")));
    QStringList expected = kSample;
    expected[4] = QStringLiteral("voice_out=0");
    EXPECT_EQ(kel.linedSettings(), expected);
    EXPECT_EQ(kel.valueForKey(QStringLiteral("unknown_key=")), QStringLiteral("7"));
    EXPECT_TRUE(kel.valueForKey(QStringLiteral("absent=")).isNull());
}

TEST_F(KelSettingTest, SettingTheClockTwiceLeavesOneLinePerKeyAfterSet)
{
    m_card.blackboxCfg(crlfLines(kSample));
    KelSettingManager& kel = loaded();
    const QDateTime first(QDate(2016, 3, 7), QTime(14, 5, 9));
    const QDateTime second(QDate(2017, 11, 20), QTime(8, 0, 0));
    ASSERT_TRUE(kel.setCameraClock(first));
    ASSERT_TRUE(kel.setCameraClock(second));
    const QStringList lines = kel.linedSettings();
    const qsizetype set = lines.indexOf(QStringLiteral("set=1"));
    ASSERT_GE(set, 0);
    EXPECT_EQ(lines.mid(set + 1, 6),
        (QStringList { QStringLiteral("year=2017"), QStringLiteral("month=11"),
            QStringLiteral("day=20"), QStringLiteral("hour=8"), QStringLiteral("min=0"),
            QStringLiteral("sec=0") }));
    EXPECT_EQ(lines.size(), kSample.size());
    EXPECT_EQ(KelSettingManager::linesFromText(m_card.read(QStringLiteral("blackbox.cfg"))), lines);
}

TEST_F(KelSettingTest, ClockLinesGoAfterTheFirstLineWithoutASetLine)
{
    KelSettingManager kel;
    kel.setLinedSettings(
        { QStringLiteral("[time]"), QStringLiteral("year=1"), QStringLiteral("other=1") });
    kel.removeTimeDateDelimiters();
    EXPECT_EQ(
        kel.linedSettings(), (QStringList { QStringLiteral("[time]"), QStringLiteral("other=1") }));
    kel.addTimeDateDelimiters({ QStringLiteral("a"), QStringLiteral("b") });
    EXPECT_EQ(kel.linedSettings(),
        (QStringList { QStringLiteral("[time]"), QStringLiteral("a"), QStringLiteral("b"),
            QStringLiteral("other=1") }));
    KelSettingManager empty;
    empty.addTimeDateDelimiters({ QStringLiteral("a") });
    EXPECT_EQ(empty.linedSettings(), QStringList { QStringLiteral("a") });
}

TEST_F(KelSettingTest, CardWithoutAFileGetsTheDefaultsAndTheFirstSaveCreatesIt)
{
    KelSettingManager& kel = loaded();
    // The canonical sections and keys, in the camera's order.
    const QStringList keys { QStringLiteral("[capacity]"), QStringLiteral("const="),
        QStringLiteral("event="), QStringLiteral("manual="), QStringLiteral("park="),
        QStringLiteral("[blackbox]"), QStringLiteral("front_led="), QStringLiteral("model="),
        QStringLiteral("version="), QStringLiteral("park_mode="), QStringLiteral("power_off_vlt="),
        QStringLiteral("language="), QStringLiteral("local_time="), QStringLiteral("summer_time="),
        QStringLiteral("osd_speed="), QStringLiteral("mic_in="), QStringLiteral("voice_out="),
        QStringLiteral("voice_volume="), QStringLiteral("acc_level="),
        QStringLiteral("motion_level="), QStringLiteral("[time]"), QStringLiteral("set="),
        QStringLiteral("year="), QStringLiteral("month="), QStringLiteral("day="),
        QStringLiteral("hour="), QStringLiteral("min="), QStringLiteral("sec=") };
    const QStringList lines = kel.linedSettings();
    ASSERT_GE(lines.size(), keys.size());
    for (qsizetype i = 0; i < keys.size(); ++i)
        EXPECT_TRUE(lines[i].startsWith(keys[i])) << qPrintable(lines[i]);
    EXPECT_EQ(kel.valueForKey(QStringLiteral("local_time=")), QStringLiteral("-8.000000"));
    EXPECT_FALSE(m_card.exists(QStringLiteral("blackbox.cfg")));
    ASSERT_TRUE(kel.saveData());
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), KelSettingManager::defaultFileText());
}

TEST_F(KelSettingTest, DefaultsOnlyForTheKelModel)
{
    KelSettingManager kel;
    kel.setLinedSettings({ QStringLiteral("x=1") });
    TolmSettingManager::SharedTolmSettingManager()->setModelType(1);
    kel.loadDefaultValue();
    EXPECT_EQ(kel.linedSettings(), QStringList { QStringLiteral("x=1") });
    TolmSettingManager::SharedTolmSettingManager()->setModelType(6);
    kel.loadDefaultValue();
    EXPECT_EQ(kel.linedSettings().first(), QStringLiteral("[capacity]"));
}

TEST_F(KelSettingTest, FailedSavesShowTheAlertAndKeepTheLines)
{
    KelSettingManager& kel = loaded();
    const QStringList before = kel.linedSettings();
    TestFiles::write(m_card.root() + QStringLiteral("/SETTING"), "a file");
    EXPECT_FALSE(kel.saveData());
    TolmSettingManager::SharedTolmSettingManager()->setSettingDirPath(QString());
    EXPECT_FALSE(kel.saveData());
    EXPECT_EQ(m_alerts.sink().memoryCardErrors(), 2);
    EXPECT_EQ(kel.linedSettings(), before);
    EXPECT_EQ(TestFiles::read(m_card.root() + QStringLiteral("/SETTING")), QByteArray("a file"));
}

TEST(KelRatioTest, PartitionTypesLeaveFivePercentFree)
{
    const auto& ratios = KelSettingManager::memoryPartitionRatiosArray();
    ASSERT_EQ(ratios.size(), 3);
    const char* expected[3][4]
        = { { "60", "22", "4", "9" }, { "35", "17", "4", "39" }, { "53", "19", "14", "9" } };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ratios[i].value(QStringLiteral("continuous")), QLatin1String(expected[i][0]));
        EXPECT_EQ(ratios[i].value(QStringLiteral("event")), QLatin1String(expected[i][1]));
        EXPECT_EQ(ratios[i].value(QStringLiteral("park")), QLatin1String(expected[i][2]));
        EXPECT_EQ(ratios[i].value(QStringLiteral("manual")), QLatin1String(expected[i][3]));
    }
    EXPECT_EQ(&ratios, &KelSettingManager::memoryPartitionRatiosArray());
}

TEST(TimeDatTest, ClockRequestFormatAndRemoval)
{
    const std::pair<QDateTime, QByteArray> cases[] = {
        { QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9), QTimeZone(9 * 3600)),
            "2016,03,07,14,05,09,+0900" },
        { QDateTime(QDate(2020, 12, 31), QTime(23, 59, 59), QTimeZone(-(3 * 3600 + 30 * 60))),
            "2020,12,31,23,59,59,-0330" },
        { QDateTime(QDate(2001, 1, 2), QTime(3, 4, 5), QTimeZone::utc()),
            "2001,01,02,03,04,05,+0000" },
    };
    for (const auto& [when, text] : cases)
        EXPECT_EQ(TimeDatFile::format(when), text);

    CardBuilder card;
    ASSERT_TRUE(TimeDatFile::write(card.root(), cases[0].first));
    EXPECT_EQ(card.read(QStringLiteral("time.dat")), cases[0].second);
    card.file(QStringLiteral("time.dat"), "old", QStringLiteral("setting"));
    EXPECT_TRUE(TimeDatFile::remove(card.root()));
    EXPECT_FALSE(card.exists(QStringLiteral("time.dat")));
    EXPECT_FALSE(card.exists(QStringLiteral("time.dat"), QStringLiteral("setting")));
    EXPECT_TRUE(TimeDatFile::remove(card.root()));
}
