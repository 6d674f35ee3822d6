#include "editors/web/WebDashcamShim.h"

#include "editors/web/WebDashcam.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace WebDashcamShim {

namespace {

// %1: {"script name": "slot", ...}; %2: the names that take no argument.
constexpr const char* kShimTemplate = R"JS(
(function () {
    'use strict';
    var slots = %1;
    var noArgument = %2;
    var pending = [];
    var bridge = null;
    function forward(slot, args) {
        try {
            bridge[slot].apply(bridge, args);
        } catch (e) {
        }
    }
    var dashcam = {};
    Object.keys(slots).forEach(function (name) {
        var slot = slots[name];
        var takesArgument = noArgument.indexOf(name) < 0;
        dashcam[name] = function (value) {
            var args = takesArgument ? [value === undefined ? null : value] : [];
            if (bridge)
                forward(slot, args);
            else
                pending.push([slot, args]);
        };
    });
    Object.freeze(dashcam);
    Object.defineProperty(window, 'Dashcam', { value: dashcam, writable: false,
        enumerable: true, configurable: false });
    if (typeof QWebChannel !== 'function' || typeof qt !== 'object' || !qt.webChannelTransport)
        return;
    new QWebChannel(qt.webChannelTransport, function (channel) {
        bridge = channel.objects.Dashcam;
        var calls = pending;
        pending = [];
        calls.forEach(function (call) { forward(call[0], call[1]); });
    });
})();
)JS";

} // namespace

QString shimSource()
{
    QJsonObject slotNames;
    QStringList noArgument;
    const QMetaObject& meta = WebDashcam::staticMetaObject;
    for (const WebDashcam::ScriptName& name : WebDashcam::scriptNames()) {
        slotNames.insert(name.first, QString::fromLatin1(name.second));
        const int index = meta.indexOfMethod(name.second + "()");
        if (index >= 0)
            noArgument << name.first;
    }
    return QString::fromLatin1(kShimTemplate)
        .arg(QString::fromUtf8(QJsonDocument(slotNames).toJson(QJsonDocument::Compact)),
            QString::fromUtf8(
                QJsonDocument::fromVariant(noArgument).toJson(QJsonDocument::Compact)));
}

QString documentCreationScript()
{
    QFile client(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    QString source;
    if (client.open(QIODevice::ReadOnly))
        source = QString::fromUtf8(client.readAll());
    return source + u'\n' + shimSource();
}

} // namespace WebDashcamShim
