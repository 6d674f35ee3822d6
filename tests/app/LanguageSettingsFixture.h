#pragma once

#include <QFile>
#include <QSettings>
#include <QStringList>
#include <QVariant>

#include <gtest/gtest.h>

// Every case starts from an empty settings store (the test main puts the store
// in Qt's test location) and leaves it empty.
class LanguageSettingsFixture : public ::testing::Test {
protected:
    void SetUp() override { clearStore(); }
    void TearDown() override { clearStore(); }

    static void clearStore()
    {
        QSettings settings;
        settings.clear();
        settings.sync();
    }

    static void storeValue(const char* key, const QVariant& value)
    {
        QSettings settings;
        settings.setValue(QLatin1String(key), value);
        settings.sync();
    }

    static QVariant storedValue(const char* key) { return QSettings().value(QLatin1String(key)); }

    // The settings file as it is on disk.
    static QString settingsFileText()
    {
        QFile file(QSettings().fileName());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll());
    }
};
