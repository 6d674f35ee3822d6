#include "player/FrameGrabber.h"

#include "player/MpvProperties.h"
#include "player/PlayerLogging.h"

#include <QByteArray>
#include <QElapsedTimer>

#include <mpv/client.h>

#include <memory>

namespace {

struct MpvDeleter {
    void operator()(mpv_handle* mpv) const { mpv_terminate_destroy(mpv); }
};
using MpvCore = std::unique_ptr<mpv_handle, MpvDeleter>;

struct NodeContents {
    mpv_node node {};
    ~NodeContents() { mpv_free_node_contents(&node); }
};

MpvCore startCore(double seconds, int videoTrack)
{
    MpvCore mpv(mpv_create());
    if (!mpv)
        return {};
    const QByteArray start = QByteArray::number(seconds, 'f', 6);
    const QByteArray track = QByteArray::number(videoTrack);
    const std::pair<const char*, const char*> options[] = {
        { MpvName::kConfig, "no" },
        { MpvName::kTerminal, "no" },
        { MpvName::kVo, "null" },
        { MpvName::kAo, "null" },
        { MpvName::kAudio, "no" },
        { MpvName::kPause, "yes" },
        { MpvName::kHrSeek, "yes" },
        { MpvName::kKeepOpen, "yes" },
        { MpvName::kIdle, "yes" },
        { MpvName::kStart, start.constData() },
        { MpvName::kVideoTrack, track.constData() },
    };
    for (const auto& [name, value] : options)
        mpv_set_option_string(mpv.get(), name, value);
    if (mpv_initialize(mpv.get()) < 0)
        return {};
    return mpv;
}

// Waits until the first frame at the start position is decoded.
bool waitForFrame(mpv_handle* mpv, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < timeoutMs) {
        const double left = double(timeoutMs - clock.elapsed()) / 1000.0;
        const mpv_event* event = mpv_wait_event(mpv, left);
        if (event->event_id == MPV_EVENT_PLAYBACK_RESTART)
            return true;
        if (event->event_id == MPV_EVENT_END_FILE || event->event_id == MPV_EVENT_SHUTDOWN)
            return false;
    }
    return false;
}

const mpv_node* member(const mpv_node& map, const char* key)
{
    if (map.format != MPV_FORMAT_NODE_MAP)
        return nullptr;
    for (int i = 0; i < map.u.list->num; ++i) {
        if (qstrcmp(map.u.list->keys[i], key) == 0)
            return &map.u.list->values[i];
    }
    return nullptr;
}

qint64 integer(const mpv_node& map, const char* key)
{
    const mpv_node* value = member(map, key);
    return value && value->format == MPV_FORMAT_INT64 ? value->u.int64 : -1;
}

// screenshot-raw gives packed "bgr0" pixels: the byte order of RGB32.
QImage imageFromShot(const mpv_node& shot)
{
    const qint64 width = integer(shot, MpvName::kShotWidth);
    const qint64 height = integer(shot, MpvName::kShotHeight);
    const qint64 stride = integer(shot, MpvName::kShotStride);
    const mpv_node* format = member(shot, MpvName::kShotFormat);
    const mpv_node* data = member(shot, MpvName::kShotData);
    if (width <= 0 || height <= 0 || width > 16384 || height > 16384 || stride < width * 4)
        return {};
    if (!format || format->format != MPV_FORMAT_STRING || qstrcmp(format->u.string, "bgr0") != 0)
        return {};
    if (!data || data->format != MPV_FORMAT_BYTE_ARRAY
        || qint64(data->u.ba->size) < stride * height)
        return {};
    const QImage view(static_cast<const uchar*>(data->u.ba->data), int(width), int(height),
        qsizetype(stride), QImage::Format_RGB32);
    return view.copy();
}

} // namespace

QImage FrameGrabber::grab(const QString& path, double seconds, int videoTrack, int timeoutMs)
{
    MpvCore mpv = startCore(seconds, videoTrack);
    if (!mpv)
        return {};
    const QByteArray file = path.toUtf8();
    const char* load[] = { MpvName::kLoadFile, file.constData(), nullptr };
    if (mpv_command(mpv.get(), load) < 0 || !waitForFrame(mpv.get(), timeoutMs))
        return {};
    const char* shot[] = { MpvName::kScreenshotRaw, MpvName::kScreenshotVideo, nullptr };
    NodeContents result;
    if (mpv_command_ret(mpv.get(), shot, &result.node) < 0) {
        qCDebug(lcPlayer) << "no frame to grab in" << path;
        return {};
    }
    return imageFromShot(result.node);
}
