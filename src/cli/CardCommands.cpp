#include "cli/CardCliSupport.h"
#include "cli/CardFormatCommands.h"
#include "cli/CliCommands.h"

#include "config/ModelCatalogue.h"
#include "config/TolmSettingManager.h"

// tavro card identify DIR: which camera wrote the card in DIR.
int runCardCommand(const QStringList& args, CliIo& io)
{
    if (!args.isEmpty() && args[0] == QLatin1String("format"))
        return runCardFormatCommand(args.mid(1), io);
    if (!args.isEmpty() && args[0] == QLatin1String("touch-reset"))
        return runCardTouchResetCommand(args.mid(1), io);
    const QString synopsis = QStringLiteral("card identify DIR");
    if (args.size() != 2 || args[0] != QLatin1String("identify"))
        return CardCli::usage(io, synopsis);
    const QString dir = args[1];
    if (!CardCli::checkCardFolder(dir, io.err))
        return CliExit::kFailure;

    TolmSettingManager* manager = TolmSettingManager::ChagneTolmSettingManager(nullptr);
    manager->setSettingDirPath(dir);
    manager->identifySettingDir();
    manager->refreshModelName();
    const QString version = manager->loadVersionSDPath(dir);

    io.out << "{\"modelType\":" << manager->modelType() << ",\"modelName\":"
           << CardCli::jsonString(manager->modelType() < 0 ? QString() : manager->modelName())
           << ",\"localID\":" << manager->localID()
           << ",\"firmwareVersionInt\":" << manager->firmwareVersionInt()
           << ",\"version\":" << CardCli::jsonString(version)
           << ",\"fieldCount\":" << manager->getSettingVariableCount()
           << ",\"recordSize\":" << manager->getSaveDataSize() << "}\n";
    return CliExit::kOk;
}
