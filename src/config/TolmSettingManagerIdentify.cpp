#include "config/TolmSettingManager.h"

#include "config/CardFiles.h"
#include "config/ModelCatalogue.h"
#include "config/SetupRecordCodec.h"
#include "config/VolumeUtils.h"

#include <QtEndian>

#include <cstring>

// Finding the card among the mounted volumes and telling which camera wrote
// it, from SETTING/setup.cfg (or SETTING/blackbox.cfg for the Kel family).
namespace {

const QString kSetupFile = QStringLiteral("setup.cfg");
const QString kBlackboxFile = QStringLiteral("blackbox.cfg");

constexpr int kProductNameOffset = 8;
constexpr int kProductNameWidth = 16;
constexpr int kVersionOffset = 40;
constexpr int kVersionWidth = 10;
constexpr int kLocalIdOffset = 460;
constexpr qint32 kSelfDescribingStructVersion = 0x10030;
constexpr quint32 kLocalIdLimit = 7;

// Text of a zero-padded field copied into a zeroed buffer: up to the first
// zero byte, or the whole field.
QByteArray fieldText(const QByteArray& bytes, int offset, int width)
{
    QByteArray field(width, '\0');
    const qsizetype available = std::min<qsizetype>(width, bytes.size() - offset);
    if (available > 0)
        std::memcpy(field.data(), bytes.constData() + offset, size_t(available));
    const qsizetype end = field.indexOf('\0');
    return end < 0 ? field : field.left(end);
}

bool readSetupFile(const QString& cardRoot, QByteArray& bytes)
{
    const QString path
        = CardFiles::findSettingFile(cardRoot, kSetupFile, CardFiles::Lookup::LowerFirst);
    return !path.isEmpty() && CardFiles::readWhole(path, bytes);
}

} // namespace

void TolmSettingManager::loadVersionInfo()
{
    // A path set beforehand is replaced by this rescan on purpose.
    m_settingDirPath = findSDCardPath();
    identifySettingDir();
}

void TolmSettingManager::identifySettingDir()
{
    m_modelType = loadModelTypeWithSDPath(m_settingDirPath);
    if (m_modelType == ModelCatalogue::kDraviModelType
        || m_modelType == ModelCatalogue::kDraviUkModelType) {
        const qint64 id = loadLocalIDWithSDPath(m_settingDirPath);
        if (id != -1)
            m_localID = id;
    }
    const QString version = loadVersionSDPath(m_settingDirPath);
    m_firmwareVersionInt = 0;
    if (!version.isNull()) {
        // "1.02.17" → 17: the leading digits of the last piece.
        const QString last = version.split(u'.').constLast();
        qint64 value = 0;
        for (const QChar c : last) {
            if (c < u'0' || c > u'9' || value > 100000000)
                break;
            value = value * 10 + (c.unicode() - u'0');
        }
        m_firmwareVersionInt = qint32(value);
    }
}

void TolmSettingManager::refreshModelName()
{
    const QStringList& names = ModelCatalogue::modelNameList();
    if (m_modelType == ModelCatalogue::kSelfDescribingModelType)
        return;
    m_modelName = m_modelType >= 0 && m_modelType < names.size() ? names[m_modelType] : QString();
}

QString TolmSettingManager::findSDCardPath()
{
    // The first removable volume that holds an identifiable camera wins.
    const QList<VolumeInfo> volumes = Utils::volumeSource().volumes();
    for (const VolumeInfo& volume : volumes) {
        const QUrl url = QUrl::fromLocalFile(volume.rootPath);
        if (!Utils::isEXteranlMemoryWithURL(url))
            continue;
        m_sdcardUrl = url;
        if (loadModelTypeWithSDPath(volume.rootPath) != ModelCatalogue::kUnknownModelType)
            return volume.rootPath;
    }
    m_sdcardUrl = QUrl();
    return {};
}

qint64 TolmSettingManager::loadModelTypeWithSDPath(const QString& path)
{
    QByteArray bytes;
    if (readSetupFile(path, bytes)) {
        const QByteArray name = fieldText(bytes, kProductNameOffset, kProductNameWidth);
        const qint64 type
            = ModelCatalogue::modelTypeForProductName(QString::fromUtf8(name).toLower());
        if (type != ModelCatalogue::kUnknownModelType)
            return type;
        // Newer cameras describe their record: a layout version from 0x10030
        // on and a size word equal to the file's length.
        if (bytes.size() >= 8) {
            const auto* data = reinterpret_cast<const uchar*>(bytes.constData());
            const qint32 sizeWord = qFromLittleEndian<qint32>(data);
            const qint32 structVersion = qFromLittleEndian<qint32>(data + 4);
            if (structVersion >= kSelfDescribingStructVersion && sizeWord == bytes.size()) {
                m_modelName = QString::fromUtf8(name);
                return ModelCatalogue::kSelfDescribingModelType;
            }
        }
    }
    if (!CardFiles::findSettingFile(path, kBlackboxFile, CardFiles::Lookup::LowerFirst).isEmpty())
        return ModelCatalogue::kWennaModelType;
    return ModelCatalogue::kUnknownModelType;
}

qint64 TolmSettingManager::loadLocalIDWithSDPath(const QString& path) const
{
    QByteArray bytes;
    if (!readSetupFile(path, bytes) || bytes.size() < kLocalIdOffset + 4)
        return -1;
    const quint32 id = qFromLittleEndian<quint32>(bytes.constData() + kLocalIdOffset);
    return id < kLocalIdLimit ? qint64(id) : -1;
}

QString TolmSettingManager::loadVersionSDPath(const QString& path) const
{
    QByteArray bytes;
    if (!readSetupFile(path, bytes) || bytes.size() < kVersionOffset + 8)
        return {};
    return QString::fromUtf8(fieldText(bytes, kVersionOffset, kVersionWidth));
}
