#include "cli/CardCliSupport.h"
#include "cli/CliCommands.h"

#include "config/CardFiles.h"
#include "config/SetupRecordCodec.h"
#include "config/SetupRecordLayout.h"
#include "config/TolmSettingManager.h"

#include <limits>
#include <optional>

// tavro config show|load|set|defaults DIR [--model-type T] [--local-id L]
// [--firmware V] [NAME=VALUE ...]: the camera's binary settings record.
namespace {

const QString kSynopsis = QStringLiteral("config show|load|set|defaults DIR [--model-type T] "
                                         "[--local-id L] [--firmware V] [NAME=VALUE...]");

struct Assignment {
    SetupField field;
    QString value;
};

struct ConfigOptions {
    QString action;
    QString dir;
    CardCli::CardOverrides overrides;
    QList<Assignment> assignments;
};

std::optional<qint64> parseInteger(const QString& text, qint64 low, qint64 high)
{
    bool ok = false;
    const qint64 value = text.toLongLong(&ok, 0);
    if (!ok || value < low || value > high)
        return std::nullopt;
    return value;
}

// Parses one NAME=VALUE; an integer field takes a decimal or 0x number.
QString parseAssignment(const QString& word, QList<Assignment>& assignments)
{
    const qsizetype eq = word.indexOf(u'=');
    if (eq <= 0)
        return QStringLiteral("expected NAME=VALUE, got '%1'").arg(word);
    const int index = SetupRecordLayout::indexOfName(word.left(eq));
    if (index < 0)
        return QStringLiteral("unknown field '%1'").arg(word.left(eq));
    const QString value = word.mid(eq + 1);
    if (SetupRecordLayout::kFields[size_t(index)].kind != SetupFieldKind::Text
        && !parseInteger(
            value, std::numeric_limits<qint32>::min(), std::numeric_limits<quint32>::max()))
        return QStringLiteral("'%1' is not a 32-bit integer").arg(value);
    assignments.append({ SetupField(index), value });
    return {};
}

QString parseArguments(const QStringList& args, ConfigOptions& options)
{
    static const QStringList kActions { QStringLiteral("show"), QStringLiteral("load"),
        QStringLiteral("set"), QStringLiteral("defaults") };
    if (args.size() < 2 || !kActions.contains(args[0]))
        return QStringLiteral("expected an action and a card folder");
    options.action = args[0];
    options.dir = args[1];
    for (qsizetype i = 2; i < args.size(); ++i) {
        QString problem;
        if (CardCli::CardOverrides::isOption(args[i])) {
            if (i + 1 >= args.size())
                return QStringLiteral("%1 needs a value").arg(args[i]);
            problem = options.overrides.parse(args[i], args[i + 1]);
            ++i;
        } else if (options.action == QLatin1String("set")) {
            problem = parseAssignment(args[i], options.assignments);
        } else {
            problem = QStringLiteral("unexpected argument '%1'").arg(args[i]);
        }
        if (!problem.isEmpty())
            return problem;
    }
    if (options.action == QLatin1String("set") && options.assignments.isEmpty())
        return QStringLiteral("set needs at least one NAME=VALUE");
    return {};
}

TolmSettingManager* prepareManager(const ConfigOptions& options)
{
    return &CardCli::identifyCard(options.dir, options.overrides);
}

void assign(TolmSettingManager& manager, const Assignment& assignment)
{
    if (SetupRecordLayout::info(assignment.field).kind == SetupFieldKind::Text)
        manager.setTextValue(assignment.field, assignment.value);
    else
        manager.setIntValue(assignment.field, qint32(assignment.value.toLongLong(nullptr, 0)));
}

int runAction(const ConfigOptions& options, TolmSettingManager& manager, CliIo& io)
{
    if (options.action == QLatin1String("show")) {
        // A read-only decode of the record as the model would read it.
        const QString path = CardFiles::findSettingFile(options.dir, QStringLiteral("setup.cfg"));
        QByteArray bytes;
        if (path.isEmpty() || !CardFiles::readWhole(path, bytes)) {
            io.err << "tavro: cannot open " << options.dir << "/SETTING/setup.cfg\n";
            return CliExit::kFailure;
        }
        SetupValues values;
        SetupRecordCodec::decode(bytes, manager.getSettingVariableCount(), values);
        manager.setValues(values);
    } else if (manager.modelType() < 0 && !options.overrides.modelType) {
        // Writing a record in a guessed layout would damage the card.
        io.err << "tavro: the camera model of " << options.dir
               << " is unknown; give --model-type to " << options.action << " its settings\n";
        return CliExit::kFailure;
    } else if (options.action == QLatin1String("load")) {
        manager.loadData();
    } else if (options.action == QLatin1String("set")) {
        manager.loadData();
        for (const Assignment& assignment : options.assignments)
            assign(manager, assignment);
        manager.saveData();
    } else {
        manager.loadDefaultValue();
        manager.saveData();
    }
    return CliExit::kOk;
}

} // namespace

int runConfigCommand(const QStringList& args, CliIo& io)
{
    ConfigOptions options;
    const QString problem = parseArguments(args, options);
    if (!problem.isEmpty())
        return CardCli::usage(io, kSynopsis, problem);
    if (!CardCli::checkCardFolder(options.dir, io.err))
        return CliExit::kFailure;

    const auto alerts = CardCli::installAlertSink();
    TolmSettingManager* manager = prepareManager(options);
    const int code = runAction(options, *manager, io);
    if (code != CliExit::kOk)
        return code;
    if (!alerts->isEmpty())
        return alerts->report(io.err);
    io.out << CardCli::recordJson(*manager) << '\n';
    return CliExit::kOk;
}
