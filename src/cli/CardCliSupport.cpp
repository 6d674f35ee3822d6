#include "cli/CardCliSupport.h"

#include "config/SetupRecordLayout.h"
#include "config/TolmSettingManager.h"

#include <QFileInfo>

#include <limits>

namespace CardCli {

QString jsonString(const QString& text)
{
    if (text.isNull())
        return QStringLiteral("null");
    QString out;
    out.reserve(text.size() + 2);
    out += u'"';
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'"':
            out += QLatin1String("\\\"");
            break;
        case u'\\':
            out += QLatin1String("\\\\");
            break;
        case u'\n':
            out += QLatin1String("\\n");
            break;
        case u'\r':
            out += QLatin1String("\\r");
            break;
        case u'\t':
            out += QLatin1String("\\t");
            break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\u%1").arg(int(c.unicode()), 4, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += u'"';
    return out;
}

QString jsonText(const QString& text)
{
    return text.isNull() ? QStringLiteral("\"\"") : jsonString(text);
}

QString recordJson(const TolmSettingManager& manager)
{
    const int count = manager.getSettingVariableCount();
    QString json
        = QStringLiteral("{\"modelType\":%1,\"fieldCount\":%2,\"recordSize\":%3,\"fields\":{")
              .arg(manager.modelType())
              .arg(count)
              .arg(manager.getSaveDataSize());
    for (int i = 0; i < count && i < SetupRecordLayout::kFieldCount; ++i) {
        const SetupFieldInfo& info = SetupRecordLayout::kFields[size_t(i)];
        const auto field = SetupField(i);
        if (i > 0)
            json += u',';
        json += jsonString(QString::fromLatin1(info.name)) + u':';
        json += info.kind == SetupFieldKind::Text ? jsonString(manager.textValue(field))
                                                  : QString::number(manager.intValue(field));
    }
    json += QLatin1String("}}");
    return json;
}

int RecordingCliAlertSink::showAlert(const AlertRequest& request)
{
    m_requests.append(request);
    return kFirstButtonReturn;
}

int RecordingCliAlertSink::report(QTextStream& err) const
{
    for (const AlertRequest& request : m_requests) {
        err << "tavro: " << request.titleKey << ": " << request.messageKey;
        if (request.titleKey == kMemoryCardErrorTitleKey)
            err << " (memory card error: the card could not be written)";
        err << '\n';
    }
    return m_requests.isEmpty() ? CliExit::kOk : CliExit::kFailure;
}

std::shared_ptr<RecordingCliAlertSink> installAlertSink()
{
    auto sink = std::make_shared<RecordingCliAlertSink>();
    AlertSink::setShared(sink);
    return sink;
}

bool checkCardFolder(const QString& dir, QTextStream& err)
{
    if (QFileInfo(dir).isDir())
        return true;
    err << "tavro: cannot open " << dir << ": not a folder\n";
    return false;
}

int usage(CliIo& io, const QString& synopsis, const QString& problem)
{
    if (!problem.isEmpty())
        io.err << "tavro: " << problem << '\n';
    io.err << "usage: tavro " << synopsis << '\n';
    return CliExit::kUsage;
}

bool CardOverrides::isOption(const QString& name)
{
    return name == QLatin1String("--model-type") || name == QLatin1String("--local-id")
        || name == QLatin1String("--firmware");
}

QString CardOverrides::parse(const QString& name, const QString& value)
{
    bool ok = false;
    const qint64 number = value.toLongLong(&ok, 0);
    if (!ok || number < std::numeric_limits<qint32>::min()
        || number > std::numeric_limits<qint32>::max())
        return QStringLiteral("%1 needs an integer, got '%2'").arg(name, value);
    if (name == QLatin1String("--model-type"))
        modelType = number;
    else if (name == QLatin1String("--local-id"))
        localID = number;
    else
        firmware = qint32(number);
    return {};
}

TolmSettingManager& identifyCard(const QString& dir, const CardOverrides& overrides)
{
    // A fresh model; the shared instance itself stays, so a reference to it
    // outlives a later replacement (the page's Reset).
    TolmSettingManager* manager = TolmSettingManager::ChagneTolmSettingManager(nullptr);
    manager->setSettingDirPath(dir);
    manager->identifySettingDir();
    if (overrides.modelType)
        manager->setModelType(*overrides.modelType);
    if (overrides.localID)
        manager->setLocalID(*overrides.localID);
    if (overrides.firmware)
        manager->setFirmwareVersionInt(*overrides.firmware);
    manager->refreshModelName();
    return *manager;
}

} // namespace CardCli
