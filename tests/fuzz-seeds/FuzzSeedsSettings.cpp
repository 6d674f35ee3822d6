#include "FuzzSeeds.h"

#include "CardBuilder.h"
#include "SetupCfgBuilder.h"

#include "config/KelSettingManager.h"
#include "config/TimeDatFile.h"
#include "config/TolmSettingManager.h"
#include "settings/SettingsPages.h"
#include "settings/kel/KelSettingViewController.h"

#include <QDir>
#include <QFile>
#include <QTimeZone>

namespace {

const QDateTime kClock(QDate(2016, 3, 7), QTime(14, 5, 9), QTimeZone(9 * 3600));

QByteArray kelDefault()
{
    return KelSettingManager::defaultFileText();
}

QList<FuzzSeed> kelFileSeeds(const QString& target)
{
    KelSettingManager withClock;
    withClock.setLinedSettings(KelSettingManager::linesFromText(kelDefault()));
    withClock.setValueForKey(QStringLiteral("park_mode="), QStringLiteral("1"));
    withClock.addTimeDateDelimiters(KelSettingManager::clockLines(kClock));
    const QByteArray few = "model=Wenna\nvoice_out=2\nmemory_partition=9\npark_mode=\n";
    return { { target, QStringLiteral("default.cfg"), kelDefault() },
        { target, QStringLiteral("park-mode-and-clock.cfg"), crlfLines(withClock.linedSettings()) },
        { target, QStringLiteral("few-lf-lines.cfg"), few } };
}

// A record as the camera writes it, with a leading byte that the fuzz
// target reads as the field count + 8.
QByteArray countedRecord(int count, const QByteArray& record)
{
    return QByteArray(1, char(count + 8)) + record;
}

QByteArray tolmRecord(int size)
{
    SetupCfgBuilder b(size);
    b.sizeWord(size).structVersion(0x10013).productName("Tolm").version("1.00.17");
    b.int32(52, 3).int32(56, 5).int32(64, 1).int32(212, 2).int32(372, -480).int32(428, 2);
    b.text(380, 32, "Pacific Standard Time");
    return b.bytes();
}

QList<FuzzSeed> recordSeeds()
{
    const QString t = QStringLiteral("fuzz_config_record");
    return { { t, QStringLiteral("tolm-60.bin"), countedRecord(60, tolmRecord(432)) },
        { t, QStringLiteral("letters-81.bin"),
            countedRecord(81, SetupCfgBuilder::letterPattern(516).bytes()) },
        { t, QStringLiteral("short-68.bin"), countedRecord(68, tolmRecord(200)) } };
}

QList<FuzzSeed> timeDatSeeds()
{
    const QString t = QStringLiteral("fuzz_config_timedat");
    const QDateTime west(QDate(2024, 2, 29), QTime(23, 59, 0), QTimeZone(-(3 * 3600 + 1800)));
    return { { t, QStringLiteral("seoul.dat"), TimeDatFile::format(kClock) },
        { t, QStringLiteral("newfoundland-crlf.dat"), TimeDatFile::format(west) + "\r\n" } };
}

QList<FuzzSeed> verDatSeeds()
{
    const QString t = QStringLiteral("fuzz_config_verdat");
    return { { t, QStringLiteral("three.dat"), "version 1.2\n# Language ISO Code: en fr es\n" },
        { t, QStringLiteral("two-lines.dat"),
            "#\tLanguage ISO Code:ko en  \r\n# Language ISO Code:zh-Hant-HK ja\r\n" },
        { t, QStringLiteral("hex.txt"), "0A1bff7e" } };
}

QList<FuzzSeed> webSeeds()
{
    const QString t = QStringLiteral("fuzz_editors_web");
    return { { t, QStringLiteral("notification.txt"), "Title\tMessage\t3\tv\t2" },
        { t, QStringLiteral("record-hex.txt"), tolmRecord(432).toHex().toUpper() },
        { t, QStringLiteral("time.dat"), "2016,03,07,14,05,00,+0900" },
        { t, QStringLiteral("quotes.txt"), "it's \"en\"\\\r\nfr" } };
}

QList<FuzzSeed> mountSeeds()
{
    const QString t = QStringLiteral("fuzz_settings_mountinfo");
    return { { t, QStringLiteral("card.txt"),
                 "22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw,errors=remount-ro\n"
                 "40 22 8:17 / /media/user/DASH\\040CAM rw,nosuid shared:30 - vfat /dev/sdb1 "
                 "rw,uid=1000\n" },
        { t, QStringLiteral("fuse.txt"),
            "22 1 8:2 / / rw - ext4 /dev/sda2 rw\n"
            "41 22 0:45 / /tmp/a\\134b\\011c rw,nosuid - fuse.fusefat fusefat rw\n"
            "42 41 0:46 / /tmp/a\\134b\\011c/x rw - tmpfs tmpfs rw\n" } };
}

// Controls a user can move, as NAME=VALUE words in the middle of their range.
QStringList changeWords(const SettingsPageModel& page, int count)
{
    QStringList words;
    for (const SettingControl& c : page.controls()) {
        if (words.size() < count && c.enabled && c.visible && c.maximum > c.minimum)
            words.append(c.name + u'=' + QString::number((c.minimum + c.maximum + 1) / 2));
    }
    return words;
}

QStringList kelChanges()
{
    KelSettingManager kel;
    kel.setLinedSettings(KelSettingManager::linesFromText(kelDefault()));
    KelSettingViewController page(6, &kel, [] { return kClock; });
    page.applySettingData();
    return changeWords(page, 3);
}

QStringList nativeChanges(qint64 modelType)
{
    TolmSettingManager* model = TolmSettingManager::ChagneTolmSettingManager(nullptr);
    model->setSettingDirPath(QDir::temp().filePath(QStringLiteral("no-card-here")));
    model->setModelType(modelType);
    model->loadDefaultValue();
    QStringList words;
    if (auto page = createNativeSettingsPageModel(modelType)) {
        page->applySettingData();
        words = changeWords(*page, 3);
    }
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    return words;
}

QByteArray argumentBytes(const QStringList& args)
{
    return args.join(QChar(u'\0')).toUtf8();
}

QList<FuzzSeed> valueSeeds()
{
    const QString t = QStringLiteral("fuzz_settings_values");
    const QString card = QStringLiteral("/card");
    const QStringList kel = kelChanges();
    const QStringList tolm = nativeChanges(1);
    const QStringList orlo = nativeChanges(5);
    return { { t, QStringLiteral("kel-set.args"),
                 argumentBytes(QStringList { "set", card } << kel << "--answer"
                                                           << "yes") },
        { t, QStringLiteral("kel-reset-clock.args"),
            argumentBytes(
                { "set", card, kel.value(0), "--reset", "--clock", "2024-03-15T08:15:02" }) },
        { t, QStringLiteral("tolm-set.args"),
            argumentBytes(QStringList { "set", card, "--model-type", "1" } << tolm << "--answer"
                                                                           << "no") },
        { t, QStringLiteral("orlo-firmware.args"),
            argumentBytes(QStringList { "set", card, "--model-type", "0x5", "--firmware", "17",
                              "--clock", "off" }
                << orlo) },
        { t, QStringLiteral("show-overrides.args"),
            argumentBytes({ "show", card, "--local-id", "-2", "--model-type", "3" }) } };
}

} // namespace

namespace FuzzSeeds {

QList<FuzzSeed> settingsSeeds()
{
    QList<FuzzSeed> seeds;
    seeds << kelFileSeeds(QStringLiteral("fuzz_config_blackbox"))
          << kelFileSeeds(QStringLiteral("fuzz_settings_kel_page")) << recordSeeds()
          << timeDatSeeds() << verDatSeeds() << webSeeds() << mountSeeds() << valueSeeds();
    return seeds;
}

QList<FuzzSeed> allSeeds(const QString& scratchDir)
{
    return telemetrySeeds(scratchDir) << settingsSeeds();
}

int writeSeeds(const QList<FuzzSeed>& seeds, const QString& folder)
{
    QStringList cleared;
    for (const FuzzSeed& seed : seeds) {
        QDir dir(QDir(folder).filePath(seed.target));
        if (!cleared.contains(seed.target)) {
            dir.removeRecursively();
            cleared.append(seed.target);
        }
        QFile file(dir.filePath(seed.name));
        if (!dir.mkpath(QStringLiteral(".")) || !file.open(QIODevice::WriteOnly)
            || file.write(seed.bytes) != seed.bytes.size())
            return -1;
    }
    return int(seeds.size());
}

} // namespace FuzzSeeds
