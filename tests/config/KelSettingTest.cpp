// The Kel camera's blackbox.cfg as a list of lines, its clock lines, the
// built-in default file and the time.dat clock request.
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

const QStringList kSample { "[capacity]", "const=60", "; kept", "voice_out=1", "voice_out=0", "" };

} // namespace

TEST_F(KelSettingTest, DefaultsUntilASaveThenLinesLoadAndSaveUnchanged)
{
    const auto shown = TestFiles::runCli({ "kel", "show", m_card.root() });
    EXPECT_TRUE(shown.out.startsWith("{\"lines\":[\"[capacity]\",\"const=60\","))
        << shown.out.constData();
    EXPECT_FALSE(m_card.exists(QStringLiteral("blackbox.cfg")));
    KelSettingManager& kel = loaded();
    EXPECT_EQ(kel.valueForKey(QStringLiteral("local_time=")), QStringLiteral("-8.000000"));
    ASSERT_TRUE(kel.saveData());
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), KelSettingManager::defaultFileText());
    // Clock lines go after the set line, or after the first line without one.
    kel.setLinedSettings({ "[time]", "year=1", "other=1" });
    kel.removeTimeDateDelimiters();
    kel.addTimeDateDelimiters({ "a", "b" });
    EXPECT_EQ(kel.linedSettings(), QStringList({ "[time]", "a", "b", "other=1" }));
    // A key on the first line is set like any other; a key the file lacks is not added.
    kel.setLinedSettings({ "voice_out=1", "const=60" });
    EXPECT_TRUE(kel.setValueForKey(QStringLiteral("voice_out="), QStringLiteral("0")));
    EXPECT_FALSE(kel.setValueForKey(QStringLiteral("event="), QStringLiteral("20")));
    EXPECT_EQ(kel.linedSettings(), QStringList({ "voice_out=0", "const=60" }));

    // Lines load and save unchanged.
    const std::pair<QByteArray, QStringList> cases[] = {
        { crlfLines(kSample), kSample },
        // Only CRLF ends a line; blanks and tabs at both ends of the file go.
        { "a=1\nb=2\n", { "a=1\nb=2\n" } },
        { " \t [capacity]\r\nconst = 60 \r\n\t", { "[capacity]", "const = 60 ", "" } },
        { "a=1\r\n\r\nb=2", { "a=1", "", "b=2" } },
        { "name=\xFF\xFE", { QString::fromUtf8("name=\xFF\xFE") } },
    };
    for (const auto& [file, lines] : cases) {
        m_card.blackboxCfg(file);
        EXPECT_EQ(loaded().linedSettings(), lines) << file.constData();
        ASSERT_TRUE(kel.saveData());
        EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), crlfLines(lines));
    }
}

TEST(TimeDatTest, ClockRequestsWrittenReadAndWithdrawn)
{
    const std::pair<QDateTime, QByteArray> requests[] = {
        { QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9), QTimeZone(9 * 3600)),
            "2016,03,07,14,05,09,+0900" },
        { QDateTime(QDate(2020, 12, 31), QTime(23, 59, 59), QTimeZone(-(9 * 3600 + 59 * 60))),
            "2020,12,31,23,59,59,-0959" },
        { QDateTime(QDate(2001, 1, 2), QTime(3, 4, 5), QTimeZone(14 * 3600)),
            "2001,01,02,03,04,05,+1400" },
    };
    for (const auto& [when, text] : requests) {
        EXPECT_EQ(TimeDatFile::format(when), text);
        const std::optional<QDateTime> read = TimeDatFile::parse(text + "\r\n");
        EXPECT_EQ(read.value_or(QDateTime()), when) << text.constData();
        EXPECT_EQ(read.value_or(QDateTime()).offsetFromUtc(), when.offsetFromUtc());
    }
    // A request is one short line: 64 bytes with its trailing blanks at most.
    EXPECT_TRUE(TimeDatFile::parse(requests[0].second.leftJustified(64, ' ')).has_value());
    const QByteArray garbled[]
        = { "2016,02,30,14,05,09,+0900", "2016,03,07,24,05,09,+0900", "2016,03,07,14,05,09",
              "2016,03,07,14,05,09,+0960", "2016,03,07,14,05,09,+1500", "2016,03,07,14,05,09,0900",
              "\xff\xfe"
              "2016,03,07,14,05,09,+0900",
              "2016,03,07,14,05,09,+0900 and more", "", requests[0].second.leftJustified(65, ' ') };
    for (const QByteArray& text : garbled)
        EXPECT_FALSE(TimeDatFile::parse(text).has_value()) << text.constData();

    // Written under SETTING, read back, and withdrawn from both folders.
    CardBuilder card;
    EXPECT_FALSE(TimeDatFile::write(QString(), requests[1].first));
    ASSERT_TRUE(TimeDatFile::write(card.root(), requests[1].first));
    EXPECT_EQ(card.read(QStringLiteral("time.dat")), requests[1].second);
    EXPECT_EQ(TimeDatFile::read(card.root()).value_or(QDateTime()), requests[1].first);
    card.file(QStringLiteral("time.dat"), "old", QStringLiteral("setting"));
    EXPECT_TRUE(TimeDatFile::remove(card.root()));
    EXPECT_FALSE(card.exists(QStringLiteral("time.dat")));
    EXPECT_FALSE(card.exists(QStringLiteral("time.dat"), QStringLiteral("setting")));
    EXPECT_TRUE(TimeDatFile::remove(card.root()));
}
