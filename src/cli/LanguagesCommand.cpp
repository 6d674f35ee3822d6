#include "cli/CardCliSupport.h"
#include "cli/CliCommands.h"

#include "config/TolmSettingManager.h"

// tavro languages DIR: the languages the camera announces on its card.
int runLanguagesCommand(const QStringList& args, CliIo& io)
{
    if (args.size() != 1 || args[0].startsWith(QLatin1String("--")))
        return CardCli::usage(io, QStringLiteral("languages DIR"));
    if (!CardCli::checkCardFolder(args[0], io.err))
        return CliExit::kFailure;
    TolmSettingManager* manager = TolmSettingManager::ChagneTolmSettingManager(nullptr);
    manager->setSettingDirPath(args[0]);
    manager->loadLanguages();

    io.out << "{\"languages\":[";
    const CameraLanguageList languages = manager->languages();
    for (qsizetype i = 0; i < languages.size(); ++i) {
        if (i > 0)
            io.out << ',';
        io.out << '[' << languages[i].first << ',' << CardCli::jsonText(languages[i].second) << ']';
    }
    io.out << "]}\n";
    return CliExit::kOk;
}
