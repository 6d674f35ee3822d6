#pragma once

#include "cli/CardCliSupport.h"

#include "settings/SettingsPageModel.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The words of `tavro settings show|set DIR ...`: the action, the card
// folder, the NAME=VALUE changes, --reset, --answer, --clock and the card
// overrides. Nothing here touches the card.
namespace SettingsCli {

// How --clock takes a time, and how `settings show` prints the page's clock.
inline const QString kClockFormat = QStringLiteral("yyyy-MM-ddTHH:mm:ss");

// One NAME=VALUE word: a name without '=' and a 32-bit decimal value.
struct Change {
    QString name;
    int value = 0;
};

struct SettingsOptions {
    QString action; // "show" or "set"
    QString dir;
    CardCli::CardOverrides overrides;
    QList<Change> changes;
    bool reset = false;
    bool answerYes = true;
    std::optional<SettingClock> clock; // checked false = "off"
};

// Reads `args` (the words after "settings") into `options`; returns the
// problem to print as a usage error, or "" when the command line is good.
QString parseArguments(const QStringList& args, SettingsOptions& options);

} // namespace SettingsCli
