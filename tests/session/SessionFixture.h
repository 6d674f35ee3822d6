#pragma once

#include "CardTreeBuilder.h"
#include "RecordingAlertSink.h"
#include "RecordingProcessRunner.h"
#include "RecordingSessionView.h"
#include "ScriptedPlayerView.h"

#include "app/session/PlaybackSession.h"
#include "library/ClipConverter.h"
#include "library/ClipLibrary.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

// Delivers the queued player callbacks.
void settle();

// A playback session over a card folder the test writes, a recording ffmpeg
// stand-in, two scripted views (prepared at once), a recording view and alerts.
class SessionTest : public ::testing::Test {
protected:
    static constexpr double kClipSeconds = 180.0;

    void SetUp() override;
    void TearDown() override;

    // A two-camera AVI clip whose telemetry tail holds `samples` samples:
    // sample n has gx = n, gy = -n, gz = 128 (1 g), speed n % 200 km/h, and
    // (or no position) latitude 37 + n/10000, longitude 127 + n/10000.
    QString addAviClip(
        const QString& relativePath, int samples, bool withGps = true, int videoStreams = 2);
    // An .mp4 clip; the stand-in converts it and extracts an empty subtitle file.
    QString addMp4Clip(const QString& relativePath);
    // Lists the card's clips (row 0 selected).
    void refresh();
    // Selects and plays the row, then lets the views report.
    void playRow(int row);
    // One tick with both views at `seconds`: whether the read-outs and the map refreshed.
    std::pair<bool, bool> tickAt(double seconds);
    QUrl rowUrl(int row) const { return m_library.row(row).url; }

    QTemporaryDir m_dir;
    std::unique_ptr<CardTreeBuilder> m_card;
    RecordingProcessRunner m_runner;
    std::unique_ptr<ClipConverter> m_converter;
    ClipLibrary m_library;
    ScriptedPlayerView m_big;
    ScriptedPlayerView m_small;
    RecordingSessionView m_view;
    RecordingAlertSink m_alerts;
    std::unique_ptr<PlaybackSession> m_session;
};
