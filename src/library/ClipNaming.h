#pragma once

#include <QString>
#include <QUrl>

// What a clip's name and path say about it. The camera names a front clip and
// its rear companion alike except for "F." against "R." (…_F.mp4 / …_R.mp4,
// or …_F_BC.mp4 / …_R_BC.mp4 on models that write a "BC" suffix).
namespace ClipNaming {

// The URL as an absolute string, percent-encoded ("file:///card/evt_rec/a%20b_F.mp4").
QString absoluteUrlString(const QUrl& url);

// The clip's extension, lower-cased ("avi", "mp4", "mov", ...); empty when none.
QString lowerExtension(const QUrl& url);
QString lowerExtension(const QString& path);

// The partner string used by the clip list and playback: every "F." of the
// whole URL string becomes "R."; failing that every "R." becomes "F."; failing
// that it is empty (no partner). Folder names are replaced too.
QString partnerString(const QUrl& url);

// The partner string used when converting: the first of "F.", "R.", "F_BC.",
// "R_BC." found in the URL string is replaced everywhere by its counterpart.
QString conversionPartnerString(const QUrl& url);

// True when both clips are .mp4 and `partner`'s URL string is `clip`'s partner string.
bool isMp4Partner(const QUrl& clip, const QUrl& partner);

// The recording folder key a path contains first ("cont_rec", "motion_rec",
// "evt_rec", "manual_rec"); empty when none.
QString recordingType(const QString& path);

// Clips of the INI-configured camera family: the file name ends in ".avi" and
// starts with "Rec_", "Event_", "Park_" or "Manual_" (all case-sensitive).
bool isKelFamilyClip(const QUrl& url);

} // namespace ClipNaming
