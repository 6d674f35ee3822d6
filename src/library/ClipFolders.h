#pragma once

#include <QLatin1StringView>

#include <array>

// The camera's fixed folder layout on the card and the filter buttons of the
// clip list that select among those folders.
namespace ClipFolders {

// Searched in this order, each directly below the chosen folder.
// "Saved_Videos" holds clips the camera exported; it is listed, never written.
inline constexpr std::array<QLatin1StringView, 7> kCardFolders {
    QLatin1StringView("cont_rec"),
    QLatin1StringView("motion_rec"),
    QLatin1StringView("evt_rec"),
    QLatin1StringView("manual_rec"),
    QLatin1StringView("parking_rec"),
    QLatin1StringView("motion_timelapse_rec"),
    QLatin1StringView("Saved_Videos"),
};

inline constexpr QLatin1StringView kSavedVideos("Saved_Videos");
inline constexpr QLatin1StringView kMotionTimelapse("motion_timelapse_rec");
inline constexpr QLatin1StringView kParking("parking_rec");

// Filter index of the five buttons: 0 all, 1 continuous, 2 motion, 3 event, 4 manual.
enum Filter : int {
    kFilterAll = 0,
    kFilterContinuous = 1,
    kFilterMotion = 2,
    kFilterEvent = 3,
    kFilterManual = 4,
    kFilterCount = 5,
};

// Folder key of a filter index; empty for "all" and for any index outside 1 to 4.
inline QLatin1StringView filterKey(int index)
{
    switch (index) {
    case kFilterContinuous:
        return QLatin1StringView("cont_rec");
    case kFilterMotion:
        return QLatin1StringView("motion_rec");
    case kFilterEvent:
        return QLatin1StringView("evt_rec");
    case kFilterManual:
        return QLatin1StringView("manual_rec");
    default:
        return {};
    }
}

// Localisation keys of the five button titles, in button order.
inline constexpr std::array<const char*, 5> kFilterTitleKeys {
    "파일_전체",
    "파일_상시",
    "파일_모션",
    "파일_이벤트",
    "파일_수동",
};

// Accepted clip extensions, compared with the lower-cased extension.
inline bool isClipExtension(QStringView lowerExtension)
{
    return lowerExtension == QLatin1StringView("avi") || lowerExtension == QLatin1StringView("mp4")
        || lowerExtension == QLatin1StringView("mov");
}

} // namespace ClipFolders
