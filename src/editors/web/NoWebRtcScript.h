#pragma once

#include <QString>

// WebRTC would take the card's page onto the network past the request
// interceptor: STUN and TURN servers, peer connections to any address. This
// script runs in the page's own world before any script of the page, in the
// main frame and in every frame QtWebEngine gives it to, and takes every
// WebRTC interface (RTCPeerConnection, webkitRTCPeerConnection,
// RTCDataChannel, ...) away for good.
//
// A frame the page makes itself starts as an empty document of the page's
// own origin that QtWebEngine gives no script to, and whose window would hand
// the page fresh WebRTC constructors. So the script also seals every such
// frame the moment the page can reach it: before a frame's window or document
// is handed out, after every DOM call that can make frames, before the page's
// event listeners run, and on every change of the document.
//
// What is left to a page that slips through (a frame's window taken by its
// index from an inline event attribute run while the frame is being made):
// WebRTC over TCP only. The process's Chromium flags (WebEngineProcess) keep
// it from sending any UDP.
namespace NoWebRtcScript {

QString source();

} // namespace NoWebRtcScript
