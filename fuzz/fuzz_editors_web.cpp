// Feeds arbitrary text to what the web settings window reads from the card
// and from the camera's settings page: the page's notification fields, its
// hexadecimal record, the record's language field, time.dat, and the quoting
// of card texts into script strings.
#include "editors/web/WebNotification.h"
#include "editors/web/WebSettingCard.h"
#include "editors/web/WebSettingScripts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// After the quoting, no quote or line break stands unescaped.
void checkQuoted(const QString& text, QChar quote)
{
    const QString body = WebSettingScripts::scriptStringBody(text, quote);
    for (qsizetype i = 0; i < body.size(); ++i) {
        if (body.at(i) == u'\\') {
            ++i;
            continue;
        }
        if (body.at(i) == quote || body.at(i) == u'\n' || body.at(i) == u'\r')
            std::abort();
    }
}

bool isUpperHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);

    if (const auto notification = WebNotification::parse(text)) {
        if (text.count(u'\t') < 4 || notification->buttonKeys().isEmpty())
            std::abort();
        WebSettingScripts::updateOk(notification->index, notification->value);
    }
    leadingIntValue(text);

    const QByteArray record = WebSettingScripts::dataFromCfgString(text);
    if (record.size() != (text.toUtf8().size() + 1) / 2)
        std::abort();
    // Whatever the page hands back goes to the card as bytes and comes back to
    // it as canonical hexadecimal: upper case, two digits a byte, same bytes.
    const QString canonical = WebSettingScripts::cfgStringWithData(record);
    if (canonical.size() != record.size() * 2
        || !std::all_of(canonical.begin(), canonical.end(), isUpperHexDigit)
        || WebSettingScripts::dataFromCfgString(canonical) != record
        || WebSettingScripts::setCfg(canonical) != QStringLiteral("set_cfg(\"%1\")").arg(canonical))
        std::abort();
    const QString hex = WebSettingScripts::cfgStringWithData(bytes);
    if (WebSettingScripts::dataFromCfgString(hex) != bytes)
        std::abort();
    const auto index = WebSettingScripts::languageIndex(hex);
    if (index.has_value() != (bytes.size() >= 432))
        std::abort();

    if (const auto time = WebSettingCard::timeRequestFromBytes(bytes)) {
        if (time->date.size() > 10 || time->hour.size() > 2 || time->min.size() > 2)
            std::abort();
        WebSettingCard::timeDatText(*time);
    }
    checkQuoted(text, u'"');
    checkQuoted(text, u'\'');
    return 0;
}
