// Feeds arbitrary bytes as the words of `tavro settings show|set` (split on
// zero bytes): the command line must parse into well-formed changes that
// survive being written out and read again, and the changes, applied to the
// page the words choose (the Kel page over the default blackbox.cfg, or a
// native page over its model's built-in values), are taken only for an
// in-range value of an existing enabled control and leave every control
// within its range. Nothing is saved: OK would write the card.
#include "cli/SettingsArguments.h"

#include "config/AlertSink.h"
#include "config/KelSettingManager.h"
#include "config/ModelCatalogue.h"
#include "config/TolmSettingManager.h"
#include "settings/SettingsPages.h"
#include "settings/kel/KelSettingViewController.h"

#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

using SettingsCli::SettingsOptions;

// Answers the page's questions as --answer says, like the command does.
class AnsweringSink final : public AlertSink {
public:
    bool answerYes = true;
    int showAlert(const AlertRequest& request) override
    {
        const qsizetype button = request.buttonKeys.indexOf(
            answerYes ? QStringLiteral("예") : QStringLiteral("아니오"));
        return kFirstButtonReturn + int(std::max<qsizetype>(button, 0));
    }
};

QStringList wordsOf(const uint8_t* data, size_t size)
{
    QStringList words;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const QByteArray& word : bytes.split('\0'))
        words.append(QString::fromUtf8(word));
    return words;
}

bool noSelection(const SettingControl& c, int value)
{
    return value == -1
        && (c.kind == SettingControlKind::RadioGroup || c.kind == SettingControlKind::ComboBox);
}

void checkWithinRange(const SettingsPageModel& page)
{
    for (const SettingControl& c : page.controls()) {
        if (!noSelection(c, c.value) && (c.value < c.minimum || c.value > c.maximum))
            std::abort();
    }
}

// An accepted command line is well formed, and its changes read the same
// when written out as NAME=VALUE words again.
void checkAccepted(const QStringList& words, const SettingsOptions& options)
{
    const bool set = options.action == QLatin1String("set");
    if ((!set && options.action != QLatin1String("show")) || options.dir != words.value(1))
        std::abort();
    if (set && options.changes.isEmpty() && !options.reset && !options.clock)
        std::abort();
    QStringList again { QStringLiteral("set"), options.dir };
    for (const SettingsCli::Change& change : options.changes) {
        if (change.name.isEmpty() || change.name.contains(u'='))
            std::abort();
        again.append(change.name + u'=' + QString::number(change.value));
    }
    if (options.changes.isEmpty())
        return;
    SettingsOptions reread;
    if (!SettingsCli::parseArguments(again, reread).isEmpty()
        || reread.changes.size() != options.changes.size())
        std::abort();
    for (qsizetype i = 0; i < reread.changes.size(); ++i) {
        if (reread.changes[i].name != options.changes[i].name
            || reread.changes[i].value != options.changes[i].value)
            std::abort();
    }
}

// The page of the model type the words name (the Kel camera when none), or
// null for the web-configured and unknown models, which have none.
std::unique_ptr<SettingsPageModel> openPage(const SettingsOptions& options, KelSettingManager& kel)
{
    using ModelCatalogue::EditorKind;
    const qint64 type = options.overrides.modelType.value_or(ModelCatalogue::kWennaModelType);
    switch (ModelCatalogue::editorForModelType(type)) {
    case EditorKind::Kel:
        return std::make_unique<KelSettingViewController>(
            type, &kel, [] { return QDateTime(QDate(2016, 3, 7), QTime(1, 2, 3)); });
    case EditorKind::Native: {
        TolmSettingManager* model = TolmSettingManager::ChagneTolmSettingManager(nullptr);
        model->setSettingDirPath(QStringLiteral("/nonexistent/tavro-fuzz-card"));
        model->setModelType(type);
        if (options.overrides.firmware)
            model->setFirmwareVersionInt(*options.overrides.firmware);
        if (options.overrides.localID)
            model->setLocalID(*options.overrides.localID);
        model->loadDefaultValue();
        return createNativeSettingsPageModel(type);
    }
    case EditorKind::Web:
    case EditorKind::ModelPage:
        break;
    }
    return nullptr;
}

void applyChanges(const SettingsOptions& options, SettingsPageModel& page)
{
    page.applySettingData();
    checkWithinRange(page);
    if (options.reset) {
        page.pressReset();
        checkWithinRange(page);
    }
    using Result = SettingsPageModel::Change;
    for (const SettingsCli::Change& change : options.changes) {
        const std::optional<SettingControl> before = page.control(change.name);
        const Result result = page.userChange(change.name, change.value);
        if (!before && result != Result::UnknownControl)
            std::abort();
        if (result == Result::Applied
            && (!before->enabled || !before->visible
                || (!noSelection(*before, change.value)
                    && (change.value < before->minimum || change.value > before->maximum))))
            std::abort();
        checkWithinRange(page);
        if (result != Result::Applied)
            return; // the command stops at the first change it can't make
    }
    if (options.clock)
        page.setClock(*options.clock);
    checkWithinRange(page);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // The page models log every rule they run; the fuzzer needs none of it.
    static const bool quiet = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
        return true;
    }();
    (void)quiet;
    static const QStringList kDefaultLines
        = KelSettingManager::linesFromText(KelSettingManager::defaultFileText());
    static const auto sink = std::make_shared<AnsweringSink>();
    AlertSink::setShared(sink);

    const QStringList words = wordsOf(data, size);
    SettingsOptions options;
    const QString problem = SettingsCli::parseArguments(words, options);
    if (!problem.isEmpty())
        return 0;
    checkAccepted(words, options);
    if (options.action != QLatin1String("set"))
        return 0;

    sink->answerYes = options.answerYes;
    KelSettingManager kel;
    kel.setLinedSettings(kDefaultLines);
    if (std::unique_ptr<SettingsPageModel> page = openPage(options, kel)) {
        applyChanges(options, *page);
        // Changing controls edits lines in place; only the clock adds its own.
        if (!options.clock && kel.linedSettings().size() != kDefaultLines.size())
            std::abort();
    }
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    return 0;
}
