// What a clip's path says: its partner (front/rear companion), container,
// recording type and telemetry family.
#include "library/ClipNaming.h"

#include <QUrl>

#include <gtest/gtest.h>

namespace {

QUrl url(const char* path)
{
    return QUrl::fromLocalFile(QString::fromUtf8(path));
}

TEST(ClipNamingTest, PartnerStringsRewriteTheWholeUrl)
{
    const struct {
        const char* path;
        const char* listPartner; // partner in the clip list ("" = none)
        const char* conversionPartner; // partner when converting ("" = none)
    } cases[] = {
        { "/card/evt_rec/clip_F.mp4", "/card/evt_rec/clip_R.mp4", "/card/evt_rec/clip_R.mp4" },
        { "/card/evt_rec/clip_R.mp4", "/card/evt_rec/clip_F.mp4", "/card/evt_rec/clip_F.mp4" },
        { "/card/evt_rec/clip.mp4", "", "" },
        // "F_BC." holds no "F.", so only the conversion rule pairs it.
        { "/card/evt_rec/clip_F_BC.mp4", "", "/card/evt_rec/clip_R_BC.mp4" },
        { "/card/evt_rec/clip_R_BC.mp4", "", "/card/evt_rec/clip_F_BC.mp4" },
        // The whole URL is rewritten, folders included.
        { "/media/MY_F.CLIPS/cont_rec/a_F.mp4", "/media/MY_R.CLIPS/cont_rec/a_R.mp4",
            "/media/MY_R.CLIPS/cont_rec/a_R.mp4" },
        { "/media/MY_F.CLIPS/cont_rec/a_R.mp4", "/media/MY_R.CLIPS/cont_rec/a_R.mp4",
            "/media/MY_R.CLIPS/cont_rec/a_R.mp4" },
        { "/media/MY_F.CLIPS/a_F_BC.mp4", "/media/MY_R.CLIPS/a_F_BC.mp4",
            "/media/MY_R.CLIPS/a_F_BC.mp4" },
        { "/card/clip_f.mp4", "", "" }, // case-sensitive: "f." is no front marker
        { "/card/IF.you.mp4", "/card/IR.you.mp4", "/card/IR.you.mp4" }, // anywhere in the name
        { "/card/my clips/x_F.mp4", "/card/my%20clips/x_R.mp4", "/card/my%20clips/x_R.mp4" },
    };
    const auto asUrl
        = [](const char* path) { return *path ? "file://" + QString(path) : QString(); };
    for (const auto& c : cases) {
        EXPECT_EQ(ClipNaming::partnerString(url(c.path)), asUrl(c.listPartner)) << c.path;
        EXPECT_EQ(ClipNaming::conversionPartnerString(url(c.path)), asUrl(c.conversionPartner))
            << c.path;
    }
    // MP4 partners are recognised between MP4 files only, the extension lower-cased.
    EXPECT_TRUE(ClipNaming::isMp4Partner(url("/c/a_F.mp4"), url("/c/a_R.mp4")));
    EXPECT_TRUE(ClipNaming::isMp4Partner(url("/c/a_R.MP4"), url("/c/a_F.MP4")));
    EXPECT_FALSE(ClipNaming::isMp4Partner(url("/c/a_F.avi"), url("/c/a_R.avi")));
    EXPECT_FALSE(ClipNaming::isMp4Partner(url("/c/a_F.mp4"), url("/c/b_R.mp4")));
    EXPECT_FALSE(ClipNaming::isMp4Partner(url("/c/a_F.MP4"), url("/c/a_R.mp4")));
}

TEST(ClipNamingTest, KindsFromTheName)
{
    const struct {
        const char* path;
        const char* extension;
        const char* recordingType;
        bool kel;
    } cases[] {
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
    for (const auto& c : cases) {
        EXPECT_EQ(ClipNaming::lowerExtension(url(c.path)), QString::fromUtf8(c.extension))
            << c.path;
        EXPECT_EQ(ClipNaming::recordingType(QString::fromUtf8(c.path)),
            QString::fromUtf8(c.recordingType))
            << c.path;
        EXPECT_EQ(ClipNaming::isKelFamilyClip(url(c.path)), c.kel) << c.path;
    }
}

} // namespace
