#include "editors/web/NoWebRtcScript.h"

namespace {

constexpr const char* kSource = R"JS(
(function () {
    'use strict';
    // The card's page: frames are sealed from the top, whichever realm asks.
    var root = window;
    try {
        if (window.top.document)
            root = window.top;
    } catch (e) {
    }

    function isSealed(w) {
        var d = Object.getOwnPropertyDescriptor(w, 'RTCPeerConnection');
        return d !== undefined && !d.configurable && d.value === undefined;
    }

    // RTCPeerConnection goes last: once it is gone, the realm counts as sealed.
    function removeWebRtc(w) {
        Object.getOwnPropertyNames(w).filter(function (name) {
            return /^(webkit)?RTC/.test(name) && name !== 'RTCPeerConnection';
        }).concat(['RTCPeerConnection']).forEach(function (name) {
            Object.defineProperty(w, name, { value: undefined, writable: false,
                enumerable: false, configurable: false });
        });
    }

    // `w` and every frame under it. A frame of another origin throws: the
    // page cannot reach into it either.
    function seal(w) {
        try {
            if (!isSealed(w)) {
                removeWebRtc(w);
                guard(w);
            }
            for (var i = 0; i < w.length; ++i)
                seal(w[i]);
        } catch (e) {
        }
    }

    function sealAll() {
        seal(root);
    }

    function after(fn) {
        return function () {
            try {
                return fn.apply(this, arguments);
            } finally {
                sealAll();
            }
        };
    }

    function before(fn) {
        return function () {
            sealAll();
            return fn.apply(this, arguments);
        };
    }

    // Replaces a method, getter or setter of each type's prototype in place.
    function wrap(types, names, part, wrapper) {
        types.forEach(function (type) {
            var proto = type && type.prototype;
            names.forEach(function (name) {
                var d = proto && Object.getOwnPropertyDescriptor(proto, name);
                if (!d || typeof d[part] !== 'function')
                    return;
                d[part] = wrapper(d[part]);
                d.configurable = false;
                Object.defineProperty(proto, name, d);
            });
        });
    }

    function guardListeners(w) {
        var wrapped = new WeakMap();
        function sealing(listener) {
            if (!listener || (typeof listener !== 'function' && typeof listener !== 'object'))
                return listener;
            if (!wrapped.has(listener))
                wrapped.set(listener, function (event) {
                    sealAll();
                    return typeof listener === 'function' ? listener.call(this, event)
                                                          : listener.handleEvent(event);
                });
            return wrapped.get(listener);
        }
        wrap([w.EventTarget], ['addEventListener'], 'value', function (add) {
            return function (type, listener, options) {
                return add.call(this, type, sealing(listener), options);
            };
        });
        wrap([w.EventTarget], ['removeEventListener'], 'value', function (remove) {
            return function (type, listener, options) {
                return remove.call(this, type, wrapped.get(listener) || listener, options);
            };
        });
        wrap([w.HTMLElement, w.Document], ['onload'], 'set', function (set) {
            return function (handler) {
                return set.call(this, typeof handler === 'function' ? sealing(handler) : handler);
            };
        });
    }

    function guard(w) {
        // Calls that can make frames: sealed before the page's next statement.
        wrap([w.Node], ['appendChild', 'insertBefore', 'replaceChild'], 'value', after);
        wrap([w.Element, w.Document, w.DocumentFragment], ['append', 'prepend', 'replaceChildren'],
            'value', after);
        wrap([w.Element, w.CharacterData, w.DocumentType], ['before', 'after', 'replaceWith'],
            'value', after);
        wrap([w.Element], ['insertAdjacentElement', 'insertAdjacentHTML'], 'value', after);
        wrap([w.Document], ['write', 'writeln', 'execCommand'], 'value', after);
        wrap([w.Range], ['insertNode', 'surroundContents'], 'value', after);
        wrap([w.Element, w.ShadowRoot], ['innerHTML', 'outerHTML'], 'set', after);
        wrap([w.Document], ['body'], 'set', after);
        // The ways to a frame's window: sealed first.
        wrap([w.HTMLIFrameElement, w.HTMLFrameElement, w.HTMLObjectElement],
            ['contentWindow', 'contentDocument'], 'get', before);
        wrap([w.HTMLIFrameElement, w.HTMLObjectElement, w.HTMLEmbedElement], ['getSVGDocument'],
            'value', before);
        var frames = Object.getOwnPropertyDescriptor(w, 'frames');
        if (frames && frames.get && frames.configurable) {
            frames.get = before(frames.get);
            frames.configurable = false;
            Object.defineProperty(w, 'frames', frames);
        }
        guardListeners(w);
        // Frames the parser makes: sealed before the page's next script runs.
        new w.MutationObserver(sealAll).observe(w.document, { childList: true, subtree: true });
    }

    seal(window);
})();
)JS";

} // namespace

namespace NoWebRtcScript {

QString source()
{
    return QString::fromLatin1(kSource);
}

} // namespace NoWebRtcScript
