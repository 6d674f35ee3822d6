#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

#include <unistd.h>

// Chromium's command line for every program of ours that shows web pages
// (the viewer, the settings-page tool, the GUI tests). Call it first thing in
// main, before QtWebEngine starts: Chromium reads its flags only once.
namespace WebEngineProcess {

// Two ways out of a page that go past the request interceptor, closed for
// the whole process (the map page needs neither): WebRTC sends no UDP at all
// (its STUN and peer traffic would otherwise leave from the card's page), and
// WebTransport does not exist, in pages and in their workers alike.
inline constexpr const char* kClosedNetworkFlags[] = {
    "--force-webrtc-ip-handling-policy=disable_non_proxied_udp",
    "--disable-blink-features=WebTransport",
};

// Adds the flags above to QTWEBENGINE_CHROMIUM_FLAGS (after the user's own,
// so they win), and --no-sandbox when run as root: Chromium cannot start its
// sandbox then.
inline void prepare()
{
    QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS").trimmed();
    const auto add = [&flags](const QByteArray& flag) {
        if (!flags.split(' ').contains(flag))
            flags += (flags.isEmpty() ? "" : " ") + flag;
    };
    if (::geteuid() == 0)
        add("--no-sandbox");
    for (const char* flag : kClosedNetworkFlags)
        add(flag);
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags);
}

} // namespace WebEngineProcess
