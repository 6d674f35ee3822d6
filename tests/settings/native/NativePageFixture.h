#pragma once

#include "CardBuilder.h"
#include "RecordingAlertSink.h"

#include "settings/SettingsPages.h"

#include <gtest/gtest.h>

#include <memory>

// Model types of the native page's families.
constexpr qint64 kRuva = 0, kTolm = 1, kPesk = 2, kDravi = 3, kDraviUk = 4, kOrlo = 5, kKimbo = 8,
                 kSarn = 9, kVelt = 10, kYarro = 11, kHolta = 18;

// A record the camera of a model could have written, every setting at a value
// its page can show, with `fields` ("wdr=0 gmt_offset=570") on top.
QByteArray typicalRecord(qint64 modelType, int firmware = 0, const char* fields = "");

// One card holding a record, the shared model loaded from it as the viewer
// does, and the page built and filled. Controls are named by a part of their
// name that only they have ("FrontBrightness", "parkingShock"). The alert
// recorder answers the page's questions.
class NativePageTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    SettingsPageModel& open(qint64 modelType, const char* fields = "", int firmware = 0);
    // A fresh page over the model as it stands.
    SettingsPageModel& reopen(qint64 modelType);
    SettingControl control(const QString& part) const;
    int value(const QString& part) const { return control(part).value; }
    SettingsPageModel::Change change(const QString& part, int value);
    // "Part=position" checks a control's position, "+Part" / "-Part" that it
    // is enabled / disabled.
    void expectControls(const char* expected) const;
    // Presses OK; `expected` ("wdr=0") checks fields of the record written.
    void expectSaved(const char* expected);
    QByteArray savedRecord() const { return m_card.read(QStringLiteral("setup.cfg")); }
    void answer(int code);

    CardBuilder m_card;
    std::shared_ptr<RecordingAlertSink> m_sink;
    std::unique_ptr<SettingsPageModel> m_page;
};
