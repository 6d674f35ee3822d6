// Factory values of the five oldest models, the Dravi UK variant, and what a
// defaults run leaves alone.
#include "config/TolmSettingManager.h"

#include <gtest/gtest.h>

namespace {

constexpr qint32 kKept = 0x5A5A5A5A;
const QString kKeptText = QStringLiteral("kept");

TolmSettingManager defaultsOf(qint64 modelType, qint64 localID = -1)
{
    TolmSettingManager manager;
    SetupValues values;
    values.ints.fill(kKept);
    values.texts.fill(kKeptText);
    manager.setValues(values);
    manager.setModelType(modelType);
    manager.setLocalID(localID);
    manager.loadDefaultValue();
    return manager;
}

bool kept(const TolmSettingManager& manager, int index)
{
    const auto field = SetupField(index);
    return SetupRecordLayout::kFields[size_t(index)].kind == SetupFieldKind::Text
        ? manager.textValue(field) == kKeptText
        : manager.intValue(field) == kKept;
}

} // namespace

TEST(ModelDefaultsTest, EachOldModelFillsItsWholeRecordAndTheDraviUkItsRegion)
{
    struct Case {
        qint64 type;
        const char* name; // nullptr: no factory values
        int fields; // the fields the values cover
        qint32 lcdOffTimer;
    };
    const Case cases[] = { { 0, "Ruva", 60, 0 }, { 1, "Tolm", 60, 0 }, { 2, "Pesk", 60, 300000 },
        { 3, "Dravi", 68, 30000 }, { 4, "Dravi", 68, 30000 }, { 5, "Orlo", 79, 30000 },
        { -1, nullptr, 0, kKept }, { 6, nullptr, 0, kKept }, { 7, nullptr, 0, kKept },
        { 26, nullptr, 0, kKept } };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type);
        const TolmSettingManager manager = defaultsOf(c.type);
        for (int i = 0; i < SetupRecordLayout::kFieldCount; ++i)
            EXPECT_EQ(kept(manager, i), i >= c.fields) << "field " << i;
        EXPECT_EQ(manager.lcd_off_timer(), c.lcdOffTimer);
        if (!c.name)
            continue;
        EXPECT_EQ(manager.product_name(), QString::fromLatin1(c.name));
        // The record announces its own length; no version is made up.
        EXPECT_EQ(manager.checksum(), SetupRecordLayout::recordSize(c.fields));
        EXPECT_TRUE(manager.version().isNull());
    }
    // The camera's own spelling of its zone.
    EXPECT_EQ(defaultsOf(0).tz_key(), QStringLiteral("Parcific Standard Time"));
    // The Dravi UK (region 3) runs on Greenwich time and miles: gmt_offset,
    // daylight_offset, measurement_unit and local_id.
    const auto numbers = [](qint64 type, qint64 localID) {
        const TolmSettingManager m = defaultsOf(type, localID);
        return QList<qint32>(
            { m.gmt_offset(), m.daylight_offset(), m.measurement_unit(), m.local_id() });
    };
    EXPECT_EQ(numbers(4, 0), QList<qint32>({ -480, 1, 0, 0 }));
    EXPECT_EQ(numbers(3, 3), QList<qint32>({ 0, 0, 1, 3 }));
}
