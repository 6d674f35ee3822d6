#include "cli/CardCliSupport.h"
#include "cli/CliCommands.h"
#include "cli/SettingsArguments.h"

#include "config/CardFiles.h"
#include "config/KelSettingManager.h"
#include "config/ModelCatalogue.h"
#include "config/SetupRecordCodec.h"
#include "config/TolmSettingManager.h"
#include "settings/SettingsPages.h"

#include <QDateTime>

#include <optional>

// tavro settings show|set DIR ...: the settings editor the viewer opens for
// the card, driven without a window. Works on every family that has a page
// model (createSettingsPageModel); the others print an empty page.
namespace {

using SettingsCli::Change;
using SettingsCli::kClockFormat;
using SettingsCli::SettingsOptions;

const QString kSynopsis = QStringLiteral(
    "settings show DIR [--model-type T] [--local-id L] [--firmware V]\n"
    "       tavro settings set DIR NAME=VALUE... [--reset] [--answer yes|no] "
    "[--clock now|off|YYYY-MM-DDTHH:MM:SS] [--model-type T] [--local-id L] [--firmware V]");
const QString kYesKey = QStringLiteral("예");
const QString kNoKey = QStringLiteral("아니오");

// The questions a page asks are answered as --answer says; a failed card
// write is kept to be reported.
class SettingsAlertSink final : public AlertSink {
public:
    explicit SettingsAlertSink(bool answerYes)
        : m_answerYes(answerYes)
    {
    }
    int showAlert(const AlertRequest& request) override
    {
        if (request.titleKey == kMemoryCardErrorTitleKey) {
            m_failures.append(request);
            return kFirstButtonReturn;
        }
        const qsizetype button = request.buttonKeys.indexOf(m_answerYes ? kYesKey : kNoKey);
        return kFirstButtonReturn + int(std::max<qsizetype>(button, 0));
    }
    bool hasFailures() const { return !m_failures.isEmpty(); }
    int report(QTextStream& err) const
    {
        for (const AlertRequest& request : m_failures)
            err << "tavro: " << request.titleKey << ": " << request.messageKey
                << " (memory card error: the card could not be written)\n";
        return m_failures.isEmpty() ? CliExit::kOk : CliExit::kFailure;
    }

private:
    bool m_answerYes;
    QList<AlertRequest> m_failures;
};

TolmSettingManager& identify(const SettingsOptions& options)
{
    return CardCli::identifyCard(options.dir, options.overrides);
}

// The configuration as the editor's loading reads it, without the rewrite
// that the viewer's loading of a binary record does.
void loadWithoutWriting(TolmSettingManager& manager)
{
    using ModelCatalogue::EditorKind;
    if (ModelCatalogue::editorForModelType(manager.modelType()) == EditorKind::Kel) {
        KelSettingManager::setSharedKelSettingManager(nullptr)->loadData();
        return;
    }
    const QString path = CardFiles::findSettingFile(manager.settingDirPath(), "setup.cfg");
    if (path.isEmpty()) {
        manager.loadDefaultValue();
        return;
    }
    manager.loadLanguages();
    QByteArray bytes;
    if (!CardFiles::readWhole(path, bytes))
        return;
    SetupValues values = manager.values();
    SetupRecordCodec::decode(bytes, manager.getSettingVariableCount(), values);
    manager.setValues(values);
}

QString boolText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString controlJson(const SettingControl& c)
{
    QString json = QStringLiteral("{\"value\":%1,\"enabled\":%2,\"visible\":%3")
                       .arg(c.value)
                       .arg(boolText(c.enabled), boolText(c.visible));
    if (c.titlesFollowState) {
        json += QLatin1String(",\"titles\":[");
        for (qsizetype i = 0; i < c.titles.size(); ++i)
            json += (i ? QStringLiteral(",") : QString()) + CardCli::jsonText(c.titles[i]);
        json += u']';
    }
    return json + u'}';
}

QString pageJson(qint64 modelType, const SettingsPageModel* page)
{
    QString json = QStringLiteral("{\"modelType\":%1,\"family\":%2,\"controls\":{")
                       .arg(modelType)
                       .arg(page ? CardCli::jsonText(page->family()) : QStringLiteral("null"));
    const QList<SettingControl> controls = page ? page->controls() : QList<SettingControl>();
    for (qsizetype i = 0; i < controls.size(); ++i) {
        if (i > 0)
            json += u',';
        json += CardCli::jsonText(controls[i].name) + u':' + controlJson(controls[i]);
    }
    const std::optional<int> language = page ? page->userSelectedLanguage() : std::nullopt;
    json += QStringLiteral("},\"userSelectedLanguage\":%1,\"clock\":")
                .arg(language ? QString::number(*language) : QStringLiteral("null"));
    if (page && page->hasClock()) {
        const SettingClock clock = page->clock();
        json += QStringLiteral("{\"checked\":%1,\"value\":%2}")
                    .arg(boolText(clock.checked),
                        CardCli::jsonText(clock.value.toString(kClockFormat)));
    } else {
        // The same shape for pages without a clock group.
        json += QLatin1String("{\"checked\":false,\"value\":null}");
    }
    return json + u'}';
}

// The user's changes, then OK. Returns an exit code.
int runSet(const SettingsOptions& options, SettingsPageModel& page, CliIo& io)
{
    if (options.reset)
        page.pressReset();
    for (const Change& change : options.changes) {
        switch (page.userChange(change.name, change.value)) {
        case SettingsPageModel::Change::Applied:
            break;
        case SettingsPageModel::Change::UnknownControl:
            return CardCli::usage(io, kSynopsis,
                QStringLiteral("the page has no control '%1'; nothing written").arg(change.name));
        case SettingsPageModel::Change::OutOfRange:
            return CardCli::usage(io, kSynopsis,
                QStringLiteral("%1=%2 is out of the control's range (or the control is "
                               "disabled); nothing written")
                    .arg(change.name)
                    .arg(change.value));
        }
    }
    if (options.clock)
        page.setClock(*options.clock);
    return page.pressOk() ? CliExit::kOk : CliExit::kFailure;
}

} // namespace

int runSettingsCommand(const QStringList& args, CliIo& io)
{
    SettingsOptions options;
    const QString problem = SettingsCli::parseArguments(args, options);
    if (!problem.isEmpty())
        return CardCli::usage(io, kSynopsis, problem);
    if (!CardCli::checkCardFolder(options.dir, io.err))
        return CliExit::kFailure;

    auto alerts = std::make_shared<SettingsAlertSink>(options.answerYes);
    AlertSink::setShared(alerts);
    TolmSettingManager& manager = identify(options);
    // Loaded first: the Kel page works on the shared line list it finds.
    const auto editor = ModelCatalogue::editorForModelType(manager.modelType());
    if (editor == ModelCatalogue::EditorKind::Kel || editor == ModelCatalogue::EditorKind::Native)
        loadWithoutWriting(manager);
    std::unique_ptr<SettingsPageModel> page = createSettingsPageModel(manager.modelType());
    if (page)
        page->applySettingData();
    if (options.action == QLatin1String("set")) {
        if (!page)
            return CardCli::usage(io, kSynopsis,
                QStringLiteral("model type %1 has no settings page to set")
                    .arg(manager.modelType()));
        const int code = runSet(options, *page, io);
        if (code == CliExit::kUsage)
            return code;
        if (code != CliExit::kOk || alerts->hasFailures()) {
            alerts->report(io.err);
            return CliExit::kFailure;
        }
    }
    io.out << pageJson(manager.modelType(), page.get()) << '\n';
    return CliExit::kOk;
}
