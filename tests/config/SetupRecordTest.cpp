// The binary settings record: the length each camera writes, where its
// fields lie, and the byte-level rules of reading and writing it.
#include "CardBuilder.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"

#include "config/SetupRecordCodec.h"
#include "config/TolmSettingManager.h"

#include <gtest/gtest.h>

// (Which editor each model type opens is the native page's and the routing's test.)
TEST(SetupRecordLayoutTest, EachModelRewritesTheRecordAtItsLength)
{
    // The length of setup.cfg each camera writes, by model type from -1 to 28
    // (Dravi and Dravi UK, types 3 and 4, below firmware 17).
    const int kLength[] = { 432, 432, 432, 432, 464, 464, 508, 432, 516, 516, 516, 516, 516, 516,
        564, 516, 516, 560, 579, 516, 564, 564, 576, 576, 582, 593, 593, 596, 432, 432 };
    ScopedAlertRecorder alerts;
    const auto rewritten = [](qint64 type, qint32 firmware) {
        CardBuilder card;
        card.setupCfg("\x10");
        TolmSettingManager manager;
        manager.setSettingDirPath(card.root());
        manager.setModelType(type);
        manager.setFirmwareVersionInt(firmware);
        manager.loadData();
        return card.read(QStringLiteral("setup.cfg")).size();
    };
    for (qint64 type = -1; type <= 28; ++type)
        EXPECT_EQ(rewritten(type, 16), kLength[type + 1]) << "type " << type;
    // The Dravi grew ten fields with firmware 17.
    EXPECT_EQ(rewritten(3, 17), 504);
    EXPECT_EQ(rewritten(4, 99), 504);
    EXPECT_EQ(rewritten(5, 17), 508);
}

TEST(SetupRecordCodecTest, EveryLengthSurvivesAndEachWidthReadsAndWritesOnlyItsBytes)
{
    for (const int count : { 60, 68, 78, 79, 81, 92, 93, 96, 99, 102, 113, 116 }) {
        const QByteArray file
            = SetupCfgBuilder::letterPattern(SetupRecordLayout::recordSize(count)).bytes();
        SetupValues values;
        EXPECT_EQ(SetupRecordCodec::decode(file, count, values), count);
        EXPECT_EQ(SetupRecordCodec::encode(values, count), file) << count << " fields";
    }
    EXPECT_EQ(SetupRecordCodec::encode(SetupValues(), 200).size(), 596);
    EXPECT_EQ(SetupRecordCodec::encode(SetupValues(), -1).size(), 0);
    // The camera's width list carries one unused entry after the last field.
    EXPECT_EQ(TolmSettingManager::settingByteSizeList().mid(113), QList<qint32>({ 1, 1, 1, 1 }));
    SetupValues values;
    values.ints[96] = 0x12345600; // iot_onoff, one byte, held before the load
    SetupCfgBuilder file(596);
    file.int32(52, -5).uint16(50, 0xFFFF).byte(576, 0x7F);
    SetupRecordCodec::decode(file.bytes(), 116, values);
    EXPECT_EQ(values.ints[6], -5);
    EXPECT_EQ(values.ints[5], 65535); // unsigned
    EXPECT_EQ(values.ints[96], 0x1234567F); // the low byte only

    values.ints[96] = 260;
    values.ints[5] = 0x12345;
    values.texts[2] = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ"); // into a 16-byte field
    values.texts[3] = QStringLiteral("SN1");
    const QByteArray record = SetupRecordCodec::encode(values, 116);
    EXPECT_EQ(record[576], 4);
    EXPECT_EQ(record.mid(50, 2), QByteArray("\x45\x23", 2));
    EXPECT_EQ(record.mid(8, 32), QByteArray("ABCDEFGHIJKLMNOPSN1").leftJustified(32, '\0'));
    // Text stops at the first zero byte or fills the field, and is UTF-8.
    const std::pair<QByteArray, QString> texts[]
        = { { "ExactlySixteen16", "ExactlySixteen16" }, { QByteArray("ab\0cd", 5), "ab" },
              { "\xED\x95\x9C\xFF", QString::fromUtf8("\xED\x95\x9C\xFF") } };
    for (const auto& [field, text] : texts) {
        SetupRecordCodec::decode(SetupCfgBuilder().productName(field).bytes(), 60, values);
        EXPECT_EQ(values.texts[2], text) << field.toHex().constData();
    }

    // Short data keeps the fields it does not reach.
    values.ints[20] = 77;
    // Ends two bytes into front_resolution (offset 52): its missing bytes are zero.
    const QByteArray shortFile
        = SetupCfgBuilder(56).int32(0, 54).int32(52, 0x0102).resize(54).bytes();
    EXPECT_EQ(SetupRecordCodec::decode(shortFile, 60, values), 7);
    EXPECT_EQ(values.ints[0], 54);
    EXPECT_EQ(values.ints[6], 0x0102);
    EXPECT_EQ(values.ints[20], 77);
    EXPECT_EQ(SetupRecordCodec::decode(QByteArray(), 116, values), 0);
    // default.cfg is read for as long as it has bytes, whatever the model.
    const QByteArray defaults = SetupCfgBuilder(600).int32(504, 11).byte(595, 3).bytes();
    EXPECT_EQ(SetupRecordCodec::decodeDefaultCfg(defaults, values), 116);
    EXPECT_EQ(values.ints[78], 11);
    EXPECT_EQ(values.ints[115], 3);
    EXPECT_EQ(SetupRecordCodec::decodeDefaultCfg(QByteArray(433, '\0'), values), 61);
}
