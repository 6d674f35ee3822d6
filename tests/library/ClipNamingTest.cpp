// What a clip's path says: its partner (front/rear companion), container,
// recording type and telemetry family.
#include "library/ClipNaming.h"

#include <QUrl>

#include <gtest/gtest.h>

namespace {

struct PartnerCase {
    const char* path;
    const char* listPartner; // partner in the clip list ("" = none)
    const char* conversionPartner; // partner when converting ("" = none)
};

const PartnerCase kPartnerCases[] {
    { "/card/evt_rec/clip_F.mp4", "file:///card/evt_rec/clip_R.mp4",
        "file:///card/evt_rec/clip_R.mp4" },
    { "/card/evt_rec/clip_R.mp4", "file:///card/evt_rec/clip_F.mp4",
        "file:///card/evt_rec/clip_F.mp4" },
    { "/card/evt_rec/clip.mp4", "", "" },
    // "F_BC." holds no "F.", so only the conversion rule pairs it.
    { "/card/evt_rec/clip_F_BC.mp4", "", "file:///card/evt_rec/clip_R_BC.mp4" },
    { "/card/evt_rec/clip_R_BC.mp4", "", "file:///card/evt_rec/clip_F_BC.mp4" },
    // The whole URL is rewritten, folders included.
    { "/media/MY_F.CLIPS/cont_rec/a_F.mp4", "file:///media/MY_R.CLIPS/cont_rec/a_R.mp4",
        "file:///media/MY_R.CLIPS/cont_rec/a_R.mp4" },
    { "/media/MY_F.CLIPS/cont_rec/a_R.mp4", "file:///media/MY_R.CLIPS/cont_rec/a_R.mp4",
        "file:///media/MY_R.CLIPS/cont_rec/a_R.mp4" },
    { "/media/MY_F.CLIPS/a_F_BC.mp4", "file:///media/MY_R.CLIPS/a_F_BC.mp4",
        "file:///media/MY_R.CLIPS/a_F_BC.mp4" },
    // Case-sensitive: "f." is not a front marker.
    { "/card/clip_f.mp4", "", "" },
    // A "F." inside the name counts as well.
    { "/card/IF.you.mp4", "file:///card/IR.you.mp4", "file:///card/IR.you.mp4" },
    // Spaces are percent-encoded in the URL string.
    { "/card/my clips/x_F.mp4", "file:///card/my%20clips/x_R.mp4",
        "file:///card/my%20clips/x_R.mp4" },
};

TEST(ClipNamingTest, PartnerStringsRewriteTheWholeUrl)
{
    for (const PartnerCase& c : kPartnerCases) {
        const QUrl url = QUrl::fromLocalFile(QString::fromUtf8(c.path));
        EXPECT_EQ(ClipNaming::partnerString(url), QString::fromUtf8(c.listPartner)) << c.path;
        EXPECT_EQ(ClipNaming::conversionPartnerString(url), QString::fromUtf8(c.conversionPartner))
            << c.path;
    }
}

TEST(ClipNamingTest, Mp4PartnersAreRecognisedOnlyBetweenMp4Files)
{
    auto url = [](const char* path) { return QUrl::fromLocalFile(QString::fromUtf8(path)); };
    EXPECT_TRUE(ClipNaming::isMp4Partner(url("/c/a_F.mp4"), url("/c/a_R.mp4")));
    EXPECT_TRUE(ClipNaming::isMp4Partner(url("/c/a_R.mp4"), url("/c/a_F.mp4")));
    EXPECT_FALSE(ClipNaming::isMp4Partner(url("/c/a_F.avi"), url("/c/a_R.avi")));
    EXPECT_FALSE(ClipNaming::isMp4Partner(url("/c/a_F.mp4"), url("/c/b_R.mp4")));
    // The extension is compared lower-cased.
    EXPECT_TRUE(ClipNaming::isMp4Partner(url("/c/a_F.MP4"), url("/c/a_R.MP4")));
    EXPECT_FALSE(ClipNaming::isMp4Partner(url("/c/a_F.MP4"), url("/c/a_R.mp4")));
}

TEST(ClipNamingTest, KindsFromTheName)
{
    struct Case {
        const char* path;
        const char* extension;
        const char* recordingType;
        bool kel;
    };
    const Case cases[] {
        { "/card/cont_rec/Rec_0001.avi", "avi", "cont_rec", true },
        { "/card/evt_rec/Event_1.avi", "avi", "evt_rec", true },
        { "/card/Park_1.avi", "avi", "", true },
        { "/card/manual_rec/Manual_1.avi", "avi", "manual_rec", true },
        { "/card/manual_rec/Manual_1.AVI", "avi", "manual_rec", false },
        { "/card/rec_1.avi", "avi", "", false },
        { "/card/motion_timelapse_rec/T.Mp4", "mp4", "", false },
        { "/card/motion_rec/M.MOV", "mov", "motion_rec", false },
        { "/card/parking_rec/P.mkv", "mkv", "", false },
        { "/card/evt_rec/cont_rec/x", "", "cont_rec", false },
    };
    for (const Case& c : cases) {
        const QString path = QString::fromUtf8(c.path);
        const QUrl url = QUrl::fromLocalFile(path);
        EXPECT_EQ(ClipNaming::lowerExtension(url), QString::fromUtf8(c.extension)) << c.path;
        EXPECT_EQ(ClipNaming::recordingType(path), QString::fromUtf8(c.recordingType)) << c.path;
        EXPECT_EQ(ClipNaming::isKelFamilyClip(url), c.kel) << c.path;
    }
}

} // namespace
