// Factory values of the oldest models (as properties: they cover the record
// and survive a write and a read), the Dravi UK variant and what a defaults
// run leaves alone.
#include "CardBuilder.h"
#include "RecordingAlertSink.h"

#include "config/TolmSettingManager.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace {

constexpr qint32 kSentinel = 0x5A5A5A5A;
const QString kSentinelText = QStringLiteral("sentinel");

struct Expect {
    SetupField field;
    qint64 number;
    const char* text; // used for text fields; nullptr means absent
};

TolmSettingManager sentinelManager(qint64 modelType, qint64 localID = -1)
{
    TolmSettingManager manager;
    SetupValues values;
    values.ints.fill(kSentinel);
    values.texts.fill(kSentinelText);
    manager.setValues(values);
    manager.setModelType(modelType);
    manager.setLocalID(localID);
    return manager;
}

void expectDefaults(
    qint64 modelType, qint64 localID, int lastTouchedField, std::initializer_list<Expect> expects)
{
    TolmSettingManager manager = sentinelManager(modelType, localID);
    manager.loadDefaultValue();
    for (const Expect& e : expects) {
        const char* name = SetupRecordLayout::info(e.field).name;
        if (SetupRecordLayout::info(e.field).kind == SetupFieldKind::Text) {
            const QString expected = e.text ? QString::fromUtf8(e.text) : QString();
            EXPECT_EQ(manager.textValue(e.field), expected) << "type " << modelType << " " << name;
            EXPECT_EQ(manager.textValue(e.field).isNull(), e.text == nullptr) << name;
        } else {
            EXPECT_EQ(manager.intValue(e.field), qint32(e.number))
                << "type " << modelType << " " << name;
        }
    }
    // Every field a model's routine does not name keeps its value.
    for (int i = 0; i < SetupRecordLayout::kFieldCount; ++i) {
        const bool touched = i <= lastTouchedField;
        const auto field = SetupField(i);
        if (SetupRecordLayout::kFields[size_t(i)].kind == SetupFieldKind::Text)
            EXPECT_EQ(manager.textValue(field) == kSentinelText, !touched)
                << "type " << modelType << " field " << i;
        else
            EXPECT_EQ(manager.intValue(field) == kSentinel, !touched)
                << "type " << modelType << " field " << i;
    }
}

} // namespace

TEST(ModelDefaultsTest, OldModelsDefaultEveryFieldOfTheirRecordAndReadThemBack)
{
    for (const qint64 type : { 0, 1, 2, 5 }) {
        SCOPED_TRACE(testing::Message() << "type " << type);
        TolmSettingManager manager = sentinelManager(type);
        const int count = manager.getSettingVariableCount();
        manager.loadDefaultValue();
        // Every field of the model's record gets a value, none beyond it.
        for (int i = 0; i < SetupRecordLayout::kFieldCount; ++i) {
            const auto field = SetupField(i);
            const bool kept = SetupRecordLayout::kFields[size_t(i)].kind == SetupFieldKind::Text
                ? manager.textValue(field) == kSentinelText
                : manager.intValue(field) == kSentinel;
            EXPECT_EQ(kept, i >= count) << "field " << i;
        }
        // The record announces its own length; the old models name themselves.
        EXPECT_EQ(manager.intValue(SetupField::checksum), manager.getSaveDataSize());
        if (type != 5) {
            EXPECT_EQ(manager.textValue(SetupField::product_name),
                TolmSettingManager::modelNameList().at(type));
        }

        // Written to a card and read back, the same values return.
        CardBuilder card;
        ScopedAlertRecorder alerts;
        manager.setSettingDirPath(card.root());
        ASSERT_TRUE(manager.saveData());
        TolmSettingManager reread;
        reread.setSettingDirPath(card.root());
        reread.setModelType(type);
        reread.loadData();
        for (int i = 0; i < count; ++i) {
            const auto field = SetupField(i);
            if (SetupRecordLayout::kFields[size_t(i)].kind == SetupFieldKind::Text) {
                EXPECT_EQ(reread.textValue(field), manager.textValue(field)) << "field " << i;
            } else {
                EXPECT_EQ(reread.intValue(field), manager.intValue(field)) << "field " << i;
            }
        }
    }
}

TEST(ModelDefaultsTest, DraviAndItsUkVariant)
{
    using F = SetupField;
    for (const qint64 type : { 3, 4 }) {
        expectDefaults(type, 0, 67,
            {
                { F::checksum, 464, nullptr },
                { F::serial_number, 0, "Dravi" },
                { F::setting_path, 0, "SETTING\\Dravi_Setting.exe" },
                { F::tz_key, 0, "Pacific Standard Time" },
                { F::gmt_offset, -480, nullptr },
                { F::daylight_offset, 1, nullptr },
                { F::measurement_unit, 0, nullptr },
                { F::local_id, 0, nullptr },
                { F::ldws_offset_bottom, 218, nullptr },
                { F::lcd_off_timer, 30000, nullptr },
            });
        expectDefaults(type, 3, 67,
            {
                { F::tz_key, 0, "GMT Standard Time" },
                { F::gmt_offset, 0, nullptr },
                { F::daylight_offset, 0, nullptr },
                { F::measurement_unit, 1, nullptr },
                { F::local_id, 3, nullptr },
                { F::product_name, 0, "Dravi" },
            });
    }
}

TEST(ModelDefaultsTest, LaterModelsHaveNoBuiltInValues)
{
    for (const qint64 type : { -1, 6, 9, 16, 26, 27, 28, 40 }) {
        TolmSettingManager manager = sentinelManager(type);
        manager.loadDefaultValue();
        for (int i = 0; i < SetupRecordLayout::kFieldCount; ++i)
            EXPECT_EQ(manager.values().ints[size_t(i)], kSentinel) << "type " << type;
    }
}

TEST(ModelDefaultsTest, SavingRuvaDefaultsWritesTheBaseRecord)
{
    CardBuilder card;
    ScopedAlertRecorder alerts;
    TolmSettingManager manager = sentinelManager(0);
    manager.setSettingDirPath(card.root());
    manager.loadDefaultValue();
    ASSERT_TRUE(manager.saveData());
    const QByteArray record = card.read(QStringLiteral("setup.cfg"));
    ASSERT_EQ(record.size(), 432);
    EXPECT_EQ(qFromLittleEndian<qint32>(record.constData()), 432);
    EXPECT_EQ(record.mid(8, 16), QByteArray("Ruva\0\0\0\0\0\0\0\0\0\0\0\0", 16));
    EXPECT_EQ(record.mid(40, 10), QByteArray(10, '\0'));
    EXPECT_EQ(record.mid(380, 23), QByteArray("Parcific Standard Time\0", 23));
}
