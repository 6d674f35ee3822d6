#pragma once

#include "ViewerTestSupport.h"

#include <QString>

#include <gtest/gtest.h>

class MainWindow;

// The viewer's window tests: settings cleared, English texts in the viewer's
// style, and no card or card model left over from another test.
class ViewerFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // Writes a Tolm's "setup.cfg" under `root` and lets the folder stand for a
    // mounted memory card, as --card makes it.
    static void mountCard(const QString& root);
    // Both views prepared and running, and the session not paused.
    static bool bothPlaying(MainWindow& window);
};
