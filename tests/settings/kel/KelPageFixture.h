#pragma once

#include "CardBuilder.h"
#include "RecordingAlertSink.h"

#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"

#include <gtest/gtest.h>

#include <algorithm>

// A Kel camera's card (model Wenna) in a temporary folder, identified as the
// shared settings model's card.
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

    // The built-in default file's lines (what a fresh Wenna card holds) with
    // the values of `changes` ("park_mode=1 const=35") in place.
    static QStringList lines(const char* changes = "")
    {
        QStringList all = KelSettingManager::linesFromText(KelSettingManager::defaultFileText());
        for (const QString& change : QString::fromLatin1(changes).split(u' ', Qt::SkipEmptyParts)) {
            const QString key = change.section(u'=', 0, 0) + u'=';
            const auto line = std::find_if(all.begin(), all.end(),
                [&](const QString& candidate) { return candidate.startsWith(key); });
            if (line != all.end())
                *line = change;
        }
        return all;
    }
    // Writes the lines as the card's blackbox.cfg and loads them as the
    // viewer does before opening the page.
    void cardWith(const QStringList& lines)
    {
        m_card.blackboxCfg(crlfLines(lines));
        KelSettingManager::SharedKelSettingManager()->loadData();
    }
    QByteArray cardFile() const { return m_card.read(QStringLiteral("blackbox.cfg")); }

    CardBuilder m_card;
    ScopedAlertRecorder m_alerts;
};
