#pragma once

#include "CardBuilder.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"

#include "settings/SettingsPages.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <optional>

// Byte offsets of the record fields these tests look at, as the camera lays
// them out (stated here, not borrowed from the code under test).
namespace At {
inline constexpr int product_name = 8;
inline constexpr int front_resolution = 52;
inline constexpr int front_framerate = 56;
inline constexpr int front_quality = 60;
inline constexpr int front_brightness = 64;
inline constexpr int rear_resolution = 76;
inline constexpr int rear_brightness = 88;
inline constexpr int audio_record = 100;
inline constexpr int voice_ment = 108;
inline constexpr int audio_ment_volume = 112;
inline constexpr int enable_driving_guide = 116;
inline constexpr int acceleration_sensor = 120;
inline constexpr int record_cevent_overwrite = 132;
inline constexpr int record_motion_overwrite = 136;
inline constexpr int record_prevent_overwrite = 140;
inline constexpr int record_manual_overwrite = 144;
inline constexpr int parking_acceleration_sensor = 176;
inline constexpr int parking_mode_set = 180;
inline constexpr int parking_motion_sensitivity = 196;
inline constexpr int parking_time_limit = 200;
inline constexpr int battery_12v_R_off = 204;
inline constexpr int battery_24v_R_off = 208;
inline constexpr int partition_type = 212;
inline constexpr int security_led_mode = 216;
inline constexpr int gmt_offset = 372;
inline constexpr int daylight_offset = 376;
inline constexpr int tz_key = 380;
inline constexpr int date_format = 412;
inline constexpr int measurement_unit = 416;
inline constexpr int lcd_brightness = 420;
inline constexpr int lcd_off_timer = 424;
inline constexpr int cur_language = 428;
inline constexpr int wdr = 436;
inline constexpr int ldws_depart_Sensitivity = 452;
inline constexpr int adas_car_high = 468;
inline constexpr int ldws_left_depart_Sensitivity = 472;
inline constexpr int ldws_right_depart_Sensitivity = 476;
inline constexpr int ldws_depart_speed = 480;
inline constexpr int fcws_onoff = 484;
inline constexpr int fcws_frontal_sensitivity = 488;
inline constexpr int fcmd_onoff = 492;
inline constexpr int ldws_onoff = 500;
inline constexpr int parking_night_vision = 508;
inline constexpr int speed_stamp = 512;
} // namespace At

struct FieldValue {
    int offset;
    qint64 value;
};

// The record length the camera of a model type writes.
int recordSizeOf(qint64 modelType, int firmware = 0);

// A plausible record of the model: every setting at a value its page can
// show, product name and language set. `changes` are applied on top.
QByteArray typicalRecord(
    qint64 modelType, int firmware = 0, std::initializer_list<FieldValue> changes = {});

qint32 int32At(const QByteArray& record, int offset);

// One card with a record, the shared model loaded from it as the viewer does
// (which rewrites the record in the model's layout) and the page built and
// filled. The alert recorder answers the page's questions.
class NativePageTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes the record, loads it and opens the page of `modelType`.
    SettingsPageModel& open(qint64 modelType, const QByteArray& record, int firmware = 0);
    // Builds the page over the model as it stands, without loading a record.
    SettingsPageModel& openLoaded(qint64 modelType);

    int value(const QString& control) const;
    bool enabled(const QString& control) const;
    bool shown(const QString& control) const;
    QByteArray savedRecord() const { return m_card.read(QStringLiteral("setup.cfg")); }
    // Presses OK and returns the record written.
    QByteArray pressOk();
    void answer(int code);

    CardBuilder m_card;
    std::shared_ptr<RecordingAlertSink> m_sink;
    std::unique_ptr<SettingsPageModel> m_page;
};
