#pragma once

#include "CardBuilder.h"
#include "RecordingAlertSink.h"

#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"

#include <gtest/gtest.h>

// A Kel camera's card (model Wenna) in a temporary folder, identified as the
// shared settings model's card, with the default blackbox.cfg unless a test
// writes its own.
class KelPageFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        TolmSettingManager* card = TolmSettingManager::ChagneTolmSettingManager(nullptr);
        card->setSettingDirPath(m_card.root());
        card->setModelType(6);
        KelSettingManager::setSharedKelSettingManager(nullptr);
    }
    void TearDown() override
    {
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
    }

    // The built-in default file's lines (what a fresh Wenna card holds).
    static QStringList defaultLines()
    {
        return KelSettingManager::linesFromText(KelSettingManager::defaultFileText());
    }

    // Writes the lines as the card's blackbox.cfg and loads them as the
    // viewer does before opening the page.
    KelSettingManager& cardWith(const QStringList& lines)
    {
        m_card.blackboxCfg(crlfLines(lines));
        KelSettingManager* kel = KelSettingManager::SharedKelSettingManager();
        kel->loadData();
        return *kel;
    }

    QByteArray cardFile() const { return m_card.read(QStringLiteral("blackbox.cfg")); }

    // `lines` with the first line beginning with key replaced by key + value.
    static QStringList with(QStringList lines, const QString& key, const QString& value)
    {
        for (QString& line : lines) {
            if (line.startsWith(key)) {
                line = key + value;
                break;
            }
        }
        return lines;
    }

    CardBuilder m_card;
    ScopedAlertRecorder m_alerts;
};
