#pragma once

// Every mpv option, property and command name the player uses, in one place.
namespace MpvName {

// Options set before the core starts.
inline constexpr char kVo[] = "vo";
inline constexpr char kAo[] = "ao";
inline constexpr char kHwdec[] = "hwdec";
inline constexpr char kKeepOpen[] = "keep-open";
inline constexpr char kHrSeek[] = "hr-seek";
inline constexpr char kIdle[] = "idle";
inline constexpr char kConfig[] = "config";
inline constexpr char kTerminal[] = "terminal";
inline constexpr char kOsc[] = "osc";
inline constexpr char kInputDefaultBindings[] = "input-default-bindings";
inline constexpr char kInputVoKeyboard[] = "input-vo-keyboard";
inline constexpr char kAudioFallbackToNull[] = "audio-fallback-to-null";
inline constexpr char kStart[] = "start";
inline constexpr char kAudio[] = "aid";
inline constexpr char kSubtitleTrack[] = "sid";
inline constexpr char kSubtitleAuto[] = "sub-auto";

// Properties observed or set while playing.
inline constexpr char kTimePos[] = "time-pos";
inline constexpr char kDuration[] = "duration";
inline constexpr char kPause[] = "pause";
inline constexpr char kSpeed[] = "speed";
inline constexpr char kVolume[] = "volume";
inline constexpr char kEofReached[] = "eof-reached";
inline constexpr char kVideoTrack[] = "vid";
inline constexpr char kTrackList[] = "track-list";
inline constexpr char kFrameDropCount[] = "frame-drop-count";
inline constexpr char kVoDropCount[] = "vo-drop-frame-count";

// Keys of one track-list entry.
inline constexpr char kTrackType[] = "type";
inline constexpr char kTrackTypeVideo[] = "video";
inline constexpr char kTrackAlbumArt[] = "albumart";
inline constexpr char kTrackSelected[] = "selected";
inline constexpr char kTrackWidth[] = "demux-w";
inline constexpr char kTrackHeight[] = "demux-h";

// Commands.
inline constexpr char kLoadFile[] = "loadfile";
inline constexpr char kSeek[] = "seek";
inline constexpr char kSeekAbsoluteExact[] = "absolute+exact";
inline constexpr char kSeekRelativeExact[] = "relative+exact";
inline constexpr char kFrameStep[] = "frame-step";
inline constexpr char kFrameBackStep[] = "frame-back-step";
inline constexpr char kQuit[] = "quit";
inline constexpr char kStop[] = "stop";
inline constexpr char kScreenshotRaw[] = "screenshot-raw";
inline constexpr char kScreenshotVideo[] = "video";

// Keys of a screenshot-raw result.
inline constexpr char kShotWidth[] = "w";
inline constexpr char kShotHeight[] = "h";
inline constexpr char kShotStride[] = "stride";
inline constexpr char kShotFormat[] = "format";
inline constexpr char kShotData[] = "data";

} // namespace MpvName
