#include "config/CardFiles.h"

#include "config/ConfigLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace CardFiles {

QString findSettingFile(const QString& cardRoot, const QString& relative, Lookup order)
{
    if (cardRoot.isEmpty())
        return {};
    const QString first = order == Lookup::LowerFirst ? kLowerSettingDir : kSettingDir;
    const QString second = order == Lookup::LowerFirst ? kSettingDir : kLowerSettingDir;
    for (const QString& dir : { first, second }) {
        const QString path = cardRoot + u'/' + dir + u'/' + relative;
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

QString settingWritePath(const QString& cardRoot, const QString& relative)
{
    return cardRoot + u'/' + kSettingDir + u'/' + relative;
}

bool readWhole(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return false;
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError;
}

bool writeSettingFile(const QString& cardRoot, const QString& relative, const QByteArray& bytes)
{
    if (cardRoot.isEmpty())
        return false;
    const QString path = settingWritePath(cardRoot, relative);
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        qCWarning(lcConfig) << "cannot create folder for" << path;
        return false;
    }
    // Unbuffered, so that a short write (a full card, a size limit) is seen
    // here and the temporary file is dropped instead of replacing the old one.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        qCWarning(lcConfig) << "cannot open" << path << file.errorString();
        return false;
    }
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace CardFiles
