#include "editors/web/WebSettingScripts.h"

namespace WebSettingScripts {

namespace {

// Byte offset of `cur_language` in the record, and its width.
constexpr qsizetype kLanguageOffset = 428;
constexpr qsizetype kLanguageWidth = 4;

QString call(const char* function, const QString& argument)
{
    return QStringLiteral("%1(\"%2\")")
        .arg(QLatin1String(function), scriptStringBody(argument, u'"'));
}

} // namespace

QString cfgStringWithData(const QByteArray& data)
{
    return QString::fromLatin1(data.toHex()).toUpper();
}

QByteArray dataFromCfgString(const QString& hex)
{
    return dataFromHexString(hex);
}

QString setCfg(const QString& hex)
{
    return call("set_cfg", hex);
}

QString setParamLanguage(const CameraLanguageList& languages)
{
    QString script = QStringLiteral("setParamLanguage([");
    for (const CameraLanguage& language : languages)
        script += u'\'' + scriptStringBody(language.second, u'\'') + QStringLiteral("',");
    return script + QStringLiteral("])");
}

QString setLanguage(const QString& code)
{
    return call("set_language", code);
}

QString setTimeDate(const QString& date)
{
    return call("setTimeDate", date);
}

QString setTimeHour(const QString& hour)
{
    return call("setTimeHour", hour);
}

QString setTimeMin(const QString& minute)
{
    return call("setTimeMin", minute);
}

QString generateSetting(bool showFirstView)
{
    return showFirstView ? QStringLiteral("generateSetting(true)")
                         : QStringLiteral("generateSetting(false)");
}

QString updateOk(int index, const QString& value)
{
    return QStringLiteral("update_ok(%1, \"%2\")").arg(index).arg(scriptStringBody(value, u'"'));
}

QString updateCancel(int index)
{
    return QStringLiteral("update_cancel(%1)").arg(index);
}

std::optional<quint32> languageIndex(const QString& cfgHex)
{
    // Most significant byte first: the digit pairs of bytes 431, 430, 429, 428.
    QString digits;
    for (qsizetype byte = kLanguageOffset + kLanguageWidth - 1; byte >= kLanguageOffset; --byte) {
        const qsizetype position = byte * 2;
        if (position + 2 > cfgHex.size())
            return std::nullopt;
        digits += cfgHex.mid(position, 2);
    }
    bool ok = false;
    const quint32 index = digits.toUInt(&ok, 16);
    if (!ok)
        return std::nullopt;
    return index;
}

QString scriptStringBody(const QString& text, QChar quote)
{
    QString body;
    body.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'\\' || c == quote)
            body += u'\\' + QString(c);
        else if (c == u'\n')
            body += QStringLiteral("\\n");
        else if (c == u'\r')
            body += QStringLiteral("\\r");
        else if (c == QChar(0x2028) || c == QChar(0x2029))
            body += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            body += c;
    }
    return body;
}

} // namespace WebSettingScripts
