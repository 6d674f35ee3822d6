// The binary settings record: its layout, field counts per model, and the
// byte-level rules of decoding and encoding, on records written byte by byte.
#include "SetupCfgBuilder.h"

#include "config/ModelCatalogue.h"
#include "config/SetupRecordCodec.h"
#include "config/TolmSettingManager.h"

#include <QMap>
#include <QRandomGenerator>

#include <tuple>

#include <gtest/gtest.h>

TEST(SetupRecordLayoutTest, EveryModelsRecordIsTheSumOfItsFieldWidths)
{
    // Properties of every model (and firmware), not the table itself: the
    // record holds exactly the widths of its fields, a record with more fields
    // is longer, and a record of that length survives a decode and encode.
    QMap<int, int> lengthOfCount;
    for (qint64 type = -1; type <= 29; ++type) {
        for (const qint32 firmware : { 0, 16, 17, 99 }) {
            TolmSettingManager manager;
            manager.setModelType(type);
            manager.setFirmwareVersionInt(firmware);
            const int count = manager.getSettingVariableCount();
            const int length = manager.getSaveDataSize();
            SCOPED_TRACE(testing::Message() << "type " << type << " fw " << firmware);
            ASSERT_GE(count, 60);
            ASSERT_LE(count, SetupRecordLayout::kFieldCount);
            EXPECT_EQ(length, SetupRecordLayout::recordSize(count));
            EXPECT_EQ(length,
                SetupRecordLayout::offsetOfIndex(count - 1)
                    + SetupRecordLayout::kFields[std::size_t(count - 1)].width);
            lengthOfCount.insert(count, length);
            SetupValues values;
            SetupRecordCodec::decode(QByteArray(length, '\x11'), count, values);
            EXPECT_EQ(SetupRecordCodec::encode(values, count).size(), length);
        }
    }
    int previous = 0;
    for (const int length : std::as_const(lengthOfCount)) {
        EXPECT_GT(length, previous);
        previous = length;
    }
    // Worked examples: an unknown card reads the oldest record; the Dravi
    // (type 3) grew ten fields with firmware 17.
    const std::tuple<qint64, qint32, int, int> examples[]
        = { { -1, 0, 60, 432 }, { 3, 16, 68, 464 }, { 3, 17, 78, 504 } };
    for (const auto& [type, firmware, count, length] : examples) {
        TolmSettingManager manager;
        manager.setModelType(type);
        manager.setFirmwareVersionInt(firmware);
        EXPECT_EQ(manager.getSettingVariableCount(), count);
        EXPECT_EQ(manager.getSaveDataSize(), length);
    }
}

TEST(SetupRecordLayoutTest, OffsetsOfFieldsInTheRecord)
{
    // Each field starts where the one before it ends, the widths being the
    // camera's width list; a few offsets as the camera's records show them.
    const QList<qint32> byteSizes = TolmSettingManager::settingByteSizeList();
    for (int i = 1; i < SetupRecordLayout::kFieldCount; ++i)
        EXPECT_EQ(TolmSettingManager::offsetFromValue(SetupField(i)),
            TolmSettingManager::offsetFromValue(SetupField(i - 1)) + byteSizes.at(i - 1))
            << SetupRecordLayout::kFields[size_t(i)].name;
    const std::pair<SetupField, int> cases[]
        = { { SetupField::checksum, 0 }, { SetupField::product_name, 8 },
              { SetupField::front_resolution, 52 }, { SetupField::tz_key, 380 } };
    for (const auto& [field, offset] : cases)
        EXPECT_EQ(TolmSettingManager::offsetFromValue(field), offset)
            << SetupRecordLayout::info(field).name;
    EXPECT_EQ(SetupRecordLayout::offsetOfIndex(500), 0);
    const QList<qint32> widths = TolmSettingManager::settingByteSizeList();
    ASSERT_EQ(widths.size(), 117);
    EXPECT_EQ(widths.last(), 1);
    EXPECT_EQ(TolmSettingManager::settingVariableList().size(), 116);
    EXPECT_EQ(TolmSettingManager::settingVariableList()[54], SetupField::tz_key);
    EXPECT_EQ(SetupRecordLayout::indexOfName(QStringLiteral("front_constrast")), 10);
    EXPECT_EQ(SetupRecordLayout::indexOfName(QStringLiteral("Front_constrast")), -1);
}

TEST(SetupRecordLayoutTest, GeneratedAccessorsReachTheirOwnField)
{
    // Each setter writes exactly its field's bytes in the record.
    TolmSettingManager manager;
    manager.setModelType(26);
    manager.setTz_key(QStringLiteral("Korea Standard Time"));
    manager.setFront_constrast(0x01020304);
    manager.setBattery_12v_R_off(7);
    manager.setAvn_onoff(9);
    manager.setReserved(0xBEEF);
    const QByteArray record = SetupRecordCodec::encode(manager.values(), 116);
    EXPECT_EQ(record.mid(380, 20), QByteArray("Korea Standard Time\0", 20));
    EXPECT_EQ(record.mid(68, 4), QByteArray("\x04\x03\x02\x01", 4));
    EXPECT_EQ(record[204], 7);
    EXPECT_EQ(record[595], 9);
    EXPECT_EQ(record.mid(50, 2), QByteArray("\xEF\xBE", 2));
    EXPECT_EQ(manager.front_constrast(), 0x01020304);
    EXPECT_EQ(manager.tz_key(), QStringLiteral("Korea Standard Time"));
}

TEST(SetupRecordCodecTest, EveryRecordLengthSurvivesADecodeAndEncode)
{
    for (const int count : { 60, 68, 78, 79, 81, 92, 93, 96, 99, 102, 113, 116 }) {
        const QByteArray file
            = SetupCfgBuilder::letterPattern(SetupRecordLayout::recordSize(count)).bytes();
        SetupValues values;
        EXPECT_EQ(SetupRecordCodec::decode(file, count, values), count);
        EXPECT_EQ(SetupRecordCodec::encode(values, count), file) << count << " fields";
    }
}

TEST(SetupRecordCodecTest, IntegerWidthsDecodeAsTheCameraWritesThem)
{
    const QByteArray file = SetupCfgBuilder(596)
                                .int32(52, -5)
                                .uint16(50, 0xFFFF)
                                .byte(576, 0x7F)
                                .byte(595, 0xFF)
                                .bytes();
    SetupValues values;
    values.ints[96] = 0x12345600; // iot_onoff held before the load
    SetupRecordCodec::decode(file, 116, values);
    EXPECT_EQ(values.ints[6], -5);
    EXPECT_EQ(values.ints[5], 65535); // unsigned, zero-extended
    EXPECT_EQ(values.ints[96], 0x1234567F); // one byte replaces the low byte only
    EXPECT_EQ(values.ints[115], 0xFF);
}

TEST(SetupRecordCodecTest, EncodingKeepsOnlyTheBytesAFieldHolds)
{
    SetupValues values;
    values.ints[96] = 260; // one byte wide: writes 4
    values.ints[5] = 0x12345; // two bytes wide: writes 0x2345
    values.texts[2] = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ"); // 26 bytes into a 16-byte field
    values.texts[3] = QStringLiteral("SN1");
    const QByteArray record = SetupRecordCodec::encode(values, 116);
    ASSERT_EQ(record.size(), 596);
    EXPECT_EQ(record[576], 4);
    EXPECT_EQ(record.mid(50, 2), QByteArray("\x45\x23", 2));
    EXPECT_EQ(record.mid(8, 16), QByteArray("ABCDEFGHIJKLMNOP"));
    EXPECT_EQ(record.mid(24, 16), QByteArray("SN1\0\0\0\0\0\0\0\0\0\0\0\0\0", 16));
}

TEST(SetupRecordCodecTest, TextFieldsStopAtZeroOrFillTheField)
{
    struct Case {
        QByteArray field;
        QString text;
    };
    const Case cases[] = {
        { QByteArray("Tolm"), QStringLiteral("Tolm") },
        { QByteArray("ExactlySixteen16"), QStringLiteral("ExactlySixteen16") },
        { QByteArray("ab\0cd", 5), QStringLiteral("ab") },
        { QByteArray(), QString() },
        { QByteArray("\xED\x95\x9C\xEA\xB8\x80"), QStringLiteral("한글") },
        { QByteArray("\xFF\xFEok"), QString::fromUtf8("\xFF\xFEok") },
    };
    for (const Case& c : cases) {
        SetupValues values;
        SetupRecordCodec::decode(SetupCfgBuilder().productName(c.field).bytes(), 60, values);
        EXPECT_EQ(values.texts[2], c.text.isNull() ? QString("") : c.text)
            << c.field.toHex().constData();
    }
}

TEST(SetupRecordCodecTest, ShortFilesKeepTheFieldsTheyDoNotReach)
{
    SetupValues values;
    values.ints[20] = 77;
    values.texts[54] = QStringLiteral("kept");
    // Ends two bytes into front_resolution (offset 52).
    const QByteArray file = SetupCfgBuilder(56).int32(0, 54).int32(52, 0x0102).resize(54).bytes();
    EXPECT_EQ(SetupRecordCodec::decode(file, 60, values), 7);
    EXPECT_EQ(values.ints[0], 54);
    EXPECT_EQ(values.ints[6], 0x0102); // missing bytes read as zero
    EXPECT_EQ(values.ints[20], 77);
    EXPECT_EQ(values.texts[54], QStringLiteral("kept"));

    SetupValues empty;
    EXPECT_EQ(SetupRecordCodec::decode(QByteArray(), 116, empty), 0);
}

TEST(SetupRecordCodecTest, DefaultFileIsBoundedByItsLengthNotTheModel)
{
    const QByteArray file = SetupCfgBuilder(600).int32(504, 11).byte(595, 3).bytes();
    SetupValues values;
    EXPECT_EQ(SetupRecordCodec::decodeDefaultCfg(file, values), 116);
    EXPECT_EQ(values.ints[78], 11);
    EXPECT_EQ(values.ints[115], 3);
}

TEST(SetupRecordCodecTest, RandomBytesDecodeToSomethingAndEncodeToTheRecordLength)
{
    QRandomGenerator random(20160307);
    for (int round = 0; round < 300; ++round) {
        QByteArray file(int(random.bounded(700)), '\0');
        for (char& b : file)
            b = char(random.bounded(256));
        const int count = int(random.bounded(-5, 130));
        SetupValues values;
        const int decoded = SetupRecordCodec::decode(file, count, values);
        EXPECT_LE(decoded, std::max(0, std::min(count, 116)));
        EXPECT_EQ(SetupRecordCodec::encode(values, count).size(),
            SetupRecordLayout::recordSize(std::clamp(count, 0, 116)));
    }
}
