#include "cli/CardCliSupport.h"
#include "cli/CliCommands.h"

#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"

#include <QDateTime>

// tavro kel show|set|clock DIR ...: the Kel-family camera's blackbox.cfg.
namespace {

const QString kSynopsis = QStringLiteral(
    "kel show DIR | kel set DIR KEY=VALUE... | kel clock DIR [--at yyyy-MM-ddTHH:mm:ss]");

void printLines(const QStringList& lines, QTextStream& out)
{
    out << "{\"lines\":[";
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i > 0)
            out << ',';
        out << CardCli::jsonText(lines[i]);
    }
    out << "]}\n";
}

KelSettingManager* prepareManager(const QString& dir)
{
    TolmSettingManager::ChagneTolmSettingManager(nullptr)->setSettingDirPath(dir);
    KelSettingManager* kel = KelSettingManager::setSharedKelSettingManager(nullptr);
    kel->loadData();
    return kel;
}

// Each edit's key is its text up to and including the first "=".
int applyEdits(KelSettingManager& kel, const QStringList& edits, CliIo& io)
{
    for (const QString& edit : edits) {
        const qsizetype eq = edit.indexOf(u'=');
        if (!kel.setValueForKey(edit.left(eq + 1), edit.mid(eq + 1)))
            io.err << "tavro: no line begins with '" << edit.left(eq + 1) << "'; left unchanged\n";
    }
    return kel.saveData() ? CliExit::kOk : CliExit::kFailure;
}

std::optional<QDateTime> parseClockOptions(const QStringList& options)
{
    if (options.isEmpty())
        return QDateTime::currentDateTime();
    if (options.size() != 2 || options[0] != QLatin1String("--at"))
        return std::nullopt;
    const QDateTime at = QDateTime::fromString(options[1], Qt::ISODate);
    if (!at.isValid())
        return std::nullopt;
    return at;
}

} // namespace

int runKelCommand(const QStringList& args, CliIo& io)
{
    if (args.size() < 2)
        return CardCli::usage(io, kSynopsis);
    const QString action = args[0];
    const QString dir = args[1];
    const QStringList rest = args.mid(2);
    std::optional<QDateTime> clock;
    if (action == QLatin1String("show")) {
        if (!rest.isEmpty())
            return CardCli::usage(io, kSynopsis, QStringLiteral("show takes only the card folder"));
    } else if (action == QLatin1String("set")) {
        if (rest.isEmpty())
            return CardCli::usage(
                io, kSynopsis, QStringLiteral("set needs at least one KEY=VALUE"));
        for (const QString& edit : rest) {
            if (edit.indexOf(u'=') <= 0)
                return CardCli::usage(
                    io, kSynopsis, QStringLiteral("expected KEY=VALUE, got '%1'").arg(edit));
        }
    } else if (action == QLatin1String("clock")) {
        clock = parseClockOptions(rest);
        if (!clock)
            return CardCli::usage(
                io, kSynopsis, QStringLiteral("clock takes --at yyyy-MM-ddTHH:mm:ss"));
    } else {
        return CardCli::usage(io, kSynopsis);
    }
    if (!CardCli::checkCardFolder(dir, io.err))
        return CliExit::kFailure;

    const auto alerts = CardCli::installAlertSink();
    KelSettingManager* kel = prepareManager(dir);
    if (action == QLatin1String("set"))
        applyEdits(*kel, rest, io);
    else if (action == QLatin1String("clock"))
        kel->setCameraClock(*clock);
    if (!alerts->isEmpty())
        return alerts->report(io.err);
    printLines(kel->linedSettings(), io.out);
    return CliExit::kOk;
}
