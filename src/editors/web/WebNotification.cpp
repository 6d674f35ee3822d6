#include "editors/web/WebNotification.h"

#include "i18n/LocalizationKeys.h"

#include <limits>

namespace {
constexpr qsizetype kFieldCount = 5;
}

std::optional<WebNotification> WebNotification::parse(const QString& fields)
{
    const QStringList parts = fields.split(u'\t');
    if (parts.size() < kFieldCount)
        return std::nullopt;
    WebNotification notification;
    notification.title = parts.at(0);
    notification.message = parts.at(1);
    notification.index = leadingIntValue(parts.at(2));
    notification.value = parts.at(3);
    notification.buttonCount = leadingIntValue(parts.at(4));
    return notification;
}

QStringList WebNotification::buttonKeys() const
{
    if (buttonCount == 2)
        return { QString::fromUtf8(LocalizationKeys::kNo),
            QString::fromUtf8(LocalizationKeys::kYes) };
    return { QString::fromUtf8(LocalizationKeys::kConfirm) };
}

int leadingIntValue(const QString& text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    bool negative = false;
    if (i < text.size() && (text.at(i) == u'-' || text.at(i) == u'+'))
        negative = text.at(i++) == u'-';
    qint64 value = 0;
    constexpr qint64 kLimit = qint64(std::numeric_limits<int>::max()) + 1;
    for (; i < text.size() && text.at(i) >= u'0' && text.at(i) <= u'9'; ++i)
        value = std::min(kLimit, value * 10 + (text.at(i).unicode() - u'0'));
    if (negative)
        return int(std::max(-value, qint64(std::numeric_limits<int>::min())));
    return int(std::min(value, qint64(std::numeric_limits<int>::max())));
}
