#include "cli/SettingsArguments.h"

#include <QDateTime>

#include <limits>

namespace SettingsCli {

namespace {

std::optional<qint64> parseInteger(const QString& text)
{
    bool ok = false;
    const qint64 value = text.toLongLong(&ok, 10);
    if (!ok || value < std::numeric_limits<qint32>::min()
        || value > std::numeric_limits<qint32>::max())
        return std::nullopt;
    return value;
}

QString parseClock(const QString& text, SettingsOptions& options)
{
    if (text == QLatin1String("off")) {
        options.clock = SettingClock { false, QDateTime::currentDateTime() };
        return {};
    }
    if (text == QLatin1String("now")) {
        options.clock = SettingClock { true, QDateTime::currentDateTime() };
        return {};
    }
    const QDateTime at = QDateTime::fromString(text, kClockFormat);
    if (!at.isValid())
        return QStringLiteral("--clock takes now, off or YYYY-MM-DDTHH:MM:SS, got '%1'").arg(text);
    options.clock = SettingClock { true, at };
    return {};
}

// One option with its value; returns a problem or "".
QString parseOption(const QString& name, const QString& value, SettingsOptions& options)
{
    if (name == QLatin1String("--clock"))
        return parseClock(value, options);
    if (name == QLatin1String("--answer")) {
        if (value != QLatin1String("yes") && value != QLatin1String("no"))
            return QStringLiteral("--answer takes yes or no");
        options.answerYes = value == QLatin1String("yes");
        return {};
    }
    return options.overrides.parse(name, value);
}

} // namespace

QString parseArguments(const QStringList& args, SettingsOptions& options)
{
    if (args.size() < 2 || (args[0] != QLatin1String("show") && args[0] != QLatin1String("set")))
        return QStringLiteral("expected show or set and a card folder");
    options.action = args[0];
    options.dir = args[1];
    const bool set = options.action == QLatin1String("set");
    static const QStringList kSetOptions { QStringLiteral("--answer"), QStringLiteral("--clock") };
    for (qsizetype i = 2; i < args.size(); ++i) {
        const QString& word = args[i];
        QString problem;
        if (CardCli::CardOverrides::isOption(word) || (set && kSetOptions.contains(word))) {
            if (i + 1 >= args.size())
                return QStringLiteral("%1 needs a value").arg(word);
            problem = parseOption(word, args[++i], options);
        } else if (set && word == QLatin1String("--reset")) {
            options.reset = true;
        } else if (set && word.indexOf(u'=') > 0 && !word.startsWith(u'-')) {
            const qsizetype eq = word.indexOf(u'=');
            const auto value = parseInteger(word.mid(eq + 1));
            if (!value)
                problem = QStringLiteral("'%1' needs an integer value").arg(word);
            else
                options.changes.append({ word.left(eq), int(*value) });
        } else {
            problem = QStringLiteral("unexpected argument '%1'").arg(word);
        }
        if (!problem.isEmpty())
            return problem;
    }
    if (set && options.changes.isEmpty() && !options.reset && !options.clock)
        return QStringLiteral("set needs at least one NAME=VALUE, --reset or --clock");
    return {};
}

} // namespace SettingsCli
