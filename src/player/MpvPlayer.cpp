#include "player/MpvPlayer.h"

#include "player/MpvProperties.h"
#include "player/MpvRenderTarget.h"
#include "player/PlayerLogging.h"
#include "player/PlayerRules.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>

#include <mpv/client.h>

#include <vector>

namespace {

constexpr quint64 kTrackListReply = 1000;
constexpr quint64 kLandedTimeReply = 1001;
constexpr int kShutdownGraceMs = 5000;

} // namespace

struct MpvPlayer::PropertyHandler {
    const char* name;
    mpv_format format;
    void (MpvPlayer::*handle)(const mpv_event_property&);
};

std::span<const MpvPlayer::PropertyHandler> MpvPlayer::properties()
{
    // The reply id of each observation is its index in this table.
    static const PropertyHandler kTable[] = {
        { MpvName::kTimePos, MPV_FORMAT_DOUBLE, &MpvPlayer::onTimePos },
        { MpvName::kDuration, MPV_FORMAT_DOUBLE, &MpvPlayer::onDuration },
        { MpvName::kPause, MPV_FORMAT_FLAG, &MpvPlayer::onPause },
        { MpvName::kSpeed, MPV_FORMAT_DOUBLE, &MpvPlayer::onSpeed },
        { MpvName::kVolume, MPV_FORMAT_DOUBLE, &MpvPlayer::onVolume },
        { MpvName::kEofReached, MPV_FORMAT_FLAG, &MpvPlayer::onEofReached },
        { MpvName::kFrameDropCount, MPV_FORMAT_INT64, &MpvPlayer::onFrameDrops },
        { MpvName::kVoDropCount, MPV_FORMAT_INT64, &MpvPlayer::onOutputDrops },
    };
    return kTable;
}

MpvPlayer::MpvPlayer(int videoTrack, QObject* parent)
    : QObject(parent)
    , m_videoTrack(videoTrack)
{
    m_reverseTimer.setInterval(kReverseStepMs);
    connect(&m_reverseTimer, &QTimer::timeout, this, &MpvPlayer::reverseTick);
    m_stepLandingTimer.setSingleShot(true);
    m_stepLandingTimer.setInterval(kStepLandingMs);
    connect(&m_stepLandingTimer, &QTimer::timeout, this, &MpvPlayer::forwardStepLanded);

    m_mpv = mpv_create();
    if (!m_mpv) {
        qCWarning(lcPlayer, "mpv_create failed (is LC_NUMERIC \"C\"?)");
        return;
    }
    const QByteArray track = QByteArray::number(videoTrack);
    const std::pair<const char*, const char*> options[] = {
        { MpvName::kConfig, "no" },
        { MpvName::kTerminal, "no" },
        { MpvName::kOsc, "no" },
        { MpvName::kInputDefaultBindings, "no" },
        { MpvName::kInputVoKeyboard, "no" },
        { MpvName::kVo, "libmpv" },
        { MpvName::kHwdec, "auto-safe" },
        { MpvName::kKeepOpen, "yes" },
        { MpvName::kHrSeek, "yes" },
        { MpvName::kIdle, "yes" },
        { MpvName::kAudioFallbackToNull, "yes" },
        { MpvName::kPause, "yes" },
        { MpvName::kVideoTrack, track.constData() },
        // The cameras' subtitle track carries raw telemetry records, never text for people.
        { MpvName::kSubtitleTrack, "no" },
        { MpvName::kSubtitleAuto, "no" },
    };
    for (const auto& [name, value] : options)
        mpv_set_option_string(m_mpv, name, value);
    if (mpv_initialize(m_mpv) < 0) {
        qCWarning(lcPlayer, "mpv_initialize failed");
        mpv_terminate_destroy(m_mpv);
        m_mpv = nullptr;
        return;
    }
    const auto table = properties();
    for (std::size_t i = 0; i < table.size(); ++i)
        mpv_observe_property(m_mpv, i, table[i].name, table[i].format);
    // The render context must exist before a file loads, or mpv gives up on video.
    m_target = std::make_unique<MpvRenderTarget>(m_mpv, &MpvPlayer::onRenderUpdate, this);
    mpv_set_wakeup_callback(m_mpv, &MpvPlayer::onWakeup, this);
}

MpvPlayer::~MpvPlayer()
{
    m_reverseTimer.stop();
    if (m_mpv)
        mpv_set_wakeup_callback(m_mpv, nullptr, nullptr);
    m_target.reset();
    if (m_mpv)
        mpv_terminate_destroy(m_mpv);
}

void MpvPlayer::dispose(std::unique_ptr<MpvPlayer> player)
{
    if (!player)
        return;
    player->disconnect();
    player->pause();
    player->m_retiring = true;
    player->m_reverseTimer.stop();
    player->m_stepLandingTimer.stop();
    MpvPlayer* retiring = player.release();
    // Shutting a core down takes a moment; the GUI thread does not wait for
    // it. The file is stopped first so that mpv has let go of the picture by
    // the time the render context goes (freeing it earlier waits for that).
    if (QCoreApplication* app = QCoreApplication::instance())
        retiring->setParent(app);
    if (!retiring->m_mpv || retiring->m_path.isEmpty()) {
        retiring->quit();
        return;
    }
    retiring->command({ MpvName::kStop });
    QTimer::singleShot(kShutdownGraceMs, retiring, &MpvPlayer::quit);
}

void MpvPlayer::quit()
{
    // The render context goes on this thread, with its GL context current.
    QElapsedTimer clock;
    clock.start();
    m_target.reset();
    qCDebug(lcPlayer) << "render context released in" << clock.nsecsElapsed() / 1000 << "us";
    if (!m_mpv) {
        m_disposed = true;
        deleteLater();
        return;
    }
    if (m_quitting)
        return;
    m_quitting = true;
    command({ MpvName::kQuit });
    QTimer::singleShot(kShutdownGraceMs, this, &QObject::deleteLater);
}

bool MpvPlayer::isValid() const
{
    return m_mpv && m_target && m_target->isValid();
}

void MpvPlayer::onWakeup(void* self)
{
    // Called on an mpv thread: only queue the drain on the GUI thread.
    auto* player = static_cast<MpvPlayer*>(self);
    if (!player->m_drainQueued.exchange(true))
        QMetaObject::invokeMethod(
            player, [player] { player->drainEvents(); }, Qt::QueuedConnection);
}

void MpvPlayer::onRenderUpdate(void* self)
{
    // Called on an mpv thread: only queue a render on the GUI thread.
    auto* player = static_cast<MpvPlayer*>(self);
    if (!player->m_renderQueued.exchange(true))
        QMetaObject::invokeMethod(
            player, [player] { player->renderFrame(); }, Qt::QueuedConnection);
}

void MpvPlayer::drainEvents()
{
    m_drainQueued = false;
    ++m_dispatching;
    while (m_mpv && !m_disposed) {
        mpv_event* event = mpv_wait_event(m_mpv, 0);
        if (!event || event->event_id == MPV_EVENT_NONE)
            break;
        handleEvent(*event);
    }
    --m_dispatching;
}

void MpvPlayer::renderFrame()
{
    m_renderQueued = false;
    if (m_disposed || !m_target)
        return;
    const MpvRenderTarget::Result result = m_target->update();
    if (result == MpvRenderTarget::Result::NewFrame)
        ++m_framesRendered;
    if (result != MpvRenderTarget::Result::Nothing && m_framesRendered > 0) {
        // The view's scene shows the picture soon, from the texture.
        ++m_dispatching;
        emit frameRendered();
        --m_dispatching;
    }
    if (m_target)
        m_target->finishFrame();
}

void MpvPlayer::handleEvent(const mpv_event& event)
{
    if (m_retiring) {
        if (event.event_id == MPV_EVENT_IDLE) {
            quit();
        } else if (event.event_id == MPV_EVENT_SHUTDOWN) {
            m_disposed = true;
            deleteLater();
        }
        return;
    }
    switch (event.event_id) {
    case MPV_EVENT_PROPERTY_CHANGE:
        dispatchProperty(event.reply_userdata, *static_cast<mpv_event_property*>(event.data));
        break;
    case MPV_EVENT_FILE_LOADED:
        m_fileLoaded = true;
        mpv_get_property_async(m_mpv, kTrackListReply, MpvName::kTrackList, MPV_FORMAT_NODE);
        break;
    case MPV_EVENT_GET_PROPERTY_REPLY: {
        const auto* property = static_cast<mpv_event_property*>(event.data);
        if (event.reply_userdata == kLandedTimeReply) {
            if (m_seekPending)
                break; // another seek went since: its restart asks again
            const bool known = event.error >= 0 && property->format == MPV_FORMAT_DOUBLE;
            reportLandedPosition(known ? *static_cast<double*>(property->data) : m_timePos);
            break;
        }
        if (event.reply_userdata != kTrackListReply)
            break;
        if (event.error >= 0 && property->format == MPV_FORMAT_NODE)
            handleTrackList(*static_cast<mpv_node*>(property->data));
        else
            handleTrackList(mpv_node {});
        break;
    }
    case MPV_EVENT_PLAYBACK_RESTART:
        // The end of a seek, and of the start-up of a newly loaded file.
        m_seekPending = false;
        m_reportNextTime = true;
        if (m_fileLoaded)
            m_restarted = true;
        playbackRestarted();
        // Where the seek landed: asked now, answered once mpv is there.
        if (!m_seekPending && m_positionWait == PositionWait::Restart)
            mpv_get_property_async(m_mpv, kLandedTimeReply, MpvName::kTimePos, MPV_FORMAT_DOUBLE);
        checkReady();
        break;
    case MPV_EVENT_END_FILE:
        handleEndFile(event);
        break;
    default:
        break;
    }
}

void MpvPlayer::handleEndFile(const mpv_event& event)
{
    const auto* end = static_cast<mpv_event_end_file*>(event.data);
    if (m_failed || !end)
        return;
    if (end->reason == MPV_END_FILE_REASON_ERROR) {
        qCDebug(lcPlayer) << "load failed:" << mpv_error_string(end->error) << m_path;
        m_failed = true;
        m_reverseTimer.stop();
        emit itemStatusChanged(ItemStatus::Failed);
    } else if (!m_ready) {
        emit itemStatusChanged(ItemStatus::Unknown);
    }
}

void MpvPlayer::handleTrackList(const mpv_node& list)
{
    m_tracksKnown = true;
    m_hasVideo = false;
    bool sizeKnown = false;
    if (list.format == MPV_FORMAT_NODE_ARRAY) {
        for (int i = 0; i < list.u.list->num; ++i) {
            const mpv_node& track = list.u.list->values[i];
            if (track.format != MPV_FORMAT_NODE_MAP)
                continue;
            bool video = false, albumArt = false, selected = false;
            qint64 width = 0, height = 0;
            for (int k = 0; k < track.u.list->num; ++k) {
                const QByteArray key = track.u.list->keys[k];
                const mpv_node& value = track.u.list->values[k];
                if (key == MpvName::kTrackType && value.format == MPV_FORMAT_STRING)
                    video = qstrcmp(value.u.string, MpvName::kTrackTypeVideo) == 0;
                else if (key == MpvName::kTrackAlbumArt && value.format == MPV_FORMAT_FLAG)
                    albumArt = value.u.flag;
                else if (key == MpvName::kTrackSelected && value.format == MPV_FORMAT_FLAG)
                    selected = value.u.flag;
                else if (key == MpvName::kTrackWidth && value.format == MPV_FORMAT_INT64)
                    width = value.u.int64;
                else if (key == MpvName::kTrackHeight && value.format == MPV_FORMAT_INT64)
                    height = value.u.int64;
            }
            if (!video || albumArt)
                continue;
            if (!sizeKnown && width > 0 && height > 0 && width < 65536 && height < 65536) {
                m_videoSize = QSize(int(width), int(height));
                sizeKnown = true;
            }
            m_hasVideo = m_hasVideo || selected;
        }
    }
    emit tracksLoaded(m_hasVideo);
    checkReady();
}

void MpvPlayer::checkReady()
{
    if (m_ready || m_failed || !m_fileLoaded || !m_tracksKnown || !m_restarted)
        return;
    m_ready = true;
    emit itemStatusChanged(ItemStatus::ReadyToPlay);
}

void MpvPlayer::dispatchProperty(quint64 index, const mpv_event_property& property)
{
    const auto table = properties();
    if (index < table.size() && property.format == table[index].format)
        (this->*table[index].handle)(property);
}

void MpvPlayer::onTimePos(const mpv_event_property& property)
{
    m_timePos = *static_cast<double*>(property.data);
    if (m_positionWait == PositionWait::Restart)
        return; // possibly still the old position: the restart tells
    if (m_positionWait == PositionWait::Change) {
        reportLandedPosition(m_timePos);
        forwardStepLanded();
        return;
    }
    const long long slot = PlayerRules::timeObserverSlot(m_timePos);
    if (slot == m_lastTimeSlot && !m_reportNextTime)
        return;
    m_lastTimeSlot = slot;
    m_reportNextTime = false;
    if (m_fileLoaded)
        emit timeChanged(m_timePos);
}

void MpvPlayer::onDuration(const mpv_event_property& property)
{
    m_duration = *static_cast<double*>(property.data);
}

void MpvPlayer::onPause(const mpv_event_property& property)
{
    m_paused = *static_cast<int*>(property.data) != 0;
    updateRate();
}

void MpvPlayer::onSpeed(const mpv_event_property& property)
{
    m_speed = *static_cast<double*>(property.data);
    updateRate();
}

void MpvPlayer::onVolume(const mpv_event_property& property)
{
    m_volume = float(*static_cast<double*>(property.data) / 100.0);
}

void MpvPlayer::onEofReached(const mpv_event_property& property)
{
    const bool eof = *static_cast<int*>(property.data) != 0;
    const bool reached = eof && !m_eof;
    m_eof = eof;
    if (reached)
        emit playedToEnd();
}

void MpvPlayer::onFrameDrops(const mpv_event_property& property)
{
    m_decoderDrops = *static_cast<int64_t*>(property.data);
}

void MpvPlayer::onOutputDrops(const mpv_event_property& property)
{
    m_outputDrops = *static_cast<int64_t*>(property.data);
}

void MpvPlayer::command(std::initializer_list<const char*> args)
{
    if (!m_mpv)
        return;
    std::vector<const char*> argv(args);
    argv.push_back(nullptr);
    mpv_command_async(m_mpv, 0, argv.data());
}

void MpvPlayer::setFlag(const char* name, bool value)
{
    if (!m_mpv)
        return;
    int flag = value ? 1 : 0;
    mpv_set_property_async(m_mpv, 0, name, MPV_FORMAT_FLAG, &flag);
}

void MpvPlayer::setDouble(const char* name, double value)
{
    if (m_mpv)
        mpv_set_property_async(m_mpv, 0, name, MPV_FORMAT_DOUBLE, &value);
}

void MpvPlayer::load(const QString& path)
{
    m_path = path;
    m_positionWait = PositionWait::None;
    m_changeAfterLanding = false;
    m_heldMoves.clear();
    m_stepUnderWay.reset();
    m_stepLandingTimer.stop();
    const QByteArray file = path.toUtf8();
    command({ MpvName::kLoadFile, file.constData() });
    // Playback restarts once the file has started: moves asked before wait for it.
    m_seekPending = true;
}

void MpvPlayer::play()
{
    setRate(1.0f);
}

void MpvPlayer::pause()
{
    setRate(0.0f);
}

void MpvPlayer::setRate(float rate)
{
    // mpv plays forwards only; backwards play is a run of short exact seeks
    // back while paused, the way a jog wheel would.
    if (rate < 0.0f) {
        m_reverseRate = rate;
        setFlag(MpvName::kPause, true);
        m_paused = true;
        m_reverseTimer.start();
    } else {
        m_reverseTimer.stop();
        m_reverseRate = 0.0f;
        if (rate > 0.0f) {
            setDouble(MpvName::kSpeed, rate);
            m_speed = rate;
        }
        setFlag(MpvName::kPause, rate == 0.0f);
        m_paused = rate == 0.0f;
    }
    updateRate();
}

void MpvPlayer::updateRate()
{
    const float rate = m_reverseRate < 0.0f ? m_reverseRate : (m_paused ? 0.0f : float(m_speed));
    if (rate == m_rate)
        return;
    m_rate = rate;
    ++m_dispatching;
    emit rateChanged(rate);
    --m_dispatching;
}

void MpvPlayer::setVolume(float volume)
{
    m_volume = qBound(0.0f, volume, 1.0f);
    setDouble(MpvName::kVolume, double(m_volume) * 100.0);
}

void MpvPlayer::setVideoTrack(int track)
{
    m_videoTrack = track;
    if (!m_mpv)
        return;
    int64_t id = track;
    mpv_set_property_async(m_mpv, 0, MpvName::kVideoTrack, MPV_FORMAT_INT64, &id);
}

void MpvPlayer::setTargetSize(const QSize& devicePixels)
{
    if (!m_target || m_target->size() == devicePixels.expandedTo(QSize(1, 1)))
        return;
    m_target->setSize(devicePixels);
    onRenderUpdate(this);
}

QImage MpvPlayer::image()
{
    return m_target ? m_target->image() : QImage();
}

unsigned int MpvPlayer::texture()
{
    return m_target ? m_target->texture() : 0;
}
